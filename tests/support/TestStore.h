// A store in a database file of its own, with the schema that the programs make, and its rows as text, so that a test
// can say in one line what an action has left behind.
#pragma once

#include <memory>
#include <string>

#include "contract/TemporaryFolder.h"
#include "database/sqlite/SqliteDatabaseServices.h"

namespace tolvan::test {

/// The rows of a query separated by "|", their fields by ","; a null is "NULL".
std::string RowsOf(DatabaseServices& database, const std::string& query);

/// The same of a database file that nothing holds open, such as one that a program has just used.
std::string RowsOf(const std::string& file, const std::string& query);

/// Runs a script of statements on such a file.
void ExecuteOn(const std::string& file, const std::string& script);

class TestStore {
 public:
  /// The tables with nothing in them, in the file `path`.
  TestStore();

  DatabaseServices& Database() { return *database_; }
  void Execute(const std::string& script);
  std::string Query(const std::string& query) { return RowsOf(*database_, query); }

  /// Lets go of the file, or opens one, its own or a copy.
  void Close() { database_.reset(); }
  void Open(const std::string& file);

  TemporaryFolder folder;
  std::string path = folder.File("tienda.db");

 private:
  std::unique_ptr<SqliteDatabaseServices> database_;
};

}  // namespace tolvan::test
