// The commands of the daily sales file and of the upload, and the settings they work by, on a real store: from the
// words to the file, the server and the exit code.
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
};

TEST_F(DailySales, VexlorWritesYesterdaySilently) {
  const auto result = runner.Run({"--json", "vexlor"});
  EXPECT_EQ(result.code, 0);
  EXPECT_EQ(result.messages, "");
  const std::string file = places.exportFolder + "/240229.txt";
  EXPECT_EQ(json::parse(result.output),
            (json{{"archivo", file}, {"registro", "0001,1235,\"19:00\",\"29/02/2024\","}, {"enviado", false}}));
  EXPECT_EQ(ReadFile(file), "0001,1235,\"19:00\",\"29/02/2024\",");
}

TEST_F(DailySales, VentasStoresTheDateAskedForAndKeepsIt) {
  EXPECT_EQ(runner.Run({"ventas", "--fecha", "2024-03-01"}).output,
            "Archivo:  " + places.exportFolder +
                "/240301.txt\nRegistro: 0001,50000,\"19:00\",\"01/03/2024\",\nEnviado:  no\n");
  Expect({{{"opciones", "14=0", "0=Peñón"}, 0},
          {{"ventas"}, 0, "La operación finalizó con éxito.\n"},
          {{"ventas", "--fecha", "2024-02-30"}, 2, "no es AAAA-MM-DD"}});
  EXPECT_EQ(ReadFile(places.exportFolder + "/240301.txt"), "Pe\xF1\xF3n,50000,19:00,01/03/2024");
}

TEST_F(DailySales, AFolderThatIsNotThereIsTheTextOfTheComponentAndItsCause) {
  runner.Run({"opciones", "6=/no/hay", "9=ventas.txt"});
  const std::string text = "Error en acceso a la ruta/archivo:\n/no/hay/ventas.txt";
  EXPECT_EQ(Json({"vexlor"}, 1), (json{{"archivo", nullptr},
                                       {"registro", "0001,1235,\"19:00\",\"29/02/2024\","},
                                       {"enviado", false},
                                       {"error", text}}));
  const auto plain = runner.Run({"vexlor"});
  EXPECT_EQ(plain.output, "");
  EXPECT_TRUE(plain.messages.starts_with(text + "\n")) << plain.messages;
  EXPECT_THAT(plain.messages, HasSubstr("no existe"));
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
    Expect({{words, 1, "es un archivo propio de la tienda"}});
    EXPECT_TRUE(ReadFile(places.database).starts_with("SQLite format 3")) << words.front();
  }
}

TEST_F(DailySales, AHostThatCannotBeReachedIsExitCodeFour) {
  const std::vector<std::pair<std::string, const char*>> cases = {
      {ReadFile(places.host) + "nada = 1\n", "tolvan.ini, línea 16"},
      {"[base_de_datos]\nconexion = otra.db\n", "otra.db"},
      {"[base_de_datos]\nconexion = tolvan.ini\n", "tolvan.ini"},
  };
  for (const auto& [text, named] : cases) {
    WriteFile(places.host, text);
    Expect({{{"vexlor"}, 4, named}});
    EXPECT_FALSE(std::filesystem::exists(places.folder + "/otra.db"));
  }
}

TEST_F(DailySales, MailWithoutRecipientAsksAPersonAndFailsWithoutOne) {
  runner.Run({"opciones", "7=1", "8="});
  const auto unattended = runner.Run({"vexlor"});
  EXPECT_EQ(unattended.code, 1);
  EXPECT_TRUE(unattended.messages.starts_with("No se puede enviar archivo por e-mail\n")) << unattended.messages;
  EXPECT_THAT(unattended.output, HasSubstr("240229.txt")) << "the file stays written, and is shown";
  runner.terminal = true;
  runner.typed = "\n";
  Expect({{{"ventas"}, 1, "Procedimiento cancelado por el usuario"}});
}

using Settings = test::DemoStoreFixture;

TEST_F(Settings, AreListedInOrderReadByKeyOrIndexAndWritten) {
  const json all = Json({"opciones"});
  ASSERT_EQ(all.size(), 16U);
  EXPECT_EQ(all.begin().key(), "MicrosExp_CodigoTienda");
  EXPECT_EQ(std::next(all.begin(), 11).key(), "SVentas_OffsetAnno");
  Expect({{{"opciones", "0=0042", "MicrosExp_NombreArchivo=a=b ñ"}, 0}});
  EXPECT_EQ(runner.Run({"opciones", "9", "microsexp_codigotienda"}).output,
            "MicrosExp_NombreArchivo=a=b ñ\nMicrosExp_CodigoTienda=0042\n");
}

