// The host's database in a file of the embedded engine. Statements are prepared once for each fixed text, and their
// literals bound. Every failure is a HostError whose context is the statement as it would have been written out, after
// the path where it is the file that failed.
#pragma once

#include "database/sqlite/SqliteConnection.h"
#include "database/sqlite/SqliteStatement.h"
#include "host/DatabaseServices.h"

namespace tolvan {

class SqliteDatabaseServices final : public DatabaseServices {
 public:
  /// Opens the file, see SqliteConnection.
  explicit SqliteDatabaseServices(const SqliteOptions& options);

  std::unique_ptr<Recordset> OpenRecordset(const SqlStatement& statement) override;
  std::int64_t Execute(const SqlStatement& statement) override;
  std::vector<BatchResult> RunBatch(std::span<const SqlStatement> statements) override;
  bool FindsCodesInAnyCase() const override { return false; }
  std::unique_ptr<Transaction> BeginTransaction() override;

 private:
  template <class Work>
  auto Guarded(const Work& work);
  SqliteStatementCache::Lease Bound(const SqlStatement& statement, SqliteStatement::Lifetime lifetime);
  std::int64_t RunToEnd(SqliteStatement& statement);
  BatchResult RunOne(const SqlStatement& statement);

  SqliteConnection connection_;
  SqliteStatementCache cache_;
};

}  // namespace tolvan
