// Imports that do not end as they should: rejected lines, a stop, the close box and the end of the
// session in the middle of the work. What files, settings and a database do to an action is tested below the windows.
#include <wx/gauge.h>

#include <filesystem>
#include <fstream>

#include "database/sqlite/SqliteDatabaseServices.h"
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
  WriteFile(folder.File("carta.txt"), "Estimados señores:\r\nno es el registro\r\n");
  Run([&](WindowDriver& driver) {
    Choose(driver, node::registry, 1, folder.File("carta.txt"));
    driver.ClickUntilShown("bGuardar", "iconoAdvertencia");
    EXPECT_NE(driver.Dismiss().find("el archivo no es el registro de contribuyentes"), std::string::npos);
    driver.Settle();
    EXPECT_FALSE(driver.Shown("mensaje")) << "lines of a file that is no registry are not offered";
    Choose(driver, node::registry, 1, Registry(2000));
    driver.ClickUntilShown("bGuardar", "iconoInformacion");
    EXPECT_EQ(driver.Text("mensaje"), "Operación finalizada");
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

TEST_F(WindowFailure, AStopWhileTheStoreIsOpenedEndsTheProgramQuietly) {
  SqliteDatabaseServices other({.path = places.database});
  other.OpenRecordset(SqlStatement("PRAGMA locking_mode = EXCLUSIVE"));
  const auto writing = other.BeginTransaction();
  const int code = Run([](WindowDriver& driver) { driver.KeyUntilGone("Escape", "estado"); }, "estado");
  EXPECT_EQ(code, 0);
}

TEST_F(WindowFailure, TheCloseBoxAndTheEndOfTheSessionStopAnImport) {
  const std::string file = Registry(900'000, true);
  for (const bool sessionEnds : {false, true}) {
    const int code = Run([&](WindowDriver& driver) {
      Choose(driver, node::registry, 1, file);
      driver.ClickUntilShown("bGuardar", "pbProgreso");
      if (sessionEnds) {
        driver.EndSession();
      } else {
        driver.KeyUntilShown("alt+F4", "mensaje");
        EXPECT_NE(driver.Dismiss().find("Operación interrumpida."), std::string::npos);
      }
      driver.UntilGone("frmOpciones");
    });
    EXPECT_EQ(code, 0);
    EXPECT_EQ(Query("PRAGMA integrity_check"), "ok");
  }
}

}  // namespace
}  // namespace tolvan::test
