// What the tests of the transport room stand on: a dialogs double, a file that is kept in memory, and the tables of a
// store in a database file.
#pragma once

#include <gmock/gmock.h>

#include <string>

#include "contract/TemporaryFolder.h"
#include "host/Dialogs.h"
#include "host/FileHelper.h"
#include "platform/sql/SqlScript.h"
#include "platform/sqlite/SqliteDatabaseServices.h"
#include "support/FileContent.h"

namespace tolvan::test {

class MockDialogs : public Dialogs {
 public:
  using Text = std::string_view;
  MOCK_METHOD(void, ShowMessage, (MessageIcon, Text, Text), (override));
  MOCK_METHOD(bool, AskYesNo, (Text, Text, bool), (override));
  MOCK_METHOD(std::optional<std::string>, AskText, (Text, Text, Text), (override));
  MOCK_METHOD(std::optional<std::string>, PickFileToOpen, (Text, Text), (override));
  MOCK_METHOD(std::optional<std::string>, PickFileToSave, (Text, Text, Text), (override));
  MOCK_METHOD(std::optional<std::string>, PickFolder, (Text, Text), (override));
};

struct MemoryFile : WholeFile {
  void Write(std::string_view more) override { bytes += more; }
  void Commit() override {}
  std::string bytes;
};

inline SqliteDatabaseServices OpenStore(const std::string& path) {
  return SqliteDatabaseServices({.path = path, .createIfMissing = true});
}

inline void CreateTables(DatabaseServices& database) {
  RunSqlScript(database, ReadFile(std::string(TOLVAN_SOURCE_FOLDER) + "/data/esquema/sqlite.sql"));
}

}  // namespace tolvan::test
