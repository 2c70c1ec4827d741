// The commands of sales, settings, taxpayers and the collector on a real store: from the words to the file, the server,
// the database and the exit code. Those that import prices have a file of their own.
#include <cstdlib>
#include <utility>

#include "cli/DemoStoreFixture.h"
#include "support/LoopbackServer.h"

namespace tolvan {
namespace {

using json = nlohmann::ordered_json;
using test::ReadFile;
using test::WriteFile;
using testing::HasSubstr;

class DailySales : public test::DemoStoreFixture {
 protected:
  DailySales() {
    // Yesterday, 29 February 2024, sold 1234.56 before taxes.
    Execute(
        "DELETE FROM Ventas; INSERT INTO Ventas (idVenta, idCompania, FechaValidacion, VentaRealizada, Anulado, "
        "Impuestos, GranTotal) VALUES (1, 1, '2024-02-29 00:00:00', 1, 0, 18, 1018), "
        "(2, 9, '2024-02-29 23:59:59', 1, 0, 0, 234.56), (3, 1, '2024-03-01 00:00:00', 1, 0, 0, 50000), "
        "(4, 1, '2024-02-29 12:00:00', 1, 1, 0, 50000), (5, 1, '2024-02-29 12:00:00', 0, 0, 0, 50000);");
  }

  static std::string Lines(const std::string& file, const std::string& record) {
    return "Archivo:  " + file + "\nRegistro: " + record + "\nEnviado:  no\n";
  }

