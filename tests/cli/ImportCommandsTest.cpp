// The commands that import price lists, on a demo store and real workbooks, from the words to the database.
#include <sys/wait.h>

#include "cli/DemoStoreFixture.h"
#include "spreadsheet/LocalSpreadsheetApplication.h"
#include "support/ChildProcess.h"
#include "system/posix/PosixFileHelper.h"

namespace tolvan {
namespace {

using json = nlohmann::ordered_json;
using Cells = std::vector<NewCell>;

class ImportCommands : public test::DemoStoreFixture {
 protected:
  /// Every file below the test's folder with its content.
  std::map<std::string, std::string> Snapshot() const {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.File(""))) {
      files[entry.path()] = entry.is_regular_file() ? test::ReadFile(entry.path()) : "";
    }
    return files;
  }
};

TEST_F(ImportCommands, SimulateApplyAndReport) {
  const std::string book = Workbook(
      "lista.xlsx", 4, {{"nuevo, 1", "tv  23.5/led-x", {}, {}, 10.5, 15.0, {}, {}, "12"}, {" ", "=y"}, {}, {"z"}});
  Query("PRAGMA journal_mode=DELETE");  // a file that the store's other programs made
  const auto before = Snapshot();
  const json simulated = Json({"importar-excel", book, "--simular"});
  EXPECT_EQ(simulated["aplicado"], false);
  EXPECT_EQ(simulated["resumen"], (json{{"nuevos_items", 1}, {"precios_actualizados", 0}, {"no_procesados", 1}}));
  const std::string unused = "el multiplicador no es un número (12) y no se toma en cuenta";
  const json row{
      {"fila", 1},          {"fila_hoja", 5},         {"codigo", "NUEVO,1"}, {"descripcion", "TV 235LEDX"},
      {"marca", "DEF"},     {"departamento", "DEF"},  {"costo", "10.5000"},  {"pvp", "15.0000"},
      {"accion", 2},        {"asociado", ""},         {"libre", true},       {"costo_cambia", true},
      {"pvp_cambia", true}, {"diferencia", "0.0000"}, {"motivo", ""},        {"observaciones", json::array({unused})}};
  EXPECT_EQ(simulated["filas"][0], row);
  EXPECT_EQ(simulated["lectura_termina"], (json{{"fila_hoja", 7}, {"quedan", 1}}));
  EXPECT_EQ(simulated["filas"][1]["pvp"], nullptr);
  EXPECT_EQ(simulated["filas"][1]["motivo"], "el código queda vacío al quitarle los espacios");
  const std::string report = folder.File("informe.csv");
  Expect({{{"importar-movilnet", places.examples + "/movilnet.xlsx", "--simular", "--informe", report}, 0}});
  EXPECT_EQ(std::filesystem::remove(report), true);
  EXPECT_EQ(Snapshot(), before) << "a simulation leaves nothing but the report";
  const test::CommandResult result = runner.Run({"importar-excel", book, "--informe", report});
  EXPECT_THAT(result.messages, testing::HasSubstr("Nuevos Items: 1\n"));
  EXPECT_THAT(result.output, testing::HasSubstr(unused));
  EXPECT_EQ(Query("SELECT count(*) FROM Items WHERE idItem = 'NUEVO,1'"), "1,");
  EXPECT_EQ(test::ReadFile(report),
            "\xEF\xBB\xBF"
            "Acción,Fila,Código,Descripción,Costo anterior,Costo nuevo,PVP anterior,PVP nuevo,Observación\r\n"
            "Agregar,5,\"NUEVO,1\",TV 235LEDX,,10.5000,,15.0000," +
                unused +
                "\r\n"
                "No procesar,6,,'=Y,,,,,el código queda vacío al quitarle los espacios\r\n");
}

TEST_F(ImportCommands, WriteTheReportAsAWorkbook) {
  const std::string book = Workbook("lista.xlsx", 4, {{"ALI0001", {}, {}, {}, {}, 99.5}, {"NUEVO", "=1+1"}});
  const std::string report = folder.File("informe.XLSX");
  Expect({{{"importar-excel", book, "--informe", report}, 0}});
  PosixFileHelper files(folder.File(""));
  LocalSpreadsheetApplication application(runner.clock, files, folder.File("nuevos"));
  const auto reader = application.OpenFirstWorksheet(report, runner.interruption);
  std::string text;
  for (SheetRow row; reader->NextRow(row); text += "\n") {
    for (const SheetCell& cell : row.cells) {
      text += cell.kind == CellKind::Number ? std::to_string(cell.number) : std::string(cell.text);
      text += ";";
    }
  }
  EXPECT_NE(text.find("Agregar;6.000000;NUEVO;=1+1;0.000000;"), std::string::npos) << text;
  EXPECT_NE(text.find(";44.000000;99.500000;"), std::string::npos) << text;
}

