// What deciding on and applying 50,000 rows of a workbook costs above SQLite: the same look-ups and the same writes in
// plain calls with prepared and bound statements and the same settings.
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "Bench.h"
#include "BenchFolder.h"
#include "NobodyThere.h"
#include "base/NumberText.h"
#include "database/sql/SqlScript.h"
#include "database/sqlite/SqliteDatabaseServices.h"
#include "import/ItemStatements.h"
#include "import/ItemWriter.h"
#include "import/TemplateClassifier.h"

namespace tolvan::data {}

namespace tolvan::bench {
namespace {

constexpr int items = 50'000;
constexpr const char* fill =
    "INSERT INTO Impuestos VALUES (1, 'ITBIS', 0.18, 1);"
    "INSERT INTO Marcas VALUES ('DEF', 'DEF'); INSERT INTO Departamentos VALUES ('DEF', 'DEF', 0, NULL);"
    "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 49999)"
    "INSERT INTO Items (idItem, Descripcion, idMarca, idDepartamento) SELECT printf('IT%06d', i * 7919 % 50000), "
    "'ARTICULO ' || i, 'DEF', 'DEF' FROM n;"
    "INSERT INTO ItemsUnidades SELECT idItem, 'DEF', 1, 1, 0 FROM Items;"
    "INSERT INTO ItemsUnidadesInv SELECT idItem, 'DEF', i.v, 10.5, 0, 0.2, 0 FROM Items, (SELECT 0 AS v UNION ALL "
    "SELECT 1) i;"
    "INSERT INTO Precios SELECT idItem, 'DEF', 'DEF', i.v, 12.71, NULL, 0 FROM Items, (SELECT 0 AS v UNION ALL "
    "SELECT 1) i;";

void Require(bool ok, const char* what) {
  if (ok) return;
  std::fprintf(stderr, "import_rows: %s\n", what);
  std::exit(1);
}

std::string Code(int number) {
  return "IT" + PaddedNumber(number, 6);
}

/// Half of the rows are items of the store with another cost and price, half are new ones.
std::vector<TemplateRow> HalfNewRows() {
  std::vector<TemplateRow> rows(items);
  for (int number = 0; number < items; ++number) {
    TemplateRow& row = rows[static_cast<std::size_t>(number)];
    row.code = Code(number % 2 == 0 ? number : items + number);
    row.description = "ARTICULO " + std::to_string(number);
    row.brand = row.department = "DEF";
    row.cost.value = Currency::FromTenThousandths(112'500);
    row.price.value = Currency::FromTenThousandths(199'900);
  }
  return rows;
}

void Classify(DatabaseServices& database, const std::vector<TemplateRow>& rows) {
  const TaxTable taxes = TaxTable::Load(database);
  const DepartmentTable departments = DepartmentTable::Load(database);
  const StoredCodes stored = StoredCodes::OfItems(database);
  const NoInterruption never;
  const TemplateClassifier classifier({database, 0, taxes, departments, stored, never}, true);
  const std::vector<TemplateDecision> decisions = classifier.Classify(rows);
  for (const TemplateDecision& decision : decisions) {
    Require(decision.action == (decision.found ? RowAction::Update : RowAction::Create), "a wrong decision");
  }
}

constexpr ItemCost newCost{Currency::FromTenThousandths(112'500), Currency::FromTenThousandths(1'900)};
constexpr Currency newNet = Currency::FromTenThousandths(169'407);

void Apply(DatabaseServices& database, const std::vector<TemplateRow>& rows) {
  const auto transaction = database.BeginTransaction();
  ItemWriter writer(database);
  for (std::size_t index = 0; index < rows.size(); ++index) {
    const TemplateRow& row = rows[index];
    if (index % 2 == 0) {
      ItemUpdate update{.row = index + 1, .code = row.code};
      update.cost = newCost;
      update.net = newNet;
      writer.Take(std::move(update));
    } else {
      ItemCreation item{.row = index + 1, .code = row.code, .description = row.description};
      item.brand = item.department = "DEF";
      item.taxClass = 1;
      item.cost = newCost;
      item.net = newNet;
      writer.Take(std::move(item));
    }
  }
  writer.Flush();
  transaction->Commit();
}

/// The same work without anything between. Failures end the program: a figure from them would be worth nothing.
class PlainDatabase {
 public:
  explicit PlainDatabase(const std::string& path) {
    Require(sqlite3_open(path.c_str(), &handle_) == SQLITE_OK, "open");
    Run("PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL; PRAGMA cache_size=-65536; PRAGMA foreign_keys=ON");
  }
  ~PlainDatabase() {
    for (sqlite3_stmt* statement : prepared_) sqlite3_finalize(statement);
    sqlite3_close(handle_);
  }
  PlainDatabase(const PlainDatabase&) = delete;
  PlainDatabase& operator=(const PlainDatabase&) = delete;

  void Run(const char* text) {
    Require(sqlite3_exec(handle_, text, nullptr, nullptr, nullptr) == SQLITE_OK, sqlite3_errmsg(handle_));
  }

  void Classify(const std::vector<TemplateRow>& rows) {
    Run("BEGIN");
    for (const TemplateRow& row : rows) {
      const bool found = Step(FindItem, {row.code, "0", "DEF"});
      if (!found) Step(FindCode, {row.code});
    }
    Run("COMMIT");
  }

  void Apply(const std::vector<TemplateRow>& rows) {
    Run("BEGIN IMMEDIATE");
    for (std::size_t index = 0; index < rows.size(); ++index) {
      if (index % 2 == 0) {
        Update(rows[index].code);
      } else {
        Create(rows[index]);
      }
    }
    Run("COMMIT");
  }

 private:
  enum Statement { FindItem, FindCode, SetCost, SetPrice, NewItem, NewUnit, NewCost, NewPrice };

  // Made once: the reference shall pay for nothing but SQLite.
  const std::vector<std::string> texts_{ItemStatement("", 0).ParameterText(),
                                        CodeExistsStatement("").ParameterText(),
                                        UpdateCost({"", "", 0}, {}).ParameterText(),
                                        UpdatePrice({"", "", 0}, {}, false).ParameterText(),
                                        InsertItem({}).ParameterText(),
                                        InsertUnit({}).ParameterText(),
                                        InsertCost({"", "", 0}, {}).ParameterText(),
                                        InsertPrice({"", "", 0}, {}, false).ParameterText()};

  void Update(const std::string& code) {
    for (const char* inventory : {"0", "1"}) {
      Step(SetCost, {"11.25", "0.19", code, "DEF", inventory});
      Step(SetPrice, {"16.9407", code, "DEF", "DEF", inventory});
    }
  }

  void Create(const TemplateRow& row) {
    Step(NewItem, {row.code, row.description, "DEF", "DEF", "1", "0", "0", "1", "0"});
    Step(NewUnit, {row.code, "DEF", "1", "1", "0"});
    for (const char* inventory : {"0", "1"}) {
      Step(NewCost, {row.code, "DEF", inventory, "11.25", "0.19"});
      Step(NewPrice, {row.code, "DEF", "DEF", inventory, "16.9407", "0"});
    }
  }

  struct Parameter {
    Parameter(const char* value) : text(value) {}                 // NOLINT(google-explicit-constructor)
    Parameter(const std::string& value) : text(value.c_str()) {}  // NOLINT(google-explicit-constructor)
    const char* text;
  };

  /// Whether a row was found. The columns' affinity makes numbers of the texts.
  bool Step(Statement which, std::initializer_list<Parameter> parameters) {
    sqlite3_stmt*& statement = prepared_[which];
    if (statement == nullptr) {
      const int code = sqlite3_prepare_v2(handle_, texts_[which].c_str(), -1, &statement, nullptr);
      Require(code == SQLITE_OK, sqlite3_errmsg(handle_));
    }
    int index = 0;
    for (const Parameter& parameter : parameters) {
      sqlite3_bind_text(statement, ++index, parameter.text, -1, SQLITE_STATIC);
    }
    bool found = false;
    int code = 0;
    while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
      found = true;
      ReadColumns(statement);
    }
    Require(code == SQLITE_DONE, sqlite3_errmsg(handle_));
    sqlite3_reset(statement);
    return found;
  }

  void ReadColumns(sqlite3_stmt* statement) {
    for (int column = 0; column < sqlite3_column_count(statement); ++column) {
      const int type = sqlite3_column_type(statement, column);
      if (type == SQLITE_TEXT) read_ += static_cast<double>(sqlite3_column_text(statement, column)[0]);
      if (type == SQLITE_FLOAT || type == SQLITE_INTEGER) read_ += sqlite3_column_double(statement, column);
    }
  }

  double read_ = 0;  // what was read, so that reading is not left out
  sqlite3* handle_ = nullptr;
  std::vector<sqlite3_stmt*> prepared_ = std::vector<sqlite3_stmt*>(texts_.size());
};

std::string MakeStore(const BenchFolder& folder, const std::string& name) {
  const std::string path = folder.File(name);
  {
    SqliteDatabaseServices database({.path = path, .createIfMissing = true});
    RunSqlScript(database, data::sqliteSchema);
  }
  PlainDatabase(path).Run(fill);
  return path;
}

void Restore(const std::string& store, const std::string& copy) {
  for (const char* ending : {"-wal", "-shm"}) std::filesystem::remove(copy + ending);
  std::filesystem::copy_file(store, copy, std::filesystem::copy_options::overwrite_existing);
}

bool Run() {
  const BenchFolder folder;
  const std::string store = MakeStore(folder, "tienda.db");
  const std::vector<TemplateRow> mixed = HalfNewRows();
  bool reached = true;
  {
    SqliteDatabaseServices database({.path = store});
    PlainDatabase plain(store);
    reached = Compare("classify 50,000 rows against 50,000 items", {[&] { Classify(database, mixed); }},
                      {[&] { plain.Classify(mixed); }}, 1.5);
  }
  const std::string copy = folder.File("copia.db");
  const auto restore = [&] { Restore(store, copy); };
  const bool applied = Compare("apply 50,000 rows, half new, half updates",
                               {[&] {
                                  SqliteDatabaseServices database({.path = copy});
                                  Apply(database, mixed);
                                },
                                restore},
                               {[&] { PlainDatabase(copy).Apply(mixed); }, restore}, 1.5);
  return reached && applied;
}

}  // namespace
}  // namespace tolvan::bench

int main() {
  return tolvan::bench::Run() ? 0 : 1;
}
