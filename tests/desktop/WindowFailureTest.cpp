// An import that does not come to its end as it should: rejected lines, a stop, the close box and the end of the
// session in the middle of the work. What files, settings and a database do to an action is tested below the windows.
#include <wx/gauge.h>

#include <filesystem>
#include <fstream>

#include "desktop/WindowTest.h"
#include "fiscal/clsInfoFiscalClienteDO.h"
#include "support/FileContent.h"

namespace tolvan::test {
namespace {

class WindowFailure : public WindowTest {
 protected:
  /// Lines with valid identifiers, and one without any for every thousand, unless all are to be valid.
  std::string Registry(int lines, bool allValid = false) {
    const std::string path = folder.File("DGII.TXT");
    std::ofstream file(path, std::ios::binary);
    for (int number = 0; number < lines; ++number) {
      const std::string digits = std::to_string(10'000'000 + number);
      file << digits << *ExpectedRncCheckDigit(digits) << "|EMPRESA " << number << "|\r\n";
      if (number % 1000 == 0 && !allValid) file << "xyz|NADIE|\r\n";
    }
    return path;
  }
};

TEST_F(WindowFailure, RejectedLinesAreOfferedAfterTheImport) {
  const std::string rejected = folder.File("rechazos.txt");
  Run([&](WindowDriver& driver) {
    Choose(driver, node::registry, 1, Registry(2000));
    driver.ClickUntilShown("bGuardar", "iconoInformacion");
    EXPECT_EQ(driver.Title("mensaje"), "Operación finalizada");
    EXPECT_EQ(driver.Dismiss(),
              "Operación finalizada. \n\nNuevos clientes registrados: 2000\n"
              "Clientes no registrados: 0\nLineas con errores: 2");
    driver.Dismiss();
    driver.AnswerPicker("Guardar líneas rechazadas", rejected);
    driver.Settle();
    EXPECT_TRUE(driver.Enabled("bGuardar"));
  });
  EXPECT_EQ(Query("SELECT count(*) FROM Clientes WHERE Descripcion LIKE 'EMPRESA %'"), "2000");
  EXPECT_TRUE(ReadFile(rejected).starts_with("2\tel identificador no es un RNC ni una cédula válidos\txyz|NADIE|"));
}

TEST_F(WindowFailure, AStoppedRegistryImportKeepsWhatIsIn) {
  const std::string file = Registry(900'000);
  Run([&](WindowDriver& driver) {
    Choose(driver, node::registry, 1, file);
    driver.ClickUntilShown("bGuardar", "pbProgreso");
    EXPECT_EQ(driver.Text("lbProgreso"), "Realizando importación de datos, favor esperar...");
    EXPECT_FALSE(driver.Enabled("tvOpciones"));
    EXPECT_EQ(driver.Text("bCancelar"), "&Detener");
    // Registered are the first 200,000 lines when the bar has gone this far.
    driver.Until("some are in", [&] { return dynamic_cast<wxGauge&>(driver.Get("pb01")).GetValue() > 250; });
    driver.KeyUntilShown("Escape", "mensaje");
    EXPECT_NE(driver.Dismiss().find("Operación interrumpida. Lo registrado queda guardado"), std::string::npos);
    EXPECT_NE(Query("SELECT count(*) FROM Clientes WHERE Descripcion LIKE 'EMPRESA %'"), "0");
  });
}

TEST_F(WindowFailure, TheCloseBoxDuringAnImportStopsItAndClosesTheWindow) {
  const std::string file = Registry(900'000, true);
  const int code = Run([&](WindowDriver& driver) {
    Choose(driver, node::registry, 1, file);
    driver.ClickUntilShown("bGuardar", "pbProgreso");
    driver.KeyUntilShown("alt+F4", "mensaje");
    EXPECT_NE(driver.Dismiss().find("Operación interrumpida."), std::string::npos);
    driver.UntilGone("frmOpciones");
  });
  EXPECT_EQ(code, 0);
}

TEST_F(WindowFailure, TheEndOfTheSessionDuringAnImportClosesEverything) {
  const std::string file = Registry(900'000);
  const int code = Run([&](WindowDriver& driver) {
    Choose(driver, node::registry, 1, file);
    driver.ClickUntilShown("bGuardar", "pbProgreso");
    driver.EndSession();
    driver.UntilGone("frmOpciones");
  });
  EXPECT_EQ(code, 0);
  EXPECT_EQ(Query("PRAGMA integrity_check"), "ok");
}

}  // namespace
}  // namespace tolvan::test
