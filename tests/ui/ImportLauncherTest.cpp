#include "ui/ImportLauncher.h"

#include <gtest/gtest.h>

#include "support/FakeHost.h"
#include "ui/MissingTools.h"

namespace tolvan {
namespace {

struct NoStatus : StatusWindow {
  std::unique_ptr<StatusDisplay> OpenStatus() override { return {}; }
};

class Launching : public ::testing::Test {
 protected:
  using Box = test::FakeDialogs::Box;

  bool Launch(int action = action::excelPrices) {
    errorText.clear();
    silent = false;
    return launcher.Launch(action, errorText, silent);
  }

  test::FakeHost host;
  test::FakeDialogs& dialogs = host.services.dialogs;
  test::MissingTools tools;
  NoStatus status;
  ImportLauncher launcher{host.context, tools.imports, status};
  std::string errorText;
  bool silent = false;
};

TEST_F(Launching, AsksForTheWorkbookAndEndsWhenNoneIsChosen) {
  EXPECT_FALSE(Launch());
  EXPECT_EQ(errorText, "\r\nDebe seleccionar primero el archivo de Excel");
  EXPECT_FALSE(silent);
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_EQ(dialogs.questions, (std::vector<std::string>{"Seleccionar Archivo de Excel Libro de Excel|*.xls;*.xlsx"}));
}

TEST_F(Launching, RefusesAFileThatIsGoneAndRemembersNothing) {
  dialogs.answer = "/listas/ida.xlsx";
  EXPECT_FALSE(Launch());
  EXPECT_EQ(dialogs.boxes, (std::vector<Box>{{MessageIcon::Exclamation, "Tolvan",
                                              "El archivo /listas/ida.xlsx no existe, favor seleccione la ubicación "
                                              "correcta del archivo"}}));
  EXPECT_EQ(errorText, "") << "it has been told";
  EXPECT_TRUE(silent);
  EXPECT_EQ(host.settings.Text(Setting::RutaUltimoArchivo), "");
}

TEST_F(Launching, RemembersTheFileOfAnImportThatFailed) {
  host.services.files.contents["/listas/precios.xlsx"] = "x";
  dialogs.answer = "/listas/precios.xlsx";
  EXPECT_FALSE(Launch(action::movilnetPrices));
  EXPECT_EQ(dialogs.boxes.back(),
            (Box{MessageIcon::Exclamation, "Tolvan",
                 "Error al conectar con Microsoft Excel, verifique que Excel está instalado en su sistema\r\n" +
                     launcher.LastOutcome().cause}));
  EXPECT_EQ(host.settings.Text(Setting::RutaUltimoArchivo), "/listas/precios.xlsx");
  EXPECT_EQ(host.application.settings.saves, 1);
  host.services.files.contents.clear();
  ImportLauncher later{host.context, tools.imports, status};
  later.RestoreLastWorkbook();
  EXPECT_EQ(later.Workbook(action::movilnetPrices), "") << "the file is gone";
}

}  // namespace
}  // namespace tolvan
