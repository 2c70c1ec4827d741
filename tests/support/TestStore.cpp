#include "support/TestStore.h"

#include "database/sql/SqlScript.h"

namespace tolvan::test {

std::string RowsOf(DatabaseServices& database, const std::string& query) {
  std::string text;
  const auto rows = database.OpenRecordset(SqlStatement(query));
  for (; !rows->AtEnd(); rows->MoveNext()) {
    if (!text.empty()) text += '|';
    for (std::size_t index = 0; index < rows->FieldCount(); ++index) {
      const FieldValue value = rows->Value(index);
      text.append(index > 0 ? "," : "").append(IsNull(value) ? "NULL" : TextOf(value));
    }
  }
  return text;
}

std::string RowsOf(const std::string& file, const std::string& query) {
  SqliteDatabaseServices database({.path = file});
  return RowsOf(database, query);
}

void ExecuteOn(const std::string& file, const std::string& script) {
  SqliteDatabaseServices database({.path = file});
  RunSqlScript(database, script);
}

TestStore::TestStore() {
  database_ = std::make_unique<SqliteDatabaseServices>(
      SqliteOptions{.path = path, .busyWait = std::chrono::milliseconds(50), .createIfMissing = true});
  RunSqlScript(*database_, data::sqliteSchema);
}

void TestStore::Execute(const std::string& script) {
  RunSqlScript(*database_, script);
}

void TestStore::Open(const std::string& file) {
  database_ = std::make_unique<SqliteDatabaseServices>(SqliteOptions{.path = file});
}

}  // namespace tolvan::test
