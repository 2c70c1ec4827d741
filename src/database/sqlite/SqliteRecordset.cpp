#include "database/sqlite/SqliteRecordset.h"

#include "database/sqlite/SqliteConnection.h"

namespace tolvan {

SqliteRecordset::SqliteRecordset(SqliteConnection& connection, SqliteStatementCache::Lease statement)
    : connection_(connection), statement_(std::move(statement)) {
  Step();
}

void SqliteRecordset::MoveNext() {
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

void SqliteRecordset::Step() {
  atEnd_ = !statement_->Step();
  if (atEnd_) statement_->Reset();
}

}  // namespace tolvan
