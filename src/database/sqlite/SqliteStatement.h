// A prepared statement: bound, stepped, read, reset. Values come back by the declared type of their column.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/DatabaseServices.h"
#include "host/SqlStatement.h"

struct sqlite3_stmt;

namespace tolvan {

class SqliteConnection;

class SqliteStatement {
 public:
  /// Whether the caller keeps the literals alive until Reset.
  enum class Lifetime { Kept, Copied };

  /// Throws HostError; Statement when the text is not exactly one statement. `connection` must outlive this object.
  SqliteStatement(SqliteConnection& connection, const SqlStatement& statement);

  /// Throws HostError InvalidValue for a text with a NUL, Statement when there is not one literal for each "?".
  void Bind(std::span<const SqlLiteral> literals, Lifetime lifetime);

  /// Goes to the next row; false when there is none. Throws HostError.
  bool Step();

  /// Ends the walk and lets the literals go. A failure of the last step was already thrown there.
  void Reset() noexcept;

  std::size_t ColumnCount() const { return columns_.size(); }
  const std::shared_ptr<const std::vector<std::string>>& ColumnNames() const { return names_; }
  std::optional<std::size_t> FindColumn(std::string_view name) const;

  /// Of the current row.
  FieldValue Value(std::size_t index) const;

  /// TextOf(Value(index)); either points into the row or into `scratch`.
  std::string_view Text(std::size_t index, std::string& scratch) const;

 private:
  enum class ColumnKind { Plain, Boolean, Moment };
  struct Column {
    std::string name;
    ColumnKind kind;
  };

  struct Finalize {
    void operator()(sqlite3_stmt* handle) const noexcept;
  };

  static ColumnKind KindOf(const char* declaredType);
  void Describe();
  void BindOne(int place, const SqlLiteral& literal, Lifetime lifetime);
  std::string ExpandedText() const;

  SqliteConnection& connection_;
  std::unique_ptr<sqlite3_stmt, Finalize> handle_;
  std::vector<Column> columns_;
  std::shared_ptr<const std::vector<std::string>> names_;  // shared with the recordsets of batches
  std::size_t parameterCount_ = 0;
  int preparations_ = 0;  // how often SQLite has prepared it anew, after a change of the schema
};

}  // namespace tolvan
