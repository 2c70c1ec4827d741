// The commands that import price lists, on a demo store and real workbooks, from the words to the database.
#include <sys/wait.h>

#include <algorithm>

#include "base/Text.h"
#include "cli/DemoStoreFixture.h"
#include "support/ChildProcess.h"

namespace tolvan {
namespace {

using json = nlohmann::ordered_json;
using Cells = std::vector<NewCell>;
using testing::HasSubstr;

using ImportCommands = test::DemoStoreFixture;

TEST_F(ImportCommands, SimulateApplyAndReport) {
  const std::string book = Workbook(
      "lista.xlsx", 4, {{"nuevo, 1", "tv  23.5/led-x", {}, {}, 10.5, 15.0, {}, {}, "12"}, {" ", "=y"}, {}, {"z"}});
  Query("PRAGMA journal_mode=DELETE");  // a file that the store's other programs made
  const auto before = test::FilesIn(folder.Path());
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
  Expect({"importar-movilnet", places.examples + "/movilnet.xlsx", "--simular", "--informe", report}, 0);
  EXPECT_EQ(std::filesystem::remove(report), true);
  EXPECT_EQ(test::FilesIn(folder.Path()), before) << "a simulation leaves nothing but the report";
  const test::CommandResult result = runner.Run({"importar-excel", book, "--informe", report});
  EXPECT_THAT(result.messages, HasSubstr("Nuevos Items: 1\n"));
  EXPECT_THAT(result.output, HasSubstr(unused));
  EXPECT_EQ(Query("SELECT count(*) FROM Items WHERE idItem = 'NUEVO,1'"), "1");
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
  Expect({"importar-excel", book, "--informe", report}, 0);
  const std::string program =
      "import sys, openpyxl\nfor row in openpyxl.load_workbook(sys.argv[1]).active.values: print(*row[:8])";
  EXPECT_EQ(test::OutputOf(TOLVAN_PYTHON " -c '" + program + "' '" + report + "'"),
            "Acción Fila Código Descripción Costo anterior Costo nuevo PVP anterior PVP nuevo\n"
            "Actualizar 5 ALI0001 ALI0001 34.75 34.75 44 99.5\n"
            "Agregar 6 NUEVO =1+1 None 0 None None\n");
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
  EXPECT_EQ(Query("SELECT count(*) FROM Items"), std::to_string(std::stoi(items) + 2'000));
  EXPECT_EQ(Query("SELECT count(*), count(DISTINCT idItem) FROM Precios WHERE idItem LIKE 'DOBLE%'"), "4000,2000");
  EXPECT_EQ(Query("PRAGMA integrity_check"), "ok");
}

TEST_F(ImportCommands, DoWhatTheRowMenuDoes) {
  const Cells galaxy{"Galaxy Y", "Samsung", "GSM", {}, 118.0, {}, 50.0};
  const Cells curve{"Curve", "Blackberry", "CDMA", {}, 236.0, {}, 100.0};
  const std::string book = Workbook("movilnet.xlsx", 3, {galaxy, galaxy, curve});
  const std::string code = "ALI0001";
  for (const auto& [option, value] : {std::pair{"--asociar", "3"},
                                      {"--asociar", "x=1"},
                                      {"--codigo", "2="},
                                      {"--codigo", "h=A"},
                                      {"--codigo", "0=A"}}) {
    Expect({"importar-movilnet", book, option, value}, 2, " espera FILA=");
  }
  const std::string before = Query("SELECT count(*), total(Precio) FROM Precios");
  Expect({"importar-movilnet", book, "--asociar", "3=NOHAY"}, 1, "no admite --asociar con el valor \"NOHAY\"");
  Expect({"importar-movilnet", book, "--codigo", "2=" + code}, 1, "no admite --codigo");
  Expect({"importar-movilnet", book, "--asociar", "9=" + code}, 1, "No se aplicó nada: no hay un renglón 9; se ley");
  Expect({"importar-movilnet", book, "--asociar", "h3=" + code}, 1, "no hay un renglón en la fila 3 de la hoja;");
  EXPECT_EQ(Query("SELECT count(*), total(Precio) FROM Precios"), before);
  const test::CommandResult result = runner.Run({"--json", "importar-movilnet", book, "--asociar", "3=" + code,
                                                 "--asociar", "3=", "--codigo", "h5=otro 1", "--asociar", "1=" + code});
  ASSERT_EQ(result.code, 0) << result.messages;
  EXPECT_THAT(result.messages, HasSubstr("el renglón 2 (fila 5 de la hoja, «Galaxy Y»)."));
  const json document = json::parse(result.output);
  EXPECT_EQ(document["aplicado"], true);
  EXPECT_EQ(document["resumen"]["nuevos_items"], 2);
  EXPECT_EQ(document["filas"][0]["asociado"], code);
  EXPECT_EQ(document["filas"][1]["codigo"], "OTRO1");
  EXPECT_EQ(Query("SELECT count(*) FROM Items WHERE idItem IN ('OTRO1', 'TBLCURVE')"), "2");
}

TEST_F(ImportCommands, TheTemplateNamesTwentyItemsThatWillNotComeBackAsTheyAre) {
  for (const int items : {20, 21}) {
    Execute("UPDATE ItemsUnidadesInv SET CostoActual = 'caro' WHERE idItem IN (SELECT idItem FROM Items LIMIT " +
            std::to_string(items) + ")");
    const std::string messages = runner.Run({"plantilla", folder.File("libro.xlsx"), "--con-datos"}).messages;
    EXPECT_EQ(std::ranges::count(messages, '\n'), items) << messages;
    EXPECT_EQ(messages.ends_with("\n… y 1 más: vea la columna G del libro\n"), items == 21) << messages;
  }
}

TEST_F(ImportCommands, FailWithTheComponentsText) {
  const std::string text = folder.File("texto.xlsx");
  test::WriteFile(text, "no es un libro");
  const std::string book = Workbook("lista.xlsx", 4, {{"A", "a", {}, {}, 1.0, 1.0}});
  Expect({"importar-excel", folder.File("nada.xlsx")}, 1, "no existe, favor seleccione la ubicación correcta");
  Expect({"importar-excel", places.examples + "/movilnet.xlsx"}, 1, "no está hecho con la plantilla");
  Expect({"importar-movilnet", Workbook("vacia.xlsx", 3, {}), "--simular"}, 1, "No se leyó ningún renglón");
  Expect({"importar-excel", text}, 1, "El archivo tiene el formato incorrecto o bien está dañado");
  Expect({"importar-excel", book, "--informe", folder.File("x.txt")}, 2, ".csv o .xlsx");
  Expect({"importar-excel", book, "--informe", book}, 2, "el mismo libro");
  Expect({"opciones", "15"}, 0, "", "PreciosMovilnet_RutaUltimoArchivo=" + text + "\n");
  EXPECT_EQ(Json({"importar-movilnet", places.examples + "/precios.xlsx"}, 1)["aplicado"], false);
}

TEST_F(ImportCommands, ShowTheRowsAsTheyFitTheTerminalAndWholeElsewhere) {
  std::vector<std::string> codes;
  for (int row = 0; row < 1'100; ++row) codes.push_back("N" + std::to_string(row));
  std::vector<std::vector<NewCell>> rows{
      {"ALI0001", {}, {}, {}, {}, 1234.5}, {"N0", "otra vez"}, {"日本", "日本\x1B[2J\xC2\x9B[2J"}};
  for (const std::string& code : codes) rows.push_back({code, "cafe molido de la loma alta", {}, {}, 10.5, 1234.0});
  std::vector<std::string> words{"importar-excel", Workbook("lista.xlsx", 4, rows), "--simular"};
  const std::string whole = runner.Run(words).output;
  EXPECT_EQ(std::ranges::count(whole, '\n'), 1'103 + 3 * 3 + 4);
  EXPECT_THAT(whole, HasSubstr("\nLos títulos de las filas 3 y 4 no son los de la plantilla"));
  EXPECT_EQ(whole.find_first_of("\x1B\x9B"), std::string::npos);
  for (const std::size_t columns : {40U, 60U, 80U, 120U}) {
    runner.columns = columns;
    const std::string table = runner.Run(words).output;
    for (const std::string_view line : Split(table, '\n')) EXPECT_LE(CountColumns(line), columns) << line;
    EXPECT_THAT(table, HasSubstr("  … y 1,053 más; --informe los escribe\n"));
    EXPECT_THAT(table, HasSubstr("ALI0001")) << "a small group is shown whole";
  }
  const auto expect = [&](std::size_t columns, const std::string& text) {
    runner.columns = columns;
    EXPECT_THAT(runner.Run(words).output, HasSubstr(text));
  };
  expect(70, "\n    10  N2     Sí     CAFE MOLIDO DE LA LOMA ALTA  10.50  1,234.00\n");
  expect(60, "\n    10  N2     Sí     CAFE MOLIDO DE LA      10.50  1,234.00\n                      LOMA ALTA\n");
  rows.resize(203);
  words[1] = Workbook("corta.xlsx", 4, rows);
  expect(80, "  … y 153 más; --informe los escribe\n");
}

TEST_F(ImportCommands, NeedAYesFromAPersonAndRowsThatCouldBeShown) {
  const std::string book = Workbook("lista.xlsx", 4, {{"NUEVO", {}, {}, {}, 1.0, 2.0}});
  const std::string query = "SELECT count(*) FROM Items WHERE idItem = 'NUEVO'";
  const std::string call = TOLVAN_PROGRAM " --host " + places.host + " importar-excel " + book;
  EXPECT_EQ(test::OutputOf(call + " </dev/null 2>/dev/null >/dev/full; echo $?"), "1\n");
  EXPECT_EQ(Query(query), "0");
  runner.terminal = true;
  for (const char* answer : {"", "\n", "n\n", "sí\n"}) {
    EXPECT_EQ(Query(query), "0");
    runner.typed = answer;
    Expect({"importar-excel", book}, 0);
  }
  EXPECT_EQ(Query(query), "1");
}

}  // namespace
}  // namespace tolvan