  const std::string line = "0001,1235,\"19:00\",\"29/02/2024\",";
  const std::string february = places.exportFolder + "/240229.txt";
  const std::string march = places.exportFolder + "/240301.txt";
};

TEST_F(DailySales, VexlorWritesYesterdaySilently) {
  const auto result = runner.Run({"--json", "vexlor"});
  EXPECT_EQ(result.messages, "");
  EXPECT_EQ(json::parse(result.output), (json{{"archivo", february}, {"registro", line}, {"enviado", false}}));
  EXPECT_EQ(ReadFile(february), line);
}

TEST_F(DailySales, VentasStoresTheDateAskedForAndKeepsIt) {
  Expect({"ventas", "--fecha", "2024-03-01"}, 0, "La operación finalizó con éxito.\n",
         Lines(march, "0001,50000,\"19:00\",\"01/03/2024\","));
  Expect({"opciones", "14=0", "0=Peñón"}, 0);
  Expect({"ventas"}, 0);
  Expect({"ventas", "--fecha", "2024-02-30"}, 2, "no es AAAA-MM-DD");
  EXPECT_EQ(ReadFile(march), "Pe\xF1\xF3n,50000,19:00,01/03/2024");
}

TEST_F(DailySales, AFolderThatIsNotThereIsTheTextOfTheComponentAndItsCause) {
  const std::string text =
      "Error en acceso a la ruta/archivo:\n/no/hay/ventas.txt\n"
      "No se puede acceder: no existe el archivo o la carpeta (código 2)\n/no/hay";
  Expect({"opciones", "6=/no/hay", "9=ventas.txt"}, 0);
  Expect({"vexlor"}, 1, text, "");
  EXPECT_EQ(Json({"vexlor"}, 1), (json{{"archivo", nullptr}, {"registro", line}, {"enviado", false}, {"error", text}}));
}

// The provider's own contract joins every operation with every such file; here every command that writes one is there.
TEST_F(DailySales, NoCommandWritesOverTheDatabase) {
  const std::string link = folder.File("lista.xlsx");
  std::filesystem::create_hard_link(places.database, link);
  runner.Run({"opciones", "6=.", "9=tienda.db"});
  const std::vector<std::vector<std::string>> calls = {
      {"vexlor"},
      {"ventas"},
      {"plantilla", link},
      {"plantilla", link, "--con-datos"},
      {"colector", link, "--proposito", "conteo"},
      {"importar-rnc", places.examples + "/DGII_RNC.TXT", "--rechazos", link},
      {"--si", "importar-excel", places.examples + "/precios.xlsx", "--informe", link}};
  for (const std::vector<std::string>& words : calls) {
    Expect(words, 1, "es un archivo propio de la tienda");
    EXPECT_TRUE(ReadFile(places.database).starts_with("SQLite format 3")) << words.front();
  }
}

TEST_F(DailySales, AHostThatCannotBeReachedIsExitCodeFour) {
  WriteFile(places.host, ReadFile(places.host) + "nada = 1\n");
  Expect({"vexlor"}, 4, "tolvan.ini, línea 16");
  for (const std::string database : {"otra.db", "tolvan.ini"}) {
    WriteFile(places.host, "[base_de_datos]\nconexion = " + database + "\n");
    Expect({"vexlor"}, 4, database);
  }
  EXPECT_FALSE(std::filesystem::exists(places.folder + "/otra.db"));
}

TEST_F(DailySales, MailWithoutRecipientAsksAPersonAndFailsWithoutOne) {
  runner.Run({"opciones", "7=1", "8="});
  Expect({"vexlor"}, 1, "No se puede enviar archivo por e-mail\n", Lines(february, line));
  runner.terminal = true;
  runner.typed = "\n";
  Expect({"ventas"}, 1, "Procedimiento cancelado por el usuario");
}

using Settings = test::DemoStoreFixture;

TEST_F(Settings, AreListedInOrderReadByKeyOrIndexAndWritten) {
  const json all = Json({"opciones"});
  ASSERT_EQ(all.size(), 16U);
  EXPECT_EQ(all.begin().key(), "MicrosExp_CodigoTienda");
  EXPECT_EQ(std::next(all.begin(), 11).key(), "SVentas_OffsetAnno");
  Expect({"opciones", "0=0042", "MicrosExp_NombreArchivo=a=b ñ"}, 0);
  Expect({"opciones", "9", "microsexp_codigotienda"}, 0, "",
         "MicrosExp_NombreArchivo=a=b ñ\nMicrosExp_CodigoTienda=0042\n");
}

TEST_F(Settings, ARefusedValueChangesNothing) {
  Expect({"opciones", "0=0042", "4=tarde"}, 1,
         "Error al intentar guardar opciones del sistema: MicrosExp_HoraFinalVenta_Horas no admite \"tarde\"\n");
  Expect({"opciones", "9=x.txt", "0=Peñón €Ω"}, 1,
         "MicrosExp_CodigoTienda (código de la empresa) tiene el carácter «Ω»");
  Expect({"opciones", "9=x.txt", "9=\xFF"}, 2, "no es texto UTF-8");
  Expect({"opciones", "Nada=1"}, 2, "No existe la opción");
  Expect({"opciones", "16"}, 2, "No existe la opción");
  Expect({"opciones", "9", "0"}, 0, "", "MicrosExp_NombreArchivo=\nMicrosExp_CodigoTienda=0001\n");
}

TEST_F(Settings, ADamagedFileIsPutAsideReportedOnceAndReplacedByDefaults) {
  for (const auto& entry : std::filesystem::directory_iterator(places.folder + "/ajustes")) {
    if (entry.path().extension() == ".ajustes") WriteFile(entry.path(), "?");
  }
  Expect({"opciones", "0"}, 0, "ajustes", "MicrosExp_CodigoTienda=codigo_local\n");
  EXPECT_EQ(runner.Run({"opciones", "0"}).messages, "");
}

class Upload : public test::DemoStoreFixture {
 protected:
  Upload() { runner.Run({"opciones", "10=127.0.0.1:" + std::to_string(server.Port())}); }

