// A demo store of its own for every test, and the program to run on it.
#pragma once

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "cli/demo/DemoStore.h"
#include "contract/TemporaryFolder.h"
#include "host/SpreadsheetApplication.h"
#include "support/CommandRunner.h"
#include "support/FileContent.h"
#include "support/TestStore.h"

namespace tolvan::test {

/// Everything below a folder, by its path from there, and every file's digest.
std::string FilesIn(const std::string& folder);

/// The standard output of a shell's command line.
std::string OutputOf(const std::string& commandLine);

class DemoStoreFixture : public ::testing::Test {
 protected:
  /// The store's last day of sales is 29 February 2024.
  DemoStoreFixture();

  /// Makes a call and checks how it ends: `message` is a part of standard error, `output` all of standard output.
  void Expect(const std::vector<std::string>& words, int code, const std::string& message = {},
              const std::optional<std::string>& output = {});

  /// The document that the call prints with --json.
  nlohmann::ordered_json Json(std::vector<std::string> words, int code = 0);

  /// Runs a script of statements on the store's database.
  void Execute(const std::string& script) const { ExecuteOn(places.database, script); }

  /// The rows of a query, as RowsOf writes them.
  std::string Query(const std::string& sql) const { return RowsOf(places.database, sql); }

  /// A workbook with `headings` rows that nobody reads, followed by the given ones. Its path.
  std::string Workbook(const std::string& name, std::size_t headings, const std::vector<std::vector<NewCell>>& rows);

  TemporaryFolder folder;
  DemoPlaces places = PlacesOfDemo(folder.File("tienda"));
  CommandRunner runner;
};

}  // namespace tolvan::test
