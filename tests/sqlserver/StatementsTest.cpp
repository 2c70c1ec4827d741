// What can be judged of SQL Server without one, because no server is available in a test. An independent T-SQL grammar
// takes every statement text that the product has for it: the actions run over a store in a file that answers them, and
// what they send is written down in SQL Server's dialect. And the results of a batch are sorted out as that server's
// documentation describes them.
#include <gmock/gmock.h>

#include <cstdlib>
#include <nlohmann/json.hpp>
#include <regex>

#include "base/Text.h"
#include "database/odbc/OdbcBatch.h"
#include "database/odbc/OdbcErrors.h"
#include "database/sql/BufferedRecordset.h"
#include "database/sql/SqlDialects.h"
#include "database/sql/SqlScript.h"
#include "export/DailySalesExport.h"
#include "export/SalesTotals.h"
#include "export/SalesUpload.h"
#include "import/TemplateExport.h"
#include "import/clsIE_PreciosExcel.h"
#include "import/clsIE_PreciosMovilnet.h"
#include "support/FakeHost.h"
#include "support/FakeReviewView.h"
#include "support/ImportRig.h"
#include "support/RegistryRun.h"
#include "transport/ItemDefinitionFile.h"
#include "transport/LoteTransporte.h"
#include "ui/ItemSearch.h"

namespace tolvan::test {
namespace {

namespace fs = std::filesystem;

const fs::path tree = TOLVAN_SOURCE_FOLDER;

/// Writes down every statement as SQL Server would get it, and lets a store in a database file answer. What that store
/// cannot run, because it is T-SQL, counts as one affected row.
class RecordingDatabase : public DatabaseServices {
 public:
  explicit RecordingDatabase(DatabaseServices& store) : store_(&store) {}

  std::unique_ptr<Recordset> OpenRecordset(const SqlStatement& statement) override {
    Record(statement);
    return store_->OpenRecordset(statement);
  }
  std::int64_t Execute(const SqlStatement& statement) override {
    Record(statement);
    return IsTransactSql(statement) ? 1 : store_->Execute(statement);
  }
  std::vector<BatchResult> RunBatch(std::span<const SqlStatement> statements) override {
    for (const SqlStatement& statement : statements) Record(statement);
    if (statements.empty() || !IsTransactSql(statements.front())) return store_->RunBatch(statements);
    std::vector<BatchResult> results(statements.size());
    for (BatchResult& result : results) result.affectedRows = 1;
    return results;
  }
  std::unique_ptr<Transaction> BeginTransaction() override { return store_->BeginTransaction(); }

  void Record(const SqlStatement& statement) { texts.insert(statement.Render(dialect)); }

  SqlServerDialect dialect;
  std::set<std::string> texts;

 private:
  static bool IsTransactSql(const SqlStatement& statement) { return statement.ParameterText().starts_with("IF "); }

  DatabaseServices* store_;
};

class SqlServerStatements : public ImportTest {
 protected:
  SqlServerStatements() {
    host.application.database = &recording;
    host.services.files.folders.insert("/app");
  }

  void ExportSales() {
    host.settings.SetText(Setting::CarpetaDestino, "/app");
    const ActionReport file = DailySalesExport(host.context).Run(false);
    EXPECT_TRUE(file.done) << file.text;
    SumDaySales(recording, Date::FromParts(2024, 2, 29), true);
    host.application.http.response = {.succeeded = true, .statusText = "200", .body = "OK 20240229", .failure = {}};
    const ActionReport upload = UploadSales(host.context);
    EXPECT_TRUE(upload.DetailsAs<SalesUploadResult>().complete) << upload.text;
  }

  void ImportTemplate() {
    host.services.dialogs.yes = true;
    std::string errors;
    EXPECT_TRUE(TemplateExport(host.context, sheets).AbrirPlantilla("plantilla.xlt", errors)) << errors;
    sheets.rows = {{"nuevo", "artículo d'agua", "OTRA", "SERIAL", 100.0, 118.0},
                   {"SUELTO", "suelto", "ACME", "TIENDA", 20.0, 23.6, none, "caja", 6.0, 118.0, 100.0, none, 3.0},
                   {"VIEJO", "x", "ACME", "DEF", 12.0, 236.0, none, "caja", 12.0, 1180.0, 120.0},
                   {"EXENTO", "x", "ACME", "DEF", 7.5, 30.0}};
    sheets.firstRow = 5;
    MakeImporter<clsIE_PreciosExcel>([&](IClaseImportar& shown) {
      EXPECT_TRUE(shown.Iniciar(status));
    }).Procesar(status);
  }

