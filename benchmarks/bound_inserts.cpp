// What the provider costs above SQLite: the rows of a taxpayer registry, inserted unless present and then looked up,
// against the same work in plain calls with prepared and bound statements and the same settings.
#include <sqlite3.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "Bench.h"
#include "BenchFolder.h"
#include "base/NumberText.h"
#include "database/sql/SqlDialects.h"
#include "database/sqlite/SqliteDatabaseServices.h"

namespace tolvan::bench {
namespace {

constexpr int rows = 800'000;
constexpr int rowsPerTransaction = 20'000;
constexpr int lookUps = 50'000;
constexpr const char* createTable =
    "CREATE TABLE IF NOT EXISTS Clientes (idCliente TEXT NOT NULL PRIMARY KEY, Descripcion TEXT NOT NULL, RIF TEXT NOT "
    "NULL, TipoCliente INTEGER NOT NULL, PersoneriaCliente INTEGER NOT NULL, Activo BOOLEAN NOT NULL) WITHOUT ROWID";

std::string Code(int number) {
  return PaddedNumber(100'000'000 + number, 9);
}

std::string Name(int number) {
  return "COMERCIAL E INVERSIONES " + PaddedNumber(number * 7 % 1'000'003, 7) + " SRL";
}

void InsertThroughProvider(DatabaseServices& database) {
  constexpr std::array<std::string_view, 6> columns{"idCliente",   "Descripcion",       "RIF",
                                                    "TipoCliente", "PersoneriaCliente", "Activo"};
  const SqliteDialect dialect;
  for (int first = 0; first < rows; first += rowsPerTransaction) {
    const auto transaction = database.BeginTransaction();
    for (int number = first; number < first + rowsPerTransaction; ++number) {
      const std::string code = Code(number);
      const std::array<SqlLiteral, 6> values{code, Name(number), code, std::int64_t{1}, std::int64_t{1}, false};
      database.Execute(dialect.InsertUnlessPresent("CLIENTES", "Clientes", columns, values));
    }
    transaction->Commit();
  }
}

std::size_t LookUpThroughProvider(DatabaseServices& database) {
  std::size_t found = 0;
  const auto transaction = database.BeginTransaction();
  for (int number = 0; number < lookUps; ++number) {
    SqlStatement query("SELECT idCliente, Descripcion, RIF FROM Clientes WHERE idCliente = ");
    const auto row = database.OpenRecordset(query.Text(Code(number * 16)));
    if (!row->AtEnd()) found += row->Text(1).size();
  }
  return found;
}

/// The same work without a provider between. Failures end the program: a figure from them would be worth nothing.
class PlainDatabase {
 public:
  explicit PlainDatabase(const std::string& path)
      : handle_(Open(path)),
        insert_(Prepare("INSERT INTO CLIENTES ( idCliente, Descripcion, RIF, TipoCliente, PersoneriaCliente, Activo ) "
                        "VALUES (?, ?, ?, ?, ?, ?) ON CONFLICT (idCliente) DO NOTHING")),
        select_(Prepare("SELECT idCliente, Descripcion, RIF FROM Clientes WHERE idCliente = ?")) {}
  ~PlainDatabase() {
    sqlite3_finalize(insert_);
    sqlite3_finalize(select_);
    sqlite3_close(handle_);
  }
  PlainDatabase(const PlainDatabase&) = delete;
  PlainDatabase& operator=(const PlainDatabase&) = delete;

  void Run(const char* text) { Run(handle_, text); }

  void Insert() {
    for (int first = 0; first < rows; first += rowsPerTransaction) {
      Run("BEGIN IMMEDIATE");
      for (int number = first; number < first + rowsPerTransaction; ++number) InsertOne(number);
      Run("COMMIT");
    }
  }

  std::size_t LookUp() {
    std::size_t found = 0;
    Run("BEGIN IMMEDIATE");
    for (int number = 0; number < lookUps; ++number) {
      const std::string code = Code(number * 16);
      BindText(select_, 1, code);
      if (sqlite3_step(select_) == SQLITE_ROW) found += static_cast<std::size_t>(sqlite3_column_bytes(select_, 1));
      Check(sqlite3_reset(select_));
    }
    Run("ROLLBACK");
    return found;
  }

 private:
  static void Check(int code) {
    if (code == SQLITE_OK) return;
    std::fprintf(stderr, "SQLite: %s\n", sqlite3_errstr(code));
    std::exit(2);
  }
  static void Run(sqlite3* handle, const char* text) { Check(sqlite3_exec(handle, text, nullptr, nullptr, nullptr)); }
  static sqlite3* Open(const std::string& path) {
    sqlite3* handle = nullptr;
    Check(sqlite3_open(path.c_str(), &handle));
    Run(handle, "PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL; PRAGMA cache_size=-65536; PRAGMA foreign_keys=ON");
    Run(handle, createTable);
    return handle;
  }
  static void BindText(sqlite3_stmt* statement, int place, const std::string& text) {
    Check(sqlite3_bind_text(statement, place, text.data(), static_cast<int>(text.size()), SQLITE_STATIC));
  }
  sqlite3_stmt* Prepare(const char* text) {
    sqlite3_stmt* statement = nullptr;
    Check(sqlite3_prepare_v2(handle_, text, -1, &statement, nullptr));
    return statement;
  }
  void InsertOne(int number) {
    const std::string code = Code(number);
    const std::string name = Name(number);
    BindText(insert_, 1, code);
    BindText(insert_, 2, name);
    BindText(insert_, 3, code);
    Check(sqlite3_bind_int(insert_, 4, 1));
    Check(sqlite3_bind_int(insert_, 5, 1));
    Check(sqlite3_bind_int(insert_, 6, 0));
    sqlite3_step(insert_);
    Check(sqlite3_reset(insert_));
  }

  sqlite3* handle_;
  sqlite3_stmt* insert_;
  sqlite3_stmt* select_;
};

int Main() {
  const BenchFolder folder;
  SqliteDatabaseServices database({.path = folder.File("provider.db"), .createIfMissing = true});
  PlainDatabase plain(folder.File("plain.db"));
  database.Execute(SqlStatement(createTable));
  std::size_t found = 0;
  std::size_t expected = 0;
  const bool insertsReached = Compare(
      "800,000 inserts in batches",
      {[&] { InsertThroughProvider(database); }, [&] { database.Execute(SqlStatement("DELETE FROM Clientes")); }},
      {[&] { plain.Insert(); }, [&] { plain.Run("DELETE FROM Clientes"); }}, 1.5, 3);
  const bool lookUpsReached = Compare("50,000 look-ups", {[&] { found = LookUpThroughProvider(database); }},
                                      {[&] { expected = plain.LookUp(); }}, 1.5);
  if (found != expected || found == 0) {
    std::fprintf(stderr, "the look-ups found different rows\n");
    return 2;
  }
  return insertsReached && lookUpsReached ? 0 : 1;
}

}  // namespace
}  // namespace tolvan::bench

int main() {
  return tolvan::bench::Main();
}
