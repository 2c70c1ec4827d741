#include "fiscal/TaxpayerRegistryImport.h"

#include <gmock/gmock.h>

#include <random>

#include "base/Text.h"
#include "database/sql/SqlDialects.h"
#include "fiscal/RegistryFakes.h"
#include "fiscal/RejectionReport.h"

namespace tolvan {
namespace {

using test::Store;
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
  const std::string manyAccents(126, '\xD1');
  std::string longestName;
  for (int character = 0; character < 125; ++character) longestName += "Ñ";
  const Case cases[] = {
      {"an empty file", "", "0 0 0 0", ""},
      {"empty lines only", "\r\n\n\r\n", "0 0 0 3", ""},
      {"no separator", "101012341\r\n00100000009|B\r\n", "1 0 0 2", "00100000009=B", "1:0"},
      {"eleven fields", "101012341|ACME|||||||||NORMAL\r\n", "1 0 0 1", "101012341=ACME"},
      {"dashes and quotes", "\"1-01-01234-1\"|\"O'HARA\"\r\n", "1 0 0 1", "101012341=\"O'HARA\""},
      {"no last line end, LF only", "101012341|A\n001-0000000-9|B", "2 0 0 2", "00100000009=B;101012341=A"},
      {"a failing check digit", "00100000008|A\n", "0 0 1 1", "", "1:1"},
      {"eight digits and zero dates", "10101234|A||00/00/0000\n|B\n00/00/0000|C\n", "0 0 3 3", "", "1:1 2:1 3:1"},
      {"an empty name", "101012341|\n", "1 0 0 1", "101012341="},
      {"blanks stay", "  101012341  |  A   B  |\n", "1 0 0 1", "101012341=  A   B  "},
      {"a name broken over two lines", "101012341|ACME\r\nSRL|X\r\n", "1 0 1 2", "101012341=ACME", "2:1"},
      {"the first of repeated codes", "101012341|UNO\n1-01-01234-1|DOS\n00100000009|TRES\n", "2 2 0 3",
       "00100000009=TRES;101012341=UNO"},
      {"the figure is set at the last line on file", "101012341|A\n101012341|A\n101012341|A\n", "1 2 0 3",
       "101012341=A"},
      {"Windows-1252",
       "101012341|PE\xD1"
       "A \x80\x81\n",
       "1 0 0 1", "101012341=PEÑA €\xC2\x81"},
      {"the UTF-8 mark",
       "\xEF\xBB\xBF"
       "101012341|PEÑA\n00100000009|PE\xD1"
       "A\n",
       "2 0 0 2", "00100000009=PEÑA;101012341=PEÑA"},
      {"200 characters", "101012341|" + std::string(200, 'x') + "\n", "1 0 0 1", "101012341=" + std::string(125, 'x')},
      {"126 characters of Windows-1252", "101012341|" + manyAccents + "\n", "1 0 0 1", "101012341=" + longestName},
      {"126 characters of either behind the UTF-8 mark",
       "\xEF\xBB\xBF"
       "101012341|" +
           longestName + "Ñ\n00100000009|" + manyAccents + "\n",
       "2 0 0 2", "00100000009=" + longestName + ";101012341=" + longestName},
      {"a NUL in the name", "101012341|A\0B\n00100000009|C|\0\n"s, "1 0 1 2", "00100000009=C", "1:2"},
      {"a NUL in the identifier", "101\0012341|A\n"s, "0 0 1 1", "", "1:1"},
      {"a name longer than the buffer", "101012341|x" + longField + "|y\n101012341|B\n", "1 2 0 2",
       "101012341=x" + std::string(124, ' ')},
      {"an identifier longer than the buffer", longField + "101012341|A\n00100000009|B\n", "1 0 1 2", "00100000009=B",
       "1:1"},
      {"a long line without separator", longField + "\n00100000009|B\n", "1 0 0 2", "00100000009=B", "1:0"},
  };
  for (const Case& one : cases) {
    for (const std::size_t batchLines : {1U, 2U, 1'000U}) {
      SCOPED_TRACE(one.what);
      Store store;
      EXPECT_TRUE(store.Import(one.content, batchLines)) << store.message;
      EXPECT_EQ(store.CountsText(), one.counts);
      EXPECT_EQ(store.Table(), one.table);
      EXPECT_EQ(store.observer.rejected, one.rejected);
      const test::FakeDialogs::Box box{
          MessageIcon::Information, "Operación finalizada",
          "Operación finalizada. \r\n\r\nNuevos clientes registrados: " + std::to_string(store.counts.newCustomers) +
              "\r\nClientes no registrados: " + std::to_string(store.counts.notRegistered) +
              "\r\nLineas con errores: " + std::to_string(store.counts.errors)};
      EXPECT_THAT(store.dialogs.boxes, ElementsAre(box));
    }
  }
}

TEST(TaxpayerRegistryImport, WritesTheWholeRowAndLeavesWhatIsOnFile) {
  Store store;
  store.database.Execute(SqlStatement("INSERT INTO Clientes (idCliente, Descripcion) VALUES ('500000009', 'MIO')"));
  EXPECT_TRUE(store.Import("1-01-01234-1|ACME\n500000009|OTRO\n00100000009|ANA\n"));
  EXPECT_EQ(store.CountsText(), "2 2 0 3");
  EXPECT_EQ(store.Table(), "00100000009=ANA;101012341=ACME;500000009=MIO");
  const std::string columns =
      "SELECT group_concat(RIF || TipoCliente || PersoneriaCliente || Activo) FROM Clientes WHERE idCliente = ";
  EXPECT_EQ(store.Ask(columns + "'101012341'"), "101012341110");
  EXPECT_EQ(store.Ask(columns + "'00100000009'"), "00100000009100");
  EXPECT_TRUE(store.Import("sin separador\n500000009|OTRO\n")) << "with one line it is the registry: " << store.message;
}

/// The same lines one by one through the other routine.
std::string LineByLine(Store& store, const std::string& content) {
  TaxpayerRegistryImport import({store.database, store.dialect, store.files, store.archives, store.dialogs,
                                 test::nobodyInterrupts, store.progress});
  RegistryCounts counts;
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
  store.counts = counts;
  return store.CountsText() + "/" + store.Table();
}

TEST(TaxpayerRegistryImport, BatchesCountAsLineByLineEvenWhenStatementsFail) {
  // The database refuses some names, so that whole batches fail and repeated codes get a second chance.
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
    for (const std::size_t batchLines : {1U, 3U, 17U, 1'000U}) {
      Store store;
      store.database.Execute(refusal);
      ASSERT_TRUE(store.Import(content, batchLines)) << store.message;
      ASSERT_EQ(store.CountsText() + "/" + store.Table(), expected) << content;
    }
  }
}

TEST(TaxpayerRegistryImport, AsksForTheFileAndRefusesWithoutOne) {
  Store store;
  TaxpayerRegistryImport import({store.database, store.dialect, store.files, store.archives, store.dialogs,
                                 test::nobodyInterrupts, store.progress});
  EXPECT_FALSE(import.ImportarArchivoRNC(store.message));
  EXPECT_EQ(store.message, "Debe seleccionar primero el archivo de texto");
  store.dialogs.answer = store.folder.File("no.txt");
  EXPECT_FALSE(import.ImportarArchivoRNC(store.message));
  EXPECT_EQ(store.message,
            "El archivo " + *store.dialogs.answer + " no existe, favor seleccione la ubicación correcta del archivo");
  const std::string question = "Seleccionar Archivo de Texto RNC Archivo de Texto RNC|*.txt";
  EXPECT_THAT(store.dialogs.questions, ElementsAre(question, question));
}

TEST(TaxpayerRegistryImport, ReportsRejectedLinesWithTheirCause) {
  const test::TemporaryFolder folder;
  const std::string path = folder.File("rechazos.txt");
  PosixFileHelper files("/");
  const std::unique_ptr<WholeFile> file = files.CreateWhole(path);
  RejectionReport report(*file);
  report.LineRejected({.line = 3, .kind = RejectionKind::InvalidIdentifier, .detail = {}, .excerpt = "1\t2|\x1BÑ"});
  report.LineRejected({.line = 5, .kind = RejectionKind::StatementFailed, .detail = "no\r\n", .excerpt = "1|A"});
  report.Commit();
  EXPECT_EQ(test::ReadFile(path),
            "3\tel identificador no es un RNC ni una cédula válidos\t1 2| Ñ\n"
            "5\tla base de datos rechazó el registro: no  \t1|A\n");
}

TEST(CustomerStatement, IsTheHostsStatementOnItsServer) {
  const SqlServerDialect dialect;
  const CustomerStatement customer(dialect, false);
  SqlStatement statement = customer.Blank();
  customer.Fill(statement, {.code = "00100000009", .name = "OTRO", .personeria = 0});
  customer.Fill(statement, {.code = "101012341", .name = "O'HARA", .personeria = 1});
  EXPECT_EQ(statement.Render(dialect),
            "IF NOT EXISTS (SELECT * FROM Clientes WHERE idCliente = '101012341') "
            "INSERT INTO CLIENTES ( idCliente, Descripcion, RIF, TipoCliente, PersoneriaCliente, Activo ) "
            "VALUES ('101012341', 'O''HARA', '101012341', 1, 1, 0 ) ");
}

}  // namespace
}  // namespace tolvan