  void ImportMovilnet() {
    const auto line = [](const char* model, const char* brand, const char* type) {
      return GivenRow{model, brand, type, none, 118.0, none, 50.0};
    };
    sheets.firstRow = 4;
    sheets.rows = {line("Galaxy Y", "Samsung", "GSM"), line("Peñón", "Nokia", "CDMA"), line("Lumia", "Nokia", "GSM"),
                   line("Uno", "Nokia", "Telefono")};
    FakeReviewWindow review(host.context);
    review.view.search = [this](const SqlStatement& items) { return ItemSearch(recording, items, 0).At(0).code; };
    frmStatusImportar& window = review.form;
    MakeImporter<clsIE_PreciosMovilnet>([&](IClaseImportar& shown) {
      window.SetClase(shown);
      EXPECT_TRUE(window.mnuRenglonR_Click(0, 3));
      EXPECT_TRUE(window.EstablecerCodigo(4, "LIBRE"));
      EXPECT_TRUE(shown.Iniciar(status));
    }).Procesar(status);
    sheets.rows.front()[4] = 236.0;
    MakeImporter<clsIE_PreciosMovilnet>([&](IClaseImportar& shown) {
      EXPECT_TRUE(shown.Iniciar(status));
    }).Procesar(status);
  }

  void UseTransport() {
    for (const SqlStatement& query : {CollectorItemsQuery(), CollectorBarcodesQuery(), CollectorDepositsQuery(true)}) {
      recording.OpenRecordset(query);
    }
    LoteTransporte batches(recording, recording.dialect, 1, 1);
    recording.Record(batches.FindStatement("idLoteTransporte"));
    recording.Record(batches.OpenStatement());
    recording.Record(batches.CloseStatement());
  }

  /// What the grammar says of the texts: one line for each that it refuses.
  std::string Judge(const std::vector<std::string>& texts) {
    const std::string input = folder.File("statements.json");
    const std::string output = folder.File("refused");
    WriteFile(input, nlohmann::json(texts).dump());
    const std::string tool = (tree / "tools/tsql-grammar").string();
    const std::string command = "'" + tool + "' check '" + input + "' > '" + output + "'";
    const bool taken = std::system(command.c_str()) == 0;
    const std::string refused = ReadFile(output);
    EXPECT_EQ(taken, refused.empty()) << "the grammar could not be asked";
    return refused;
  }

