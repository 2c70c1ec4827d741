// What is read of a registry: files that are one in a zip, or none at all, from the file to the store, and its lines.
#include <gmock/gmock.h>
#include <zip.h>

#include <random>

#include "base/Text.h"
#include "fiscal/RegistryLines.h"
#include "fiscal/RegistryStore.h"

namespace tolvan {
namespace {

using namespace std::string_literals;
using Store = test::RegistryStore;
using testing::HasSubstr;

using Files = std::vector<std::pair<std::string, std::string>>;

enum class Packing { Deflated, Stored, Locked };

/// The bytes of a zip that the library makes; a name that ends in "/" is a folder.
std::string Zip(const Files& files, Packing packing = Packing::Deflated) {
  const test::TemporaryFolder folder;
  zip_t* zip = zip_open(folder.File("a.zip").c_str(), ZIP_CREATE, nullptr);
  for (const auto& [name, content] : files) {
    if (name.ends_with('/')) {
      zip_dir_add(zip, name.c_str(), 0);
      continue;
    }
    const auto index = static_cast<zip_uint64_t>(
        zip_file_add(zip, name.c_str(), zip_source_buffer(zip, content.data(), content.size(), 0), ZIP_FL_ENC_UTF_8));
    if (packing == Packing::Stored) zip_set_file_compression(zip, index, ZIP_CM_STORE, 0);
    if (packing == Packing::Locked) zip_file_set_encryption(zip, index, ZIP_EM_AES_256, "clave");
  }
  EXPECT_EQ(zip_close(zip), 0);
  return test::ReadFile(folder.File("a.zip"));
}

const std::string registry = "101012341|MU\xD1OZ\r\n00100000009|ANA\r\n";

TEST(RegistryFile, ReadsTheOneTextOfAZip) {
  Store store;
  const Files packed = {{"TMP/", ""}, {"TMP/DGII_RNC.TXT", registry}, {"__MACOSX/TMP/._DGII_RNC.TXT", "\0\5\x16"s}};
  EXPECT_TRUE(store.Import(Zip(packed), 1)) << store.run.message;
  EXPECT_EQ(store.Counts(), "2 0 0 2");
  EXPECT_EQ(store.Table(), "00100000009=ANA;101012341=MUÑOZ");
  const test::TemporaryFolder folder;
  test::WriteFile(folder.File("a"), Zip(packed));
  EXPECT_EQ(RegistryFile(store.files, store.archives, folder.File("a"), test::nobodyInterrupts).Size(),
            registry.size());
}

TEST(RegistryFile, DecidesTheEncodingByTheFirstMegabyte) {
  const auto filled = [](std::size_t size) { return "101012341|PEÑA|" + std::string(size - 16, ' '); };
  const std::string plain = "101012341|A|" + std::string(registryBeginning - 12, ' ') + "\n00100000009|";
  const std::pair<std::string, std::string> cases[] = {
      {"101012341|PEÑA\n", "101012341=PEÑA"},
      {filled(registryBeginning - 1) + "Ñ\n", "101012341=PEÑA"},
      {filled(registryBeginning - 2) + "€\n", "101012341=PEÑA"},
      {filled(registryBeginning - 1) + "\xD1\n00100000009|PE\xD1", "00100000009=PEÑ;101012341=PEÑA"},
      {filled(registryBeginning - 9) + "\xD1", "101012341=PEÃ‘A"},
      {plain + "Ñ", "00100000009=Ã‘;101012341=A"},
  };
  for (const auto& [content, table] : cases) {
    Store store;
    EXPECT_TRUE(store.Import(content));
    EXPECT_EQ(store.Table(), table) << content.substr(content.size() - 20);
  }
}

TEST(RegistryFile, NamesWhatIsNoRegistryAndKeepsNothing) {
  std::string damaged = Zip({{"r.txt", registry + registry}}, Packing::Stored);
  damaged[damaged.find("ANA")] = 'E';
  const std::string office = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
  const std::string workbook = Zip({{"[Content_Types].xml", "<x/>"}, {"xl/workbook.xml", "<x/>"}});
  const std::string hint =
      "; favor seleccione el archivo de texto del registro de contribuyentes, o el .zip que lo contiene";
  const std::pair<std::string, std::string> cases[] = {
      {workbook, "DGII_RNC.TXT es un libro de Excel" + hint},
      {Zip({{"[Content_Types].xml", ""}, {"word/document.xml", ""}}), "es un documento de Office;"},
      {Zip({{"mimetype", ""}, {"content.xml", ""}, {"META-INF/manifest.xml", ""}}), "un documento de OpenDocument;"},
      {office + std::string(600, '|'), "es un libro de Excel u otro documento de Office;"},
      {"\xEF\xBB\xBF\r\n <!DOCTYPE html>\n<p>101012341|A\n", "es una página web;"},
      {"<?xml version=\"1.0\"?>\n<a>101012341|A</a>\n", "es un documento XML;"},
      {"\xFF\xFE|\0"s, "es un texto en UTF-16;"},
      {"|" + std::string(16, '\0') + std::string(300, 'x'), "es un archivo que no es de texto;"},
      {Zip({{"a\n.txt", registry}, {"b.txt", ""}, {"c.txt", ""}}), "contiene 3 archivos: «a .txt», «b.txt»…;"},
      {Zip({{"vacía/", ""}}), "no contiene ningún archivo;"},
      {Zip({{"foto.pdf", "%PDF-1.7|\n"}}), "contiene «foto.pdf», que es un documento PDF;"},
      {Zip({{"r.zip", Zip({{"r.txt", registry}})}}), "contiene «r.zip», que es un archivo comprimido;"},
      {Zip({{"r.txt", registry}}, Packing::Locked), "protegido con contraseña"},
      {damaged, "la parte «r.txt» está truncada o dañada"},
      {Zip({{"r.txt", registry + std::string(17U << 20, '\n')}}), "la compresión de la parte «r.txt» supera el límite"},
      {Zip({{"r.txt", registry}}).substr(0, 80), "el archivo comprimido está truncado o dañado"},
      {"código;precio\r\nA1;5\r\n",
       "DGII_RNC.TXT tiene el separador |: el archivo no es el registro de contribuyentes"},
  };
  for (const auto& [content, text] : cases) {
    Store store;
    EXPECT_FALSE(store.Import(content, 1));
    EXPECT_THAT(store.run.message, HasSubstr(text));
    EXPECT_EQ(store.run.end, RegistryImportEnd::NotRun) << text;
    EXPECT_EQ(store.Table(), "") << text;
    EXPECT_TRUE(store.run.boxes.empty()) << text;
  }
  Store store;
  EXPECT_FALSE(store.Import(Zip({{"r.txt", registry}}), 1, test::StopsAt(1)));
  EXPECT_EQ(store.run.message, "Operación interrumpida") << "while the zip is proved";
}

TEST(RegistryLineReader, GivesTheSameLinesWhateverItsBuffer) {
  std::mt19937 random(11);
  const std::string letters = "ab|\r\n\n";
  for (int round = 0; round < 3'000; ++round) {
    std::string content;
    for (std::size_t left = random() % 60; left > 0; --left) content += letters[random() % letters.size()];
    std::vector<std::string_view> expected = Split(content, '\n');  // the lines as a program without limits cuts them
    if (expected.back().empty()) expected.pop_back();
    const std::size_t bufferSize = 8 + random() % 20;
    test::MemoryFile file(content);
    RegistryLineReader reader(file, test::nobodyInterrupts, bufferSize);
    RegistryLine line;
    for (std::string_view one : expected) {
      if (one.ends_with('\r')) one.remove_suffix(1);
      ASSERT_TRUE(reader.Next(line)) << content;
      ASSERT_EQ(line.length, one.size()) << content;
      ASSERT_EQ(line.text, one.substr(0, line.text.size())) << content;
      ASSERT_GE(line.text.size() + 1, std::min(one.size(), bufferSize)) << content;
      ASSERT_EQ(line.separatorBeyond, one.find('|', line.text.size()) != std::string::npos) << content;
    }
    ASSERT_FALSE(reader.Next(line)) << content;
  }
}

TEST(RegistryLineReader, StopsWithinALineThatDoesNotEnd) {
  test::MemoryFile file(std::string(1'000, 'x'));
  const test::FakeInterruption soon = test::StopsAt(3);
  RegistryLineReader reader(file, soon, 16);
  RegistryLine line;
  EXPECT_THROW(reader.Next(line), HostError);
}

}  // namespace
}  // namespace tolvan
