#include "ui/ImportLauncher.h"

#include <gtest/gtest.h>

#include "support/FakeHost.h"

namespace tolvan {
namespace {

/// An application that is not installed, so that an import that gets as far as reading ends there.
struct MissingSpreadsheets : SpreadsheetApplication {
  void Start() override {
    if (whileStarting) whileStarting();
    throw HostError(HostErrorKind::Unreachable, "no instalado");
  }
  std::unique_ptr<WorksheetReader> OpenFirstWorksheet(std::string_view, const Interruption&) override { return {}; }
  std::unique_ptr<NewWorkbook> CreateFromTemplate(std::string_view, std::uint32_t) override { return {}; }
  std::function<void()> whileStarting;
};

struct NoHashes : HashService {
  std::string Md5(std::string_view) const override { return {}; }
};

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
  MissingSpreadsheets spreadsheets;
  NoHashes hashes;
  NoStatus status;
  ImportLauncher launcher{host.context, {spreadsheets, hashes, {}}, status};
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
  EXPECT_EQ(host.settings.Text(Setting::RutaUltimoArchivo), "");
}

TEST_F(Launching, RemembersTheFileOfAnImportThatFailedAndFindsItAgain) {
  host.services.files.contents["/listas/precios.xlsx"] = "x";
  dialogs.answer = "/listas/precios.xlsx";
  EXPECT_FALSE(Launch(action::movilnetPrices));
  EXPECT_EQ(dialogs.boxes.back(),
            (Box{MessageIcon::Exclamation, "Tolvan",
                 "Error al conectar con Microsoft Excel, verifique que Excel está instalado en su sistema"}));
  ImportLauncher next{host.context, {spreadsheets, hashes, {}}, status};
  next.RestoreLastWorkbook();
  EXPECT_EQ(next.Workbook(action::movilnetPrices), "/listas/precios.xlsx");
  host.services.files.contents.clear();
  ImportLauncher later{host.context, {spreadsheets, hashes, {}}, status};
  later.RestoreLastWorkbook();
  EXPECT_EQ(later.Workbook(action::movilnetPrices), "");
}

TEST_F(Launching, ASecondImportDoesNotBeginWhileOneRuns) {
  host.services.files.contents["/listas/precios.xlsx"] = "x";
  launcher.SetWorkbook(action::excelPrices, "/listas/precios.xlsx");
  int starts = 0;
  spreadsheets.whileStarting = [&] {
    ++starts;
    std::string text;
    bool quiet = false;
    EXPECT_TRUE(launcher.Launch(action::movilnetPrices, text, quiet));
    EXPECT_TRUE(quiet);
  };
  EXPECT_FALSE(Launch());
  EXPECT_EQ(starts, 1);
}

TEST_F(Launching, TheTemplateMustBeThere) {
  EXPECT_FALSE(launcher.cmdAbrirPlantilla_Click());
  EXPECT_EQ(dialogs.boxes.back().text,
            "No se encuentra el archivo de plantilla. Favor actualice Tolvan para reponer el archivo de plantilla");
}

}  // namespace
}  // namespace tolvan