  RecordingDatabase recording{Database()};
};

/// The beginnings of statements in the sources of the rooms that make any.
std::vector<std::string> StatementsInSources() {
  std::vector<std::string> found;
  const std::regex literal(R"re("((?:SELECT|INSERT|UPDATE|DELETE|IF) [^"]*)")re");
  for (const char* room : {"services", "export", "import", "fiscal", "transport", "ui", "component"}) {
    for (const auto& entry : fs::recursive_directory_iterator(tree / "src" / room)) {
      if (entry.path().extension() != ".cpp") continue;
      const std::string source = ReadFile(entry.path());
      for (std::sregex_iterator match(source.begin(), source.end(), literal), end; match != end; ++match) {
        found.push_back((*match)[1]);
      }
    }
  }
  return found;
}

TEST_F(SqlServerStatements, AreTakenByAnIndependentGrammar) {
  ExportSales();
  ImportTemplate();
  ImportMovilnet();
  const RegistryRun registry = ImportRegistry(recording, recording.dialect, "101012341|PE\xD1\x41 D'OLEO\r\n");
  EXPECT_TRUE(registry.finished) << registry.message;
  UseTransport();
  const std::vector<std::string> beginnings = StatementsInSources();
  EXPECT_GT(beginnings.size(), 20U);
  for (const std::string& beginning : beginnings) {
    const bool ran = std::ranges::any_of(
        recording.texts, [&](const std::string& text) { return text.find(beginning) != std::string::npos; });
    EXPECT_TRUE(ran) << "no action of this test sends: " << beginning;
  }
  for (const std::string agreed :
       {"SELECT I.idItem, I.Descripcion, P.Precio FROM Items AS I LEFT JOIN Precios AS P ON I.idItem = P.idItem AND "
        "P.idUnidad = 'DEF' AND P.Fijo = 1 WHERE I.MD5OrigenImportar = '",
        "SELECT idDepartamento FROM Departamentos WHERE idDepartamento = 'CDMA'",
        "SELECT idDepartamento FROM Departamentos WHERE idDepartamento = 'GSM'",
        "SELECT idMoneda, FactorConversion FROM Monedas WHERE MonedaExtranjera = 1",
        "SELECT idMarca FROM Marcas WHERE idMarca = '", "INSERT INTO Marcas (idMarca, Descripcion) VALUES (",
        "UPDATE Precios SET PrecioAnterior=Precio, Precio=", "UPDATE ItemsUnidadesInv SET ",
        "UPDATE Items SET MD5OrigenImportar = NULL WHERE MD5OrigenImportar = '",
        "UPDATE Items SET MD5OrigenImportar = '"}) {
    const auto next = recording.texts.lower_bound(agreed);
    EXPECT_TRUE(next != recording.texts.end() && next->starts_with(agreed)) << agreed;
  }
  std::vector<std::string> texts(recording.texts.begin(), recording.texts.end());
  texts.push_back(BatchText(BatchForm::WithRowCounts, texts));  // as the provider sends them together
  for (const char* script : {"data/esquema/sqlserver.sql", "data/permisos/sqlserver.sql"}) {
    for (const std::string& text : SplitSqlScript(ReadFile(tree / script))) {
      texts.push_back(ReplaceAll(text, "GRANT UPDATE", "GRANT INSERT"));  // the grammar has no such right
    }
  }
  EXPECT_EQ(Judge(texts), "");
}

/// What each statement gets of a batch's results, which are counts ("3"), rows of one number ("=3") and errors ("!").
std::string Assigned(const std::vector<std::string>& statements, const std::vector<std::string>& results) {
  std::vector<BatchResult> given(results.size());
  for (std::size_t place = 0; place < results.size(); ++place) {
    const std::string& text = results[place];
    BatchResult& result = given[place];
    if (text == "!") {
      result.error = HostError(HostErrorKind::Constraint, "!");
    } else if (text.front() == '=') {
      const BufferedRecordset::Row row{std::int64_t{std::stoi(text.substr(1))}};
      result.rows =
          std::make_unique<BufferedRecordset>(std::vector<std::string>{""}, std::vector<BufferedRecordset::Row>{row});
    } else {
      result.affectedRows = std::stoi(text);
    }
  }
  std::string assigned;
  for (const BatchResult& result : AssignResults(BatchForm::WithRowCounts, statements, std::move(given))) {
    if (result.affectedRows) assigned += std::to_string(*result.affectedRows);
    if (result.rows) assigned.append("=").append(result.rows->Text(0));
    if (result.error) assigned += result.error->what();
    assigned += ' ';
  }
  return assigned;
}

TEST(SqlServerBatch, GivesEachStatementWhatCameBetweenTheMarks) {
  const std::string missing = "la base de datos no dio el resultado de la instrucción ";
  const std::string insert = "INSERT INTO T (a) VALUES (1)";
  const std::vector<std::string> batch{insert, insert, "SELECT a FROM T", "DELETE FROM T"};
  EXPECT_EQ(Assigned(batch, {"1", "=1", "!", "!", "=0", "0", "=5", "1", "2", "=2"}), "1 ! =5 2 ");
  EXPECT_EQ(Assigned(batch, {"=0", "1", "=1", "!", "=3"}), "0 1 ! 3 ") << "nothing may come before a mark";
  EXPECT_EQ(Assigned(batch, {"!"}), "! ") << "the whole text was refused";
  EXPECT_EQ(Assigned(batch, {"1", "=1", "!"}), "1 ! ") << "and ended in the middle";
  EXPECT_EQ(Assigned({insert, batch[2]}, {"1"}), missing);
}

TEST(SqlServerErrors, HaveTheKindOfTheServersNumberBeforeThatOfTheState) {
  EXPECT_EQ(KindOfSqlState("42000", 1205), HostErrorKind::Busy);
  EXPECT_EQ(KindOfSqlState("42000", 208), HostErrorKind::Statement);
  EXPECT_EQ(KindOfSqlState("01000", 20'004), HostErrorKind::Unreachable) << "FreeTDS's own";
  EXPECT_EQ(OdbcText("42000", 1222, "x"), "[42000] otro programa tiene bloqueado el registro");
}

}  // namespace
}  // namespace tolvan::test
