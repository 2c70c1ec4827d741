// Writes down every statement as SQL Server would get it, and lets a store in a database file answer. What that store
// cannot run, because it is T-SQL, counts as one affected row.
#pragma once

#include <set>
#include <string>

#include "database/sql/SqlDialects.h"
#include "support/FakeHost.h"

namespace tolvan::test {

class RecordingDatabase : public DatabaseServices {
 public:
  explicit RecordingDatabase(DatabaseServices& store) : store_(&store) {}

  std::unique_ptr<Recordset> OpenRecordset(const SqlStatement& statement) override {
    Record(statement);
    return store_->OpenRecordset(statement);
  }
  std::int64_t Execute(const SqlStatement& statement) override {
    Record(statement);
    return IsBatch(statement) ? 1 : store_->Execute(statement);
  }
  std::vector<BatchResult> RunBatch(std::span<const SqlStatement> statements) override {
    for (const SqlStatement& statement : statements) Record(statement);
    if (statements.empty() || !IsBatch(statements.front())) return store_->RunBatch(statements);
    std::vector<BatchResult> results;
    for (std::size_t index = 0; index < statements.size(); ++index) {
      results.push_back({.affectedRows = 1, .rows = nullptr, .error = std::nullopt});
    }
    return results;
  }
  std::unique_ptr<Transaction> BeginTransaction() override { return store_->BeginTransaction(); }

  void Record(const SqlStatement& statement) { texts.insert(statement.Render(dialect)); }

  SqlServerDialect dialect;
  std::set<std::string> texts;

 private:
  static bool IsBatch(const SqlStatement& statement) { return statement.ParameterText().starts_with("IF "); }

  DatabaseServices* store_;
};

}  // namespace tolvan::test
