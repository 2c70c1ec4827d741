// The orders of the collector's transport, from the words to the exit code.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "cli/demo/DemoStore.h"
#include "contract/TemporaryFolder.h"
#include "platform/sqlite/SqliteDatabaseServices.h"
#include "support/ChildProcess.h"
#include "support/CommandRunner.h"
#include "support/FileContent.h"

namespace tolvan {
namespace {

using nlohmann::json;
using test::NamesIn;
using test::ReadFile;
using test::WriteFile;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class TransportOrders : public ::testing::Test {
 protected:
  TransportOrders() {
    places_ = PlacesOfDemo(folder_.File("tienda"));
    runner_.Run({"demo", places_.folder});
    runner_.host = places_.host;
  }

  void Execute(const char* statement) const {
    SqliteDatabaseServices({.path = places_.folder + "/tienda.db"}).Execute(SqlStatement(statement));
  }

  test::TemporaryFolder folder_;
  test::TemporaryFolder output_;
  test::CommandRunner runner_;
  DemoPlaces places_;
  std::string file_ = output_.File("a.tolpak");
};

TEST_F(TransportOrders, WritesTheDemoStoreForTheCollector) {
  auto result = runner_.Run({"--json", "colector", file_, "--proposito", "conteo"});
  ASSERT_EQ(result.code, 0) << result.messages;
  const json counted = json::parse(result.output);
  const std::string bytes = ReadFile(file_);
  EXPECT_EQ(counted["archivo"], file_);
  EXPECT_THAT(bytes, HasSubstr("<Instancia>" + counted["instancia"].get<std::string>() + "</Instancia>"));
  EXPECT_THAT(bytes, HasSubstr("<MultiplesAreas>1</MultiplesAreas>"));
  EXPECT_GE(counted["articulos"], 300);
  EXPECT_GE(counted["barcodes"], 300);
  EXPECT_THAT(result.messages, HasSubstr("Archivo guardado con éxito\nFavor copie"));

  result = runner_.Run({"colector", file_, "--proposito", "recepcion"});
  EXPECT_EQ(result.code, 0);
  EXPECT_THAT(result.output, HasSubstr("Artículos: " + counted["articulos"].dump() + "\n"));
  EXPECT_THAT(ReadFile(file_), HasSubstr("<MultiplesAreas>0</MultiplesAreas>"));
}

TEST_F(TransportOrders, TellsWhyThereIsNoCollectorFile) {
  const std::string nowhere = output_.File("no/hay.tolpak");
  EXPECT_THAT(runner_.Run({"colector", nowhere, "--proposito", "conteo"}).messages, HasSubstr(output_.File("no")));
  EXPECT_EQ(runner_.Run({"colector", file_}).code, 2);
  EXPECT_EQ(runner_.Run({"colector", "", "--proposito", "conteo"}).code, 2);

  WriteFile(file_, "anterior");
  Execute("ALTER TABLE Barcodes RENAME TO Otra");
  auto result = runner_.Run({"--json", "colector", file_, "--proposito", "conteo"});
  EXPECT_EQ(result.code, 1);
  EXPECT_THAT(json::parse(result.output)["error"].get<std::string>(), HasSubstr("Barcodes"));
  EXPECT_THAT(result.messages, HasSubstr("No se creó el archivo: una consulta no se pudo abrir"));
  Execute("ALTER TABLE Otra RENAME TO Barcodes");
  runner_.interruption.requested = true;
  EXPECT_EQ(runner_.Run({"colector", file_, "--proposito", "conteo"}).code, 1);
  runner_.interruption.requested = false;
  EXPECT_EQ(ReadFile(file_), "anterior");
  EXPECT_THAT(NamesIn(output_.Path()), ElementsAre("a.tolpak"));

  Execute("UPDATE Items SET Activo = 0");
  result = runner_.Run({"colector", file_, "--proposito", "conteo"});
  EXPECT_EQ(result.code, 0);
  EXPECT_THAT(result.messages, HasSubstr("no tiene artículos"));
  std::filesystem::remove(places_.folder + "/tienda.db");
  EXPECT_EQ(runner_.Run({"colector", file_, "--proposito", "conteo"}).code, 4);
}

TEST_F(TransportOrders, ABatchFromItsOpeningToItsEnd) {
  const struct {
    const char* word;
    json printed;
    const char* told;
  } steps[] = {
      {"buscar", {{"lote", nullptr}, {"cerrados", 0}}, "No hay ningún lote abierto."},
      {"abrir", {{"lote", 1}, {"cerrados", 0}}, ""},
      {"abrir", {{"lote", 1}, {"cerrados", 0}}, "ya hay uno abierto"},
      {"buscar", {{"lote", 1}, {"cerrados", 0}}, ""},
      {"cerrar", {{"lote", 1}, {"cerrados", 1}}, ""},
      {"cerrar", {{"lote", nullptr}, {"cerrados", 0}}, "No se cerró nada"},
      {"abrir", {{"lote", 2}, {"cerrados", 0}}, ""},
  };
  for (const auto& [word, printed, told] : steps) {
    const auto result = runner_.Run({"--json", "lote", word});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(json::parse(result.output), printed) << word;
    EXPECT_THAT(result.messages, HasSubstr(told));
  }
  EXPECT_EQ(runner_.Run({"lote", "buscar"}).output, "Lote:     2 (abierto)\n");
  EXPECT_EQ(runner_.Run({"lote", "borrar"}).code, 2);
}

// Children are processes of their own, as two programs in a store are.
TEST_F(TransportOrders, ProgramsThatOpenAtOnceShareOneBatch) {
  const auto openMany = [&]() -> std::string {
    for (int round = 0; round < 20; ++round) {
      for (const char* word : {"abrir", "abrir", "cerrar"}) {
        const auto result = runner_.Run({"lote", word});
        if (result.code != 0) return result.messages;
      }
    }
    return {};
  };
  const pid_t other = test::StartChild([&] { openMany(); });
  EXPECT_EQ(test::RunInChild(openMany), "");
  test::KillChild(other);
  runner_.Run({"lote", "cerrar"});
  SqliteDatabaseServices database({.path = places_.folder + "/tienda.db"});
  const auto rows = database.OpenRecordset(
      SqlStatement("SELECT count(*), sum(Cerrado = 0 OR FechaCierre IS NULL) FROM LoteTransporteSubida"));
  EXPECT_GE(IntegerOf(rows->Value(std::size_t{0})), 20);
  EXPECT_EQ(IntegerOf(rows->Value(std::size_t{1})), 0);
}

TEST(ChecksumOrder, FilesAndTextsWithoutAHost) {
  const test::TemporaryFolder folder;
  test::CommandRunner runner;
  const std::string file = folder.File("nueve");
  WriteFile(file, "123456789");
  const json expected{{"valor", -873187034}, {"hex", "CBF43926"}};
  EXPECT_EQ(json::parse(runner.Run({"--json", "crc32", file}).output), expected);
  EXPECT_EQ(json::parse(runner.Run({"crc32", "--texto", "123456789", "--json"}).output), expected);
  EXPECT_EQ(runner.Run({"crc32", "--texto", ""}).output, "Valor: 0\nHex:   00000000\n");
  WriteFile(file, std::string(3'000'001, 'x'));  // more than a block; the value is zlib's
  EXPECT_THAT(runner.Run({"crc32", file}).output, HasSubstr("Hex:   F12B617D"));

  const struct {
    std::vector<std::string> arguments;
    int code;
  } wrong[] = {{{"crc32"}, 2},
               {{"crc32", file, "--texto", "x"}, 2},
               {{"crc32", ""}, 2},
               {{"crc32", folder.File("no")}, 1},
               {{"crc32", folder.Path()}, 1},
               {{"crc32", "--texto", "Ω"}, 1}};
  for (const auto& [arguments, code] : wrong) {
    const auto result = runner.Run(arguments);
    EXPECT_EQ(result.code, code) << result.messages;
    EXPECT_THAT(result.output, IsEmpty());
    EXPECT_NE(result.messages, "");
  }
  runner.interruption.requested = true;
  EXPECT_EQ(runner.Run({"crc32", file}).code, 1);
}

}  // namespace
}  // namespace tolvan
