// The prepared statements of a connection, kept by their text, the least recently used going first. A statement is lent
// to one user at a time; whoever asks for a text that is lent already gets one prepared for the occasion.
#pragma once

#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "database/sqlite/SqliteStatement.h"

namespace tolvan {

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
  std::list<Entry> entries_;                                                    // the most recently used in front
  std::unordered_map<std::string_view, std::list<Entry>::iterator> positions_;  // the keys point into the entries
};

}  // namespace tolvan
