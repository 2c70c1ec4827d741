// The orders of the collector's transport, from the words to the exit code.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "cli/DemoStoreFixture.h"
#include "support/FileContent.h"

namespace tolvan {
namespace {

using nlohmann::json;
using test::NamesIn;
using test::ReadFile;
using test::WriteFile;
using testing::HasSubstr;
using testing::IsEmpty;

class TransportOrders : public test::DemoStoreFixture {
 protected:
  test::TemporaryFolder output;
  std::string file = output.File("a.tolpak");
};

TEST_F(TransportOrders, WritesTheDemoStoreForTheCollector) {
  auto result = runner.Run({"--json", "colector", file, "--proposito", "conteo"});
  ASSERT_EQ(result.code, 0) << result.messages;
  const json counted = json::parse(result.output);
  const std::string bytes = ReadFile(file);
  EXPECT_EQ(counted["archivo"], file);
  EXPECT_THAT(bytes, HasSubstr("<Instancia>" + counted["instancia"].get<std::string>() + "</Instancia>"));
  EXPECT_THAT(bytes, HasSubstr("<MultiplesAreas>1</MultiplesAreas>"));
  EXPECT_GE(counted["articulos"], 300);
  EXPECT_GE(counted["barcodes"], 300);
  EXPECT_THAT(result.messages, HasSubstr("Archivo guardado con éxito\nFavor copie"));

  result = runner.Run({"colector", file, "--proposito", "recepcion"});
  EXPECT_EQ(result.code, 0);
  EXPECT_THAT(result.output, HasSubstr("Artículos: " + counted["articulos"].dump() + "\n"));
  EXPECT_THAT(ReadFile(file), HasSubstr("<MultiplesAreas>0</MultiplesAreas>"));
}

TEST_F(TransportOrders, TellsWhyThereIsNoCollectorFile) {
  EXPECT_EQ(runner.Run({"colector", file}).code, 2);
  EXPECT_EQ(runner.Run({"colector", "", "--proposito", "conteo"}).code, 2);
  EXPECT_EQ(runner.Run({"colector", output.File("no/hay.tolpak"), "--proposito", "conteo"}).code, 1);
  Execute("ALTER TABLE Barcodes RENAME TO Otra");
  auto result = runner.Run({"--json", "colector", file, "--proposito", "conteo"});
  EXPECT_EQ(result.code, 1);
  EXPECT_THAT(json::parse(result.output)["error"].get<std::string>(), HasSubstr("Barcodes"));
  EXPECT_THAT(result.messages, HasSubstr("No se creó el archivo: una consulta no se pudo abrir"));
  EXPECT_THAT(NamesIn(output.Path()), IsEmpty());

  Execute("ALTER TABLE Otra RENAME TO Barcodes; UPDATE Items SET Activo = 0");
  result = runner.Run({"colector", file, "--proposito", "conteo"});
  EXPECT_EQ(result.code, 0);
  EXPECT_THAT(result.messages, HasSubstr("no tiene artículos"));
  std::filesystem::remove(places.database);
  EXPECT_EQ(runner.Run({"colector", file, "--proposito", "conteo"}).code, 4);
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
    const auto result = runner.Run({"--json", "lote", word});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(json::parse(result.output), printed) << word;
    EXPECT_THAT(result.messages, HasSubstr(told));
  }
  EXPECT_EQ(runner.Run({"lote", "buscar"}).output, "Lote:     2 (abierto)\n");
  EXPECT_EQ(runner.Run({"lote", "borrar"}).code, 2);
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
