// What the tests of the transport room stand on: the tables of a store in a database file.
#pragma once

#include <gmock/gmock.h>

#include <string>

#include "contract/TemporaryFolder.h"
#include "database/sql/SqlScript.h"
#include "database/sqlite/SqliteDatabaseServices.h"
#include "support/FileContent.h"

namespace tolvan::test {

inline SqliteDatabaseServices OpenStore(const std::string& path) {
  return SqliteDatabaseServices({.path = path, .createIfMissing = true});
}

inline void CreateTables(DatabaseServices& database) {
  RunSqlScript(database, ReadFile(std::string(TOLVAN_SOURCE_FOLDER) + "/data/esquema/sqlite.sql"));
}

}  // namespace tolvan::test