TEST_F(Settings, ARefusedValueChangesNothing) {
  Expect({{{"opciones", "0=0042", "4=tarde"},
           1,
           "Error al intentar guardar opciones del sistema: MicrosExp_HoraFinalVenta_Horas no admite \"tarde\"\n"},
          {{"opciones", "9=x.txt", "0=Peñón €Ω"},
           1,
           "MicrosExp_CodigoTienda (código de la empresa) tiene el carácter «Ω»"},
          {{"opciones", "9=x.txt", "9=\xFF"}, 2, "no es texto UTF-8"},
          {{"opciones", "Nada=1"}, 2, "No existe la opción"},
          {{"opciones", "16"}, 2, "No existe la opción"}});
  EXPECT_EQ(runner.Run({"opciones", "9", "0"}).output, "MicrosExp_NombreArchivo=\nMicrosExp_CodigoTienda=0001\n");
}

TEST_F(Settings, ADamagedFileIsPutAsideReportedAndReplacedByDefaults) {
  for (const auto& entry : std::filesystem::directory_iterator(places.folder + "/ajustes")) {
    if (entry.path().extension() == ".ajustes") WriteFile(entry.path(), "?");
  }
  const auto result = runner.Run({"opciones", "0"});
  EXPECT_EQ(result.output, "MicrosExp_CodigoTienda=codigo_local\n");
  EXPECT_NE(result.messages, "");
  EXPECT_EQ(runner.Run({"opciones", "0"}).messages, "") << "reported once";
}

class Upload : public test::DemoStoreFixture {
 protected:
  Upload() { runner.Run({"opciones", "10=127.0.0.1:" + std::to_string(server.Port())}); }

  std::string Reference() { return runner.Run({"opciones", "11", "12", "13"}).output; }

  test::LoopbackServer server{"sales_server.py", {folder.Path()}};
};

TEST_F(Upload, SendsWhatTheServerAsksForAndGoesOnFromThere) {
  WriteFile(folder.File("pending"), "1 20240228 20240301");
  WriteFile(folder.File("faults"), "20240301 delayed\n");
  const auto first = runner.Run({"--json", "subir-ventas"});
  EXPECT_EQ(first.messages, "");
  EXPECT_EQ(json::parse(first.output), (json{{"dias", {"2024-02-28", "2024-03-01"}}, {"completo", true}}));
  EXPECT_EQ(ReadFile(folder.File("days/20240301")), "0 1 0001 1 3 2024 0 0.00 0.00 0.00 0.00") << "today has no sales";
  EXPECT_THAT(ReadFile(folder.File("days/20240228")), testing::MatchesRegex("0 1 0001 28 2 2024 [1-9][0-9]* .*"));
  EXPECT_EQ(Reference(), "SVentas_OffsetDia=1\nSVentas_OffsetMes=3\nSVentas_OffsetAnno=2024\n");

  WriteFile(folder.File("pending"), "1");
  const auto second = runner.Run({"subir-ventas"});
  EXPECT_EQ(second.code, 0);
  EXPECT_EQ(second.output, "Días enviados: 0\n");
  EXPECT_EQ(second.messages, "No hay días pendientes: el servidor de ventas no pidió ninguno.\n");
  EXPECT_EQ(Json({"subir-ventas"}), (json{{"dias", json::array()}, {"completo", true}}));
  EXPECT_TRUE(ReadFile(folder.File("requests")).ends_with("?1%201%200001%201%203%202024 HTTP/1.1\n"));
}

TEST_F(Upload, WhatFailsIsReportedAndCanBeSentAgain) {
  WriteFile(folder.File("pending"), "1 20240227 20240228 20240229");
  const struct {
    const char* fault;
    std::size_t sent;
    const char* text;
  } cases[] = {
      {"list noise", 0, "no se entiende"},
      {"20240228 cut", 1, "incompleta"},
      {"20240229 error", 2, "con el estado 500"},
      {"", 3, ""},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(one.fault);
    WriteFile(folder.File("faults"), one.fault);
    const json document = Json({"subir-ventas"}, one.sent == 3 ? 0 : 1);
    EXPECT_EQ(document["dias"].size(), one.sent);
    EXPECT_EQ(document["completo"], one.sent == 3);
    EXPECT_THAT(document.value("error", ""), HasSubstr(one.text));
  }
  EXPECT_EQ(test::NamesIn(folder.File("days")), (std::vector<std::string>{"20240227", "20240228", "20240229"}));
  EXPECT_THAT(Reference(), HasSubstr("OffsetDia=29\nSVentas_OffsetMes=2\n"));

  WriteFile(folder.File("faults"), "list hangs\n");
  runner.interruption.requested = true;
  Expect({{{"subir-ventas"}, 1, "Operación interrumpida"}});
}

}  // namespace
}  // namespace tolvan
