// The commands of the collector's transport, from the words to the exit code.
#include "cli/DemoStoreFixture.h"

namespace tolvan {
namespace {

using json = nlohmann::ordered_json;
using test::ReadFile;
using test::WriteFile;
using testing::HasSubstr;

class TransportCommands : public test::DemoStoreFixture {
 protected:
  test::TemporaryFolder output;
  std::string file = output.File("a.tolpak");
};

TEST_F(TransportCommands, WriteTheDemoStoreForTheCollector) {
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
  EXPECT_THAT(result.output, HasSubstr("\nArtículos: " + counted["articulos"].dump() + "\nBarcodes:  "));
  EXPECT_THAT(ReadFile(file), HasSubstr("<MultiplesAreas>0</MultiplesAreas>"));
}

TEST_F(TransportCommands, SayWhyThereIsNoCollectorFile) {
  Expect({{{"colector", file}, 2, "requiere --proposito"},
          {{"colector", "", "--proposito", "conteo"}, 2, "SALIDA está vacío"},
          {{"colector", output.File("no/hay.tolpak"), "--proposito", "conteo"}, 1}});
  Execute("ALTER TABLE Barcodes RENAME TO Otra");
  Expect({{{"colector", file, "--proposito", "conteo"}, 1, "No se creó el archivo: una consulta no se pudo abrir"}});
  EXPECT_THAT(Json({"colector", file, "--proposito", "conteo"}, 1)["error"].get<std::string>(), HasSubstr("Barcodes"));
  EXPECT_THAT(test::NamesIn(output.Path()), testing::IsEmpty());
  Execute("ALTER TABLE Otra RENAME TO Barcodes; UPDATE Items SET Activo = 0");
  Expect({{{"colector", file, "--proposito", "conteo"}, 0, "no tiene artículos"}});
  std::filesystem::remove(places.database);
  Expect({{{"colector", file, "--proposito", "conteo"}, 4}});
}

TEST_F(TransportCommands, ABatchFromItsOpeningToItsEnd) {
  const struct {
    const char* word;
    json printed;
    const char* message;
  } steps[] = {
      {"buscar", {{"lote", nullptr}, {"cerrados", 0}}, "No hay ningún lote abierto."},
      {"abrir", {{"lote", 1}, {"cerrados", 0}}, ""},
      {"abrir", {{"lote", 1}, {"cerrados", 0}}, "ya hay uno abierto"},
      {"buscar", {{"lote", 1}, {"cerrados", 0}}, ""},
      {"cerrar", {{"lote", 1}, {"cerrados", 1}}, ""},
      {"cerrar", {{"lote", nullptr}, {"cerrados", 0}}, "No se cerró nada"},
      {"abrir", {{"lote", 2}, {"cerrados", 0}}, ""},
  };
  for (const auto& [word, printed, message] : steps) {
    const auto result = runner.Run({"--json", "lote", word});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(json::parse(result.output), printed) << word;
    EXPECT_THAT(result.messages, HasSubstr(message));
  }
  EXPECT_EQ(runner.Run({"lote", "buscar"}).output, "Lote:     2 (abierto)\n");
  Expect({{{"lote", "borrar"}, 2, "use abrir, buscar o cerrar"}});
}

TEST_F(TransportCommands, ChecksumsOfFilesAndTextsNeedNoHost) {
  runner.host.clear();
  WriteFile(file, "123456789");
  const json expected{{"valor", -873187034}, {"hex", "CBF43926"}};
  EXPECT_EQ(Json({"crc32", file}), expected);
  EXPECT_EQ(Json({"crc32", "--texto", "123456789"}), expected);
  EXPECT_EQ(runner.Run({"crc32", "--texto", ""}).output, "Valor: 0\nHex:   00000000\n");
  WriteFile(file, std::string(3'000'001, 'x'));  // more than a block; the value is zlib's
  EXPECT_THAT(runner.Run({"crc32", file}).output, HasSubstr("Hex:   F12B617D"));
  Expect({{{"crc32"}, 2, "uno de los dos"},
          {{"crc32", file, "--texto", "x"}, 2, "uno de los dos"},
          {{"crc32", ""}, 2, "ARCHIVO está vacío"},
          {{"crc32", output.File("no")}, 1, "no existe"},
          {{"crc32", output.Path()}, 1, "carpeta"},
          {{"crc32", "--texto", "Ω"}, 1, "no caben en un byte"}});
  runner.interruption.requested = true;
  Expect({{{"crc32", file}, 1, "interrumpida"}});
}

}  // namespace
}  // namespace tolvan