TEST_F(ImportCommands, TwoProgramsAtOnceLeaveOneWholeImport) {
  std::vector<Cells> rows;
  std::vector<std::string> codes;
  for (int row = 0; row < 2'000; ++row) codes.push_back("DOBLE" + std::to_string(row));
  for (const std::string& code : codes) rows.push_back({code, {}, {}, {}, 10.0, 11.8});
  const std::string book = Workbook("lista.xlsx", 4, rows);
  const std::string items = Query("SELECT count(*) FROM Items");
  const pid_t other = test::StartChild([&] { runner.Run({"importar-excel", book}); });
  const test::CommandResult mine = runner.Run({"importar-excel", book});
  int ended = 0;
  ASSERT_EQ(waitpid(other, &ended, 0), other);
  EXPECT_TRUE(mine.code == 0 || mine.messages.find("La operación no pudo concluirse") != std::string::npos)
      << mine.messages;
  EXPECT_EQ(Query("SELECT count(*) FROM Items"), std::to_string(std::stoi(items) + 2'000) + ",");
  EXPECT_EQ(Query("SELECT count(*), count(DISTINCT idItem) FROM Precios WHERE idItem LIKE 'DOBLE%'"), "4000,2000,");
  EXPECT_EQ(Query("PRAGMA integrity_check"), "ok,");
}

TEST_F(ImportCommands, DoWhatTheRowMenuDoes) {
  const Cells galaxy{"Galaxy Y", "Samsung", "GSM", {}, 118.0, {}, 50.0};
  const Cells curve{"Curve", "Blackberry", "CDMA", {}, 236.0, {}, 100.0};
  const std::string book = Workbook("movilnet.xlsx", 3, {galaxy, galaxy, curve});
  const std::string item = Query("SELECT min(idItem) FROM Items WHERE Oculto = 0");
  const std::string code = item.substr(0, item.size() - 1);
  for (const auto& [option, value] : {std::pair{"--asociar", "3"},
                                      {"--asociar", "x=1"},
                                      {"--codigo", "2="},
                                      {"--codigo", "h=A"},
                                      {"--codigo", "0=A"}}) {
    Expect({{{"importar-movilnet", book, option, value}, 2, " espera FILA="}});
  }
  const std::string before = Query("SELECT count(*), total(Precio) FROM Precios");
  Expect({{{"importar-movilnet", book, "--asociar", "3=NOHAY"}, 1, "no admite --asociar con el valor \"NOHAY\""},
          {{"importar-movilnet", book, "--codigo", "2=" + code}, 1, "no admite --codigo"},
          {{"importar-movilnet", book, "--asociar", "9=" + code}, 1, "No se aplicó nada: no hay un renglón 9; se ley"},
          {{"importar-movilnet", book, "--asociar", "h3=" + code}, 1, "no hay un renglón en la fila 3 de la hoja;"}});
  EXPECT_EQ(Query("SELECT count(*), total(Precio) FROM Precios"), before);
  const test::CommandResult result = runner.Run({"--json", "importar-movilnet", book, "--asociar", "3=" + code,
                                                 "--asociar", "3=", "--codigo", "h5=otro 1", "--asociar", "1=" + code});
  ASSERT_EQ(result.code, 0) << result.messages;
  EXPECT_THAT(result.messages, testing::HasSubstr("el renglón 2 (fila 5 de la hoja, «Galaxy Y»)."));
  const json document = json::parse(result.output);
  EXPECT_EQ(document["aplicado"], true);
  EXPECT_EQ(document["resumen"]["nuevos_items"], 2);
  EXPECT_EQ(document["filas"][0]["asociado"], code);
  EXPECT_EQ(document["filas"][1]["codigo"], "OTRO1");
  EXPECT_EQ(Query("SELECT count(*) FROM Items WHERE idItem IN ('OTRO1', 'TBLCURVE')"), "2,");
}

TEST_F(ImportCommands, FailWithTheComponentsText) {
  const std::string text = folder.File("texto.xlsx");
  test::WriteFile(text, "no es un libro");
  const std::string book = Workbook("lista.xlsx", 4, {{"A", "a", {}, {}, 1.0, 1.0}});
  Expect({{{"importar-excel", folder.File("nada.xlsx")}, 1, "no existe, favor seleccione la ubicación correcta"},
          {{"importar-excel", places.examples + "/movilnet.xlsx"}, 1, "no está hecho con la plantilla"},
          {{"importar-movilnet", Workbook("vacia.xlsx", 3, {}), "--simular"}, 1, "No se leyó ningún renglón"},
          {{"importar-excel", text}, 1, "El archivo tiene el formato incorrecto o bien está dañado"},
          {{"importar-excel", book, "--informe", folder.File("x.txt")}, 2, ".csv o .xlsx"},
          {{"importar-excel", book, "--informe", book}, 2, "el mismo libro"}});
  EXPECT_EQ(runner.Run({"opciones", "15"}).output, "PreciosMovilnet_RutaUltimoArchivo=" + text + "\n")
      << "for next time";
  EXPECT_EQ(Json({"importar-movilnet", places.examples + "/precios.xlsx"}, 1)["aplicado"], false);
}

}  // namespace
}  // namespace tolvan
