#include "fiscal/TaxpayerRegistryImport.h"

#include <gmock/gmock.h>

#include <random>

#include "base/Text.h"
#include "fiscal/RegistryStore.h"

namespace tolvan {
namespace {

using Store = test::RegistryStore;
using testing::ElementsAre;

TEST(TaxpayerRegistryImport, CountsEveryKindOfLine) {
  struct Case {
    const char* what;
    std::string content;
    std::string counts;
    std::string table;
    std::string rejected{};
  };
  using namespace std::string_literals;
  const std::string longField(600'000, ' ');
  const std::string omitted = "\tomitida: no tiene el separador |\t";
  const std::string invalid = "\tel identificador no es un RNC ni una cédula válidos\t";
  const std::string blanks(200, ' ');  // so much of a line is shown
  const std::string manyAccents(126, '\xD1');
  std::string longestName;
  for (int character = 0; character < 125; ++character) longestName += "Ñ";
  const Case cases[] = {
      {"an empty file", "", "0 0 0 0", ""},
      {"empty lines only", "\r\n\n\r\n", "0 0 0 3", ""},
      {"no separator", "101012341\r\n00100000009|B\r\n", "1 0 0 2", "00100000009=B", "1" + omitted + "101012341\n"},
      {"eleven fields", "101012341|ACME|||||||||NORMAL\r\n", "1 0 0 1", "101012341=ACME"},
      {"dashes and quotes", "\"1-01-01234-1\"|\"O'HARA\"\r\n", "1 0 0 1", "101012341=\"O'HARA\""},
      {"no last line end, LF only", "101012341|A\n001-0000000-9|B", "2 0 0 2", "00100000009=B;101012341=A"},
      {"a failing check digit", "001000000\x1F 8|Ñ\n", "0 0 1 1", "", "1" + invalid + "001000000  8|Ñ\n"},
      {"eight digits and zero dates", "10101234|A\n|B\n00/00/0000|C\n", "0 0 3 3", "",
       "1" + invalid + "10101234|A\n2" + invalid + "|B\n3" + invalid + "00/00/0000|C\n"},
      {"an empty name", "101012341|\n", "1 0 0 1", "101012341="},
      {"blanks stay", "  101012341  |  A   B  |\n", "1 0 0 1", "101012341=  A   B  "},
      {"a name broken over two lines", "101012341|ACME\r\nSRL|X\r\n", "1 0 1 2", "101012341=ACME",
       "2" + invalid + "SRL|X\n"},
      {"the first of repeated codes", "101012341|UNO\n1-01-01234-1|DOS\n00100000009|TRES\n", "2 2 0 3",
       "00100000009=TRES;101012341=UNO"},
      {"the figure is set at the last line on file", "101012341|A\n101012341|A\n101012341|A\n", "1 2 0 3",
       "101012341=A"},
      {"Windows-1252", "101012341|MU\xD1OZ \x80\x81\n", "1 0 0 1", "101012341=MUÑOZ €\xC2\x81"},
      {"the UTF-8 mark", "\uFEFF\r\n101012341|PEÑA\n00100000009|MU\xD1OZ\n", "2 0 0 3",
       "00100000009=MUÑOZ;101012341=PEÑA"},
      {"126 characters of either after the UTF-8 mark",
       "\uFEFF101012341|" + longestName + "Ñ\n00100000009|" + manyAccents + "\n", "2 0 0 2",
       "00100000009=" + longestName + ";101012341=" + longestName},
      {"a NUL in the name", "101012341|A\0B\n00100000009|C|\0\n"s, "1 0 1 2", "00100000009=C",
       "1\tel nombre contiene un carácter nulo\t101012341|A B\n"},
      {"a NUL in the identifier", "10101234\0|A\n"s, "0 0 1 1", "", "1" + invalid + "10101234 |A\n"},
      {"a name longer than the buffer", "101012341|x" + longField + "|y\n101012341|B\n", "1 2 0 2",
       "101012341=x" + std::string(124, ' ')},
      {"an identifier longer than the buffer", longField + "101012341|A\n00100000009|B\n", "1 0 1 2", "00100000009=B",
       "1" + invalid + blanks + "\n"},
      {"a long line without separator", longField + "\n00100000009|B\n", "1 0 0 2", "00100000009=B",
       "1" + omitted + blanks + "\n"},
  };
  for (const Case& one : cases) {
    for (const std::size_t blockLines : {1U, 2U, 1'000U}) {
      SCOPED_TRACE(one.what);
      Store store;
      EXPECT_TRUE(store.Import(one.content, blockLines)) << store.run.message;
      EXPECT_EQ(store.Counts(), one.counts);
      EXPECT_EQ(store.Table(), one.table);
      EXPECT_EQ(store.run.rejected, one.rejected);
      const test::FakeDialogs::Box box{
          MessageIcon::Information, "Operación finalizada",
          "Operación finalizada. \r\n\r\nNuevos clientes registrados: " +
              std::to_string(store.run.counts.newCustomers) +
              "\r\nClientes no registrados: " + std::to_string(store.run.counts.notRegistered) +
              "\r\nLineas con errores: " + std::to_string(store.run.counts.errors)};
      EXPECT_THAT(store.run.boxes, ElementsAre(box));
    }
  }
}

TEST(TaxpayerRegistryImport, WritesTheWholeRowAndLeavesWhatIsOnFile) {
  Store store;
  store.database.Execute(SqlStatement("INSERT INTO Clientes (idCliente, Descripcion) VALUES ('500000009', 'MIO')"));
  EXPECT_TRUE(store.Import("1-01-01234-1|ACME\n500000009|OTRO\n00100000009|ANA\n"));
  EXPECT_EQ(store.Counts(), "2 2 0 3");
  EXPECT_EQ(store.Table(), "00100000009=ANA;101012341=ACME;500000009=MIO");
  const std::string columns =
      "SELECT group_concat(RIF || TipoCliente || PersoneriaCliente || Activo) FROM Clientes WHERE idCliente = ";
  EXPECT_EQ(store.Ask(columns + "'101012341'"), "101012341110");
  EXPECT_EQ(store.Ask(columns + "'00100000009'"), "00100000009100");
  EXPECT_TRUE(store.Import("sin separador\n500000009|OTRO\n"))
      << "with one line it is the registry: " << store.run.message;
}

/// The same lines one by one through the other routine.
std::string LineByLine(Store& store, const std::string& content) {
  TaxpayerRegistryImport import = store.Importer();
  RegistryCounts& counts = store.run.counts;
  for (const std::string_view line : Split(content, '\n')) {
    const auto fields = Split(line, '|');
    if (!line.empty()) ++counts.lines;
    if (fields.size() < 2) continue;
    bool inserted = true;
    if (!import.RegistrarClienteRNC(fields[0], fields[1], "do", inserted, false)) {
      ++counts.errors;
      EXPECT_FALSE(inserted);
    } else if (inserted) {
      ++counts.newCustomers;
    } else {
      counts.notRegistered = counts.newCustomers + 1;
    }
  }
  return store.Counts() + "/" + store.Table();
}

TEST(TaxpayerRegistryImport, BlocksCountAsLineByLineEvenWhenStatementsFail) {
  // The database refuses some names, so that whole blocks fail and repeated codes get a second chance.
  const SqlStatement refusal(
      "CREATE TRIGGER Rechazo BEFORE INSERT ON Clientes WHEN NEW.Descripcion LIKE 'MALO%' "
      "BEGIN SELECT RAISE(ABORT, 'nombre prohibido'); END");
  std::mt19937 random(5);
  const char* const identifiers[] = {"101012341", "024691352", "049382691",   "037037022",   "148148051",
                                     "400000005", "500000009", "00113918205", "00100000009", "12345678"};
  for (int round = 0; round < 30; ++round) {
    std::string content;
    for (std::size_t line = 0; line < 40; ++line) {
      content += identifiers[random() % std::size(identifiers)];
      content += (random() % 4 == 0 ? "|MALO" : "|BUENO") + std::to_string(line) + "\n";
    }
    Store reference;
    reference.database.Execute(refusal);
    const std::string expected = LineByLine(reference, content);
    for (const std::size_t blockLines : {1U, 3U, 17U, 1'000U}) {
      Store store;
      store.database.Execute(refusal);
      ASSERT_TRUE(store.Import(content, blockLines)) << store.run.message;
      ASSERT_EQ(store.Counts() + "/" + store.Table(), expected) << content;
      const bool refused = store.run.rejected.find("\tla base de datos rechazó el registro: ") != std::string::npos;
      ASSERT_EQ(refused, store.run.rejected.find("nombre prohibido") != std::string::npos);
    }
  }
}

TEST(TaxpayerRegistryImport, AsksForTheFileAndRefusesWithoutOne) {
  Store store;
  TaxpayerRegistryImport import = store.Importer();
  std::string message;
  EXPECT_FALSE(import.ImportarArchivoRNC(message));
  EXPECT_EQ(message, "Debe seleccionar primero el archivo de texto");
  store.dialogs.answer = "/no/hay.txt";
  EXPECT_FALSE(import.ImportarArchivoRNC(message));
  EXPECT_EQ(message, "El archivo /no/hay.txt no existe, favor seleccione la ubicación correcta del archivo");
  const std::string question = "Seleccionar Archivo de Texto RNC Archivo de Texto RNC|*.txt";
  EXPECT_THAT(store.dialogs.questions, ElementsAre(question, question));
}

}  // namespace
}  // namespace tolvan
