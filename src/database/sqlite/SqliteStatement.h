// The prepared statements of a connection: each is bound, stepped, read and reset, and values come back by the declared
// type of their column. They are kept by their text, so that a text is prepared once.
#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
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
  int preparations_ = 0;  // how often SQLite has prepared it again, after a change of the schema
};

/// The prepared statements, the least recently used going first. A statement is lent to one user at a time; whoever
/// asks for a text that is lent already gets one prepared for the occasion.
class SqliteStatementCache {
  struct Entry {
    std::string text;
    std::unique_ptr<SqliteStatement> statement;
    bool lent;
  };

 public:
  /// The right to use a statement; it is reset when this ends. Must not outlive the cache.
  class Lease {
   public:
    explicit Lease(Entry& entry);
    explicit Lease(std::unique_ptr<SqliteStatement> own);
    Lease(Lease&& other) noexcept;
    Lease& operator=(Lease&&) = delete;
    ~Lease();

    SqliteStatement& operator*() const { return *statement_; }
    SqliteStatement* operator->() const { return statement_; }

   private:
    Entry* entry_ = nullptr;
    std::unique_ptr<SqliteStatement> own_;
    SqliteStatement* statement_;
  };

  /// `capacity` is at least 1. `connection` must outlive this object.
  SqliteStatementCache(SqliteConnection& connection, std::size_t capacity);

  /// Throws HostError when the text cannot be prepared.
  Lease Acquire(const SqlStatement& statement);

 private:
  /// False when every statement is lent.
  bool MakeRoom();

  SqliteConnection& connection_;
  std::size_t capacity_;
  std::list<Entry> entries_;                                                    // the most recently used first
  std::unordered_map<std::string_view, std::list<Entry>::iterator> positions_;  // the keys point into the entries
};

}  // namespace tolvan
