#include "database/sqlite/SqliteDatabaseServices.h"

#include <sqlite3.h>

#include <algorithm>

#include "database/sql/BufferedRecordset.h"

namespace tolvan {
namespace {

// More than the different texts of any one action.
constexpr std::size_t cachedStatements = 100;

class SqliteTransaction final : public Transaction {
 public:
  explicit SqliteTransaction(SqliteConnection& connection) : connection_(connection) { connection.Begin(); }
  ~SqliteTransaction() override { Rollback(); }
  SqliteTransaction(const SqliteTransaction&) = delete;
  SqliteTransaction& operator=(const SqliteTransaction&) = delete;

  void Commit() override {
    if (ended_) throw HostError(HostErrorKind::Statement, "la transacción ya terminó");
    ended_ = true;  // the connection leaves nothing open, whatever happens
    connection_.Commit();
  }

  void Rollback() noexcept override {
    if (!ended_) connection_.Rollback();
    ended_ = true;
  }

 private:
  SqliteConnection& connection_;
  bool ended_ = false;
};

bool IsQuery(const SqlStatement& statement) {
  return statement.ParameterText().starts_with("SELECT ");
}

/// The rows of a query as the database finds them. At its end, and when it goes, the statement is reset, so that no
/// read lock remains.
class SqliteRecordset final : public Recordset {
 public:
  /// `statement` is bound and not yet stepped. Throws HostError when the first row cannot be fetched.
  SqliteRecordset(SqliteConnection& connection, SqliteStatementCache::Lease statement)
      : connection_(connection), statement_(std::move(statement)) {
    Step();
  }

  bool AtEnd() const override { return atEnd_; }
  void MoveNext() override {
    try {
      connection_.RequireUsable();
      Step();
    } catch (const HostError& error) {
      connection_.NoteFailure(error);
      atEnd_ = true;
      statement_->Reset();
      throw;
    }
  }
  std::size_t FieldCount() const override { return statement_->ColumnCount(); }
  std::optional<std::size_t> FindField(std::string_view name) const override { return statement_->FindColumn(name); }
  FieldValue Value(std::size_t index) const override { return statement_->Value(index); }
  std::string_view Text(std::size_t index) const override { return statement_->Text(index, text_); }
  using Recordset::Value;

 private:
  void Step() {
    atEnd_ = !statement_->Step();
    if (atEnd_) statement_->Reset();
  }

  SqliteConnection& connection_;
  SqliteStatementCache::Lease statement_;
  bool atEnd_ = false;
  mutable std::string text_;  // what Text last made
};

/// Many queries outside a transaction read one state of the file: taking and leaving its lock once for all of them is
/// half of their cost. What cannot be begun or ended here changes nothing for them.
class SharedRead {
 public:
  SharedRead(sqlite3* database, bool wanted) : database_(database) {
    if (wanted) began_ = sqlite3_exec(database_, "BEGIN", nullptr, nullptr, nullptr) == SQLITE_OK;
  }
  ~SharedRead() {
    // A severe failure has ended it already.
    if (began_ && sqlite3_get_autocommit(database_) == 0) {
      sqlite3_exec(database_, "COMMIT", nullptr, nullptr, nullptr);
    }
  }
  SharedRead(const SharedRead&) = delete;
  SharedRead& operator=(const SharedRead&) = delete;

 private:
  sqlite3* database_;
  bool began_ = false;
};

}  // namespace

SqliteDatabaseServices::SqliteDatabaseServices(const SqliteOptions& options)
    : connection_(options), cache_(connection_, cachedStatements) {}

template <class Work>
auto SqliteDatabaseServices::Guarded(const Work& work) {
  connection_.RequireReady();
  try {
    return work();
  } catch (const HostError& error) {
    connection_.NoteFailure(error);
    throw;
  } catch (const std::exception& error) {
    connection_.NoteFailure({HostErrorKind::Failed, error.what()});
    throw;
  }
}

std::unique_ptr<Recordset> SqliteDatabaseServices::OpenRecordset(const SqlStatement& statement) {
  return Guarded([&]() -> std::unique_ptr<Recordset> {
    return std::make_unique<SqliteRecordset>(connection_, Bound(statement, SqliteStatement::Lifetime::Copied));
  });
}

std::int64_t SqliteDatabaseServices::Execute(const SqlStatement& statement) {
  return Guarded([&] { return RunToEnd(*Bound(statement, SqliteStatement::Lifetime::Kept)); });
}

std::vector<BatchResult> SqliteDatabaseServices::RunBatch(std::span<const SqlStatement> statements) {
  std::vector<BatchResult> results;
  results.reserve(statements.size());
  const bool onlyQueries = std::all_of(statements.begin(), statements.end(), IsQuery);
  const SharedRead shared(connection_.Handle(), onlyQueries && statements.size() > 1 && !connection_.InTransaction());
  for (const SqlStatement& statement : statements) {
    try {
      results.push_back(Guarded([&] { return RunOne(statement); }));
    } catch (const HostError& error) {
      results.push_back({{}, nullptr, error});
    }
  }
  return results;
}

std::unique_ptr<Transaction> SqliteDatabaseServices::BeginTransaction() {
  return std::make_unique<SqliteTransaction>(connection_);
}

SqliteStatementCache::Lease SqliteDatabaseServices::Bound(const SqlStatement& statement,
                                                          SqliteStatement::Lifetime lifetime) {
  SqliteStatementCache::Lease lease = cache_.Acquire(statement);
  lease->Bind(statement.Literals(), lifetime);
  return lease;
}

std::int64_t SqliteDatabaseServices::RunToEnd(SqliteStatement& statement) {
  const std::int64_t before = sqlite3_total_changes64(connection_.Handle());
  while (statement.Step()) {
  }
  // A statement that changes no rows leaves the count of the one before it.
  const bool changed = sqlite3_total_changes64(connection_.Handle()) != before;
  return changed ? sqlite3_changes64(connection_.Handle()) : 0;
}

BatchResult SqliteDatabaseServices::RunOne(const SqlStatement& statement) {
  SqliteStatementCache::Lease lease = Bound(statement, SqliteStatement::Lifetime::Kept);
  if (lease->ColumnCount() == 0) return {RunToEnd(*lease), nullptr, {}};
  const SqliteStatement& source = *lease;
  SqliteRecordset rows(connection_, std::move(lease));
  return {{}, BufferedRecordset::ReadWhole(source.ColumnNames(), rows), {}};
}

}  // namespace tolvan
