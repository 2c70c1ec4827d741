// The rows of a query as the database finds them. At its end, and when it goes, the statement is reset, so that no read
// lock stays behind.
#pragma once

#include <string>

#include "database/sqlite/SqliteStatementCache.h"
#include "host/DatabaseServices.h"

namespace tolvan {

class SqliteConnection;

class SqliteRecordset final : public Recordset {
 public:
  /// `statement` is bound and not yet stepped. Throws HostError when the first row cannot be had.
  SqliteRecordset(SqliteConnection& connection, SqliteStatementCache::Lease statement);

  bool AtEnd() const override { return atEnd_; }
  void MoveNext() override;
  std::size_t FieldCount() const override { return statement_->ColumnCount(); }
  std::optional<std::size_t> FindField(std::string_view name) const override { return statement_->FindColumn(name); }
  FieldValue Value(std::size_t index) const override { return statement_->Value(index); }
  std::string_view Text(std::size_t index) const override { return statement_->Text(index, text_); }
  using Recordset::Value;

 private:
  void Step();

  SqliteConnection& connection_;
  SqliteStatementCache::Lease statement_;
  bool atEnd_ = false;
  mutable std::string text_;  // what Text last made
};

}  // namespace tolvan
