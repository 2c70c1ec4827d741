// A demo store of its own for every test, and the command to run on it.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cli/demo/DemoStore.h"
#include "contract/TemporaryFolder.h"
#include "host/SpreadsheetApplication.h"
#include "support/CommandRunner.h"

namespace tolvan::test {

class DemoStoreFixture : public ::testing::Test {
 protected:
  /// The store's last day of sales is 29 February 2024.
  DemoStoreFixture();

  /// Runs a script of statements on the store's database.
  void Execute(const std::string& script) const;

  /// The values of all rows, each behind a comma.
  std::string Query(const std::string& sql) const;

  /// A workbook with `headings` rows that nobody reads and the given ones behind them. Its path.
  std::string Workbook(const std::string& name, std::size_t headings, const std::vector<std::vector<NewCell>>& rows);

  TemporaryFolder folder;
  DemoPlaces places = PlacesOfDemo(folder.File("tienda"));
  CommandRunner runner;
};

}  // namespace tolvan::test