  test::LoopbackServer server{"answer_server.py", {folder.Path()}};
};

TEST_F(Upload, SendsWhatTheServerAsksForAndGoesOnFromThere) {
  WriteFile(folder.File("pending"), "1 20240228 20240301");
  WriteFile(folder.File("faults"), "20240301 delayed\n");
  const auto first = runner.Run({"--json", "subir-ventas"});
  EXPECT_EQ(first.messages, "");
  EXPECT_EQ(json::parse(first.output), (json{{"dias", {"2024-02-28", "2024-03-01"}}, {"completo", true}}));
  EXPECT_EQ(ReadFile(folder.File("days/20240301")), "0 1 0001 1 3 2024 0 0.00 0.00 0.00 0.00") << "today has no sales";
  EXPECT_THAT(ReadFile(folder.File("days/20240228")), testing::MatchesRegex("0 1 0001 28 2 2024 [1-9][0-9]* .*"));
  WriteFile(folder.File("pending"), "1");
  Expect({"opciones", "11", "12", "13"}, 0, "", "SVentas_OffsetDia=1\nSVentas_OffsetMes=3\nSVentas_OffsetAnno=2024\n");
  Expect({"subir-ventas"}, 0, "No hay días pendientes: el servidor de ventas no pidió ninguno.\n",
         "Días enviados: 0\n");
  EXPECT_EQ(Json({"subir-ventas"}), (json{{"dias", json::array()}, {"completo", true}}));
  EXPECT_TRUE(ReadFile(folder.File("requests")).ends_with("?1%201%200001%201%203%202024 HTTP/1.1\n"));
}

TEST_F(Upload, WhatFailsIsReportedAndCanBeSentAgain) {
  WriteFile(folder.File("pending"), "1 20240227 20240228 20240229");
  WriteFile(folder.File("faults"), "20240228 cut");
  const json failed = Json({"subir-ventas"}, 1);
  EXPECT_EQ(failed["dias"], json{"2024-02-27"});
  EXPECT_EQ(failed["completo"], false);
  EXPECT_THAT(failed["error"].get<std::string>(), HasSubstr("incompleta"));
  WriteFile(folder.File("faults"), "");
  Expect({"subir-ventas"}, 0, "", "2024-02-27\n2024-02-28\n2024-02-29\nDías enviados: 3\n");
  Expect({"opciones", "11"}, 0, "", "SVentas_OffsetDia=29\n");
  WriteFile(folder.File("faults"), "list hangs\n");
  runner.interruption.requested = true;
  Expect({"subir-ventas"}, 1, "Operación interrumpida", "Días enviados: 0 (incompleto)\n");
}

using Registry = test::DemoStoreFixture;

json Counts(int registered, int notRegistered, int errors, int lines) {
  return {{"nuevos", registered}, {"no_registrados", notRegistered}, {"errores", errors}, {"lineas", lines}};
}

TEST_F(Registry, OfTheDemoIsImportedAndASecondRunSaysWhyItDoesNothing) {
  const std::string file = places.examples + "/DGII_RNC.TXT";
  EXPECT_EQ(Json({"importar-rnc", file}), Counts(2000, 0, 0, 2000));
  const std::string zip = folder.File("DGII_RNC.ZIP");
  ASSERT_EQ(std::system(("python3 -m zipfile -c '" + zip + "' '" + file + "'").c_str()), 0);
  Expect({"importar-rnc", zip}, 0, "No hay contribuyentes nuevos: los del archivo ya estaban registrados.\n",
         "Nuevos:         0\nNo registrados: 1\nErrores:        0\nLíneas:         2000\n");
}

TEST_F(Registry, RejectedLinesAreWrittenAndEndWithThree) {
  const std::string file = folder.File("registro.txt");
  const std::string report = folder.File("rechazos.txt");
  WriteFile(file, "101012341|ACME\r\n\r\n101012349|MALA\r\nsin separador\r\n");
  EXPECT_EQ(Json({"importar-rnc", file, "--rechazos", report}, 3), Counts(1, 0, 1, 4));
  EXPECT_EQ(ReadFile(report),
            "3\tel identificador no es un RNC ni una cédula válidos\t101012349|MALA\n"
            "4\tomitida: no tiene el separador |\tsin separador\n");
  Expect({"importar-rnc", file}, 3, "Líneas omitidas por no tener el separador |: 1\n");
  Expect({"importar-rnc", file, "--rechazos", file}, 2, "no puede ser el mismo que se importa");
  EXPECT_THAT(ReadFile(file), HasSubstr("ACME")) << "the report never replaces what is imported";
}

TEST_F(Registry, WhatKeptNothingSaysWhy) {
  WriteFile(folder.File("nota.txt"), "sin separador\n");
  const std::string report = folder.File("rechazos.txt");
  Expect({"importar-rnc", folder.File("nota.txt"), "--rechazos", report}, 1, "no es el registro", "");
  EXPECT_FALSE(std::filesystem::exists(report));
  runner.interruption.requested = true;
  const json interrupted = Json({"importar-rnc", places.examples + "/DGII_RNC.TXT"}, 1);
  EXPECT_THAT(interrupted["error"].get<std::string>(), HasSubstr("Operación interrumpida"));
}

TEST_F(Registry, IdentifiersAreRecognisedWithoutAHostAndLookedUpOnlyWithOne) {
  const std::string host = std::exchange(runner.host, {});
  const json found = Json({"rnc", "1-01-01234-1", "00113918205", "x", "RNC 101012341"});
  EXPECT_EQ(found[0], (json{{"entrada", "1-01-01234-1"},
                            {"codigo", "101012341"},
                            {"es_rnc", true},
                            {"es_cedula", false},
                            {"es_valido", true},
                            {"codigo_valido", true},
                            {"personeria", 1},
                            {"nombre", ""}}));
  EXPECT_EQ(found[1]["es_cedula"], true);
  EXPECT_EQ(found[2]["es_valido"], false);
  EXPECT_EQ(found[3]["codigo_valido"], false);
  Expect({"rnc", "101012341", "--consultar"}, 4);
  runner.host = host;
  Expect({"rnc", "101012341", "--consultar"}, 1);
  Expect({"rnc", "101012348", "--consultar"}, 0);
}

TEST_F(Registry, TheConfiguredPageIsAskedForNames) {
  const test::LoopbackServer server("answer_server.py", {folder.Path()});
  WriteFile(places.host, ReadFile(places.host) + "[dgii]\nservidor = 127.0.0.1:" + std::to_string(server.Port()) +
                             "\nviewstate = dDw+/A==\neventvalidation = EV+/\n");
  Expect({"rnc", "--consultar", "101012341"}, 0, "",
         "101012341: RNC 101012341, Persona Jurídica, PEÑA &amp; HIJOS, SRL\n");
  Expect({"rnc", "--consultar", "024691352"}, 0, "no tiene inscrito");
  Expect({"rnc", "--consultar", "049382691"}, 1, "ha cambiado");
  Expect({"rnc", "--consultar", "037037022"}, 1, "estado 500");
  EXPECT_THAT(Json({"rnc", "--consultar", "400000005"}, 1)[0]["error"].get<std::string>(), HasSubstr("no respondió"));
  EXPECT_THAT(
      ReadFile(folder.File("request")),
      testing::StartsWith("GET /app/WebApps/Consultas/rnc/RncWeb.aspx?__VIEWSTATE=dDw+/A==&__EVENTVALIDATION=EV+/"
                          "&rbtnlTipoBusqueda=0&btnBuscaRncCed=Buscar&txtRncCed=400000005 HTTP/1.1\r\n"));
}

class Collector : public test::DemoStoreFixture {
 protected:
  test::TemporaryFolder output;
  std::string file = output.File("a.tolpak");
};

TEST_F(Collector, GetsTheDemoStore) {
  const json counted = Json({"colector", file, "--proposito", "conteo"});
  const std::string bytes = ReadFile(file);
  EXPECT_EQ(counted["archivo"], file);
  EXPECT_THAT(bytes, HasSubstr("<Instancia>" + counted["instancia"].get<std::string>() + "</Instancia>"));
  EXPECT_THAT(bytes, HasSubstr("<MultiplesAreas>1</MultiplesAreas>"));
  EXPECT_GE(counted["articulos"], 300);
  EXPECT_GE(counted["barcodes"], 300);
  const auto result = runner.Run({"colector", file, "--proposito", "recepcion"});
  EXPECT_THAT(result.messages, HasSubstr("Archivo guardado con éxito\nFavor copie"));
  EXPECT_THAT(result.output, HasSubstr("\nArtículos: " + counted["articulos"].dump() + "\nBarcodes:  "));
  EXPECT_THAT(ReadFile(file), HasSubstr("<MultiplesAreas>0</MultiplesAreas>"));
}

TEST_F(Collector, WithoutAFileIsToldWhy) {
  Expect({"colector", file}, 2, "requiere --proposito");
  Expect({"colector", "", "--proposito", "conteo"}, 2, "SALIDA está vacío");
  Expect({"colector", output.File("no/hay.tolpak"), "--proposito", "conteo"}, 1);
  Execute("ALTER TABLE Barcodes RENAME TO Otra");
  const std::vector<std::string> words{"colector", file, "--proposito", "conteo"};
  Expect(words, 1, "No se creó el archivo: una consulta no se pudo abrir", "");
  EXPECT_THAT(Json(words, 1)["error"].get<std::string>(), HasSubstr("Barcodes"));
  EXPECT_THAT(test::NamesIn(output.Path()), testing::IsEmpty());
  Execute("ALTER TABLE Otra RENAME TO Barcodes; UPDATE Items SET Activo = 0");
  Expect(words, 0, "no tiene artículos");
  std::filesystem::remove(places.database);
  Expect(words, 4);
}

TEST_F(Collector, ItsBatchesFromTheirOpeningToTheirEnd) {
  const auto batch = [](const json& number, int closed) { return json{{"lote", number}, {"cerrados", closed}}; };
  Expect({"lote", "buscar"}, 0, "No hay ningún lote abierto.", "");
  EXPECT_EQ(Json({"lote", "buscar"}), batch(nullptr, 0));
  EXPECT_EQ(Json({"lote", "abrir"}), batch(1, 0));
  Expect({"lote", "abrir"}, 0, "ya hay uno abierto", "Lote:     1 (abierto)\n");
  EXPECT_EQ(Json({"lote", "buscar"}), batch(1, 0));
  EXPECT_EQ(Json({"lote", "cerrar"}), batch(1, 1));
  EXPECT_EQ(Json({"lote", "cerrar"}), batch(nullptr, 0));
  Expect({"lote", "cerrar"}, 0, "No se cerró nada", "");
  Expect({"lote", "abrir"}, 0, "", "Lote:     2 (abierto)\n");
  Expect({"lote", "cerrar"}, 0, "", "Lote:     2 (cerrado)\nCerrados: 1\n");
  Expect({"lote", "borrar"}, 2, "use abrir, buscar o cerrar");
}

TEST_F(Collector, ChecksumsOfFilesAndTextsNeedNoHost) {
  runner.host.clear();
  WriteFile(file, "123456789");
  const json expected{{"valor", -873187034}, {"hex", "CBF43926"}};
  EXPECT_EQ(Json({"crc32", file}), expected);
  EXPECT_EQ(Json({"crc32", "--texto", "123456789"}), expected);
  WriteFile(file, std::string(3'000'001, 'x'));  // more than a block; the value is zlib's
  EXPECT_THAT(runner.Run({"crc32", file}).output, HasSubstr("Hex:   F12B617D"));
  Expect({"crc32", "--texto", ""}, 0, "", "Valor: 0\nHex:   00000000\n");
  Expect({"crc32"}, 2, "uno de los dos", "");
  Expect({"crc32", file, "--texto", "x"}, 2, "uno de los dos", "");
  Expect({"crc32", ""}, 2, "ARCHIVO está vacío", "");
  Expect({"crc32", output.File("no")}, 1, "no existe", "");
  Expect({"crc32", output.Path()}, 1, "carpeta", "");
  Expect({"crc32", "--texto", "Ω"}, 1, "no caben en un byte", "");
  runner.interruption.requested = true;
  Expect({"crc32", file}, 1, "interrumpida");
}

}  // namespace
}  // namespace tolvan
