// The two orders of the daily sales file on a real store, from the words to the file and the exit code.
#include <nlohmann/json.hpp>

#include "cli/DemoStoreFixture.h"
#include "support/FileContent.h"

namespace tolvan {
namespace {

using test::ReadFile;
using test::WriteFile;

class DailySalesOrders : public test::DemoStoreFixture {
 protected:
  DailySalesOrders() {
    // Yesterday, 29 February 2024, sold 1234.56 before taxes.
    Execute(
        "DELETE FROM Ventas; INSERT INTO Ventas (idVenta, idCompania, FechaValidacion, VentaRealizada, Anulado, "
        "Impuestos, GranTotal) VALUES (1, 1, '2024-02-29 00:00:00', 1, 0, 18, 1018), "
        "(2, 9, '2024-02-29 23:59:59', 1, 0, 0, 234.56), (3, 1, '2024-03-01 00:00:00', 1, 0, 0, 50000), "
        "(4, 1, '2024-02-29 12:00:00', 1, 1, 0, 50000), (5, 1, '2024-02-29 12:00:00', 0, 0, 0, 50000);");
  }
};

TEST_F(DailySalesOrders, VexlorWritesYesterdaySilently) {
  const auto result = runner.Run({"--json", "vexlor"});
  EXPECT_EQ(result.code, 0);
  EXPECT_EQ(result.messages, "");
  const auto json = nlohmann::json::parse(result.output);
  EXPECT_EQ(json["archivo"], places.exportFolder + "/240229.txt");
  EXPECT_EQ(json["registro"], "0001,1235,\"19:00\",\"29/02/2024\",");
  EXPECT_EQ(json["enviado"], false);
  EXPECT_EQ(ReadFile(json["archivo"]), json["registro"]);
}

TEST_F(DailySalesOrders, VentasStoresTheDateAskedForAndKeepsIt) {
  EXPECT_EQ(runner.Run({"ventas", "--fecha", "2024-03-01"}).code, 0);
  EXPECT_EQ(ReadFile(places.exportFolder + "/240301.txt"), "0001,50000,\"19:00\",\"01/03/2024\",");
  runner.Run({"opciones", "14=0", "0=Peñón"});
  const auto again = runner.Run({"ventas"});
  EXPECT_EQ(again.messages, "La operación finalizó con éxito.\n");
  EXPECT_EQ(ReadFile(places.exportFolder + "/240301.txt"), "Pe\xF1\xF3n,50000,19:00,01/03/2024");
  EXPECT_EQ(runner.Run({"ventas", "--fecha", "2024-02-30"}).code, 2);
}

TEST_F(DailySalesOrders, AFolderThatIsNotThereIsTheTextOfTheComponentAndItsCause) {
  runner.Run({"opciones", "6=/no/hay", "9=ventas.txt"});
  const auto result = runner.Run({"--json", "vexlor"});
  EXPECT_EQ(result.code, 1);
  const auto json = nlohmann::json::parse(result.output);
  EXPECT_EQ(json["error"], "Error en acceso a la ruta/archivo:\n/no/hay/ventas.txt");
  EXPECT_EQ(json["archivo"], nullptr);
  EXPECT_EQ(result.messages.find("Error en acceso a la ruta/archivo:\n/no/hay/ventas.txt\n"), 0U);
  EXPECT_NE(result.messages.find("no existe"), std::string::npos);
}

// The provider's own contract joins every operation with every such file; here every order that writes one is there.
TEST_F(DailySalesOrders, NoOrderWritesOverTheDatabase) {
  const std::string link = folder.File("lista.xlsx");
  std::filesystem::create_hard_link(places.database, link);
  runner.Run({"opciones", "6=.", "9=tienda.db"});
  const std::vector<std::vector<std::string>> orders = {
      {"vexlor"},
      {"ventas"},
      {"plantilla", link},
      {"plantilla", link, "--con-datos"},
      {"colector", link, "--proposito", "conteo"},
      {"importar-rnc", places.examples + "/DGII_RNC.TXT", "--rechazos", link},
      {"importar-excel", places.examples + "/precios.xlsx", "--informe", link}};
  for (const std::vector<std::string>& order : orders) {
    auto words = order;
    words.insert(words.begin(), "--si");
    const auto result = runner.Run(words);
    EXPECT_EQ(result.code, 1) << order.front();
    EXPECT_NE(result.messages.find("es un archivo propio de la tienda"), std::string::npos) << result.messages;
    EXPECT_TRUE(ReadFile(places.database).starts_with("SQLite format 3")) << order.front();
  }
}

TEST_F(DailySalesOrders, AHostThatCannotBeReachedIsExitCodeFour) {
  const std::string ini = ReadFile(places.host);
  const std::vector<std::pair<std::string, std::string>> cases = {
      {ini + "nada = 1\n", "tolvan.ini, línea 16"},
      {"[base_de_datos]\nconexion = otra.db\n", "otra.db"},
      {"[base_de_datos]\nconexion = tolvan.ini\n", "tolvan.ini"},
  };
  for (const auto& [text, named] : cases) {
    WriteFile(places.host, text);
    const auto result = runner.Run({"vexlor"});
    EXPECT_EQ(result.code, 4) << result.messages;
    EXPECT_NE(result.messages.find(named), std::string::npos) << result.messages;
    EXPECT_FALSE(std::filesystem::exists(places.folder + "/otra.db"));
  }
}

TEST_F(DailySalesOrders, MailWithoutRecipientAsksAPersonAndFailsWithoutOne) {
  runner.Run({"opciones", "7=1", "8="});
  const auto unattended = runner.Run({"vexlor"});
  EXPECT_EQ(unattended.code, 1);
  EXPECT_EQ(unattended.messages.find("No se puede enviar archivo por e-mail\n"), 0U) << unattended.messages;
  EXPECT_NE(unattended.output.find("240229.txt"), std::string::npos) << "the file stays written, and is told";

  runner.terminal = true;
  runner.typed = "\n";
  const auto asked = runner.Run({"ventas"});
  EXPECT_EQ(asked.code, 1);
  EXPECT_NE(asked.messages.find("Procedimiento cancelado por el usuario"), std::string::npos) << asked.messages;
}

}  // namespace
}  // namespace tolvan
