// A demo store of its own for every test, and the program to run on it.
#pragma once

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/demo/DemoStore.h"
#include "contract/TemporaryFolder.h"
#include "host/SpreadsheetApplication.h"
#include "support/CommandRunner.h"
#include "support/FileContent.h"

namespace tolvan::test {

/// A call and how it ends.
struct ExpectedEnd {
  std::vector<std::string> words;
  int code;
  const char* message = "";  ///< what standard error holds
};

class DemoStoreFixture : public ::testing::Test {
 protected:
  /// The store's last day of sales is 29 February 2024.
  DemoStoreFixture();

  /// Makes each call; `message` stands in what it writes to standard error.
  void Expect(const std::vector<ExpectedEnd>& calls);

  /// The document that the call prints with --json.
  nlohmann::ordered_json Json(std::vector<std::string> words, int code = 0);

  /// Runs a script of statements on the store's database.
  void Execute(const std::string& script) const;

  /// The values of all rows, each followed by a comma.
  std::string Query(const std::string& sql) const;

  /// A workbook with `headings` rows that nobody reads, followed by the given ones. Its path.
  std::string Workbook(const std::string& name, std::size_t headings, const std::vector<std::vector<NewCell>>& rows);

  TemporaryFolder folder;
  DemoPlaces places = PlacesOfDemo(folder.File("tienda"));
  CommandRunner runner;
};

}  // namespace tolvan::test
