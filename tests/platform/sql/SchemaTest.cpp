// The scripts of data/esquema say the same in four languages; a column added to one of them must be in all.
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "base/Text.h"
#include "platform/sql/SqlScript.h"

namespace tolvan::data {
extern const std::string_view sqliteSchema;
extern const std::string_view sqlServerSchema;
extern const std::string_view postgreSqlSchema;
extern const std::string_view accessSchema;
}  // namespace tolvan::data

namespace tolvan::test {
namespace {

using Columns = std::vector<std::string>;

std::string FirstWord(std::string_view text) {
  const std::size_t end = text.find_first_of(" (,");
  return std::string(text.substr(0, end));
}

/// The name that a statement creates, behind `words` and a possible IF NOT EXISTS; empty when it creates no such thing.
std::string NameBehind(std::string_view statement, std::string_view words) {
  constexpr std::string_view condition = "IF NOT EXISTS ";
  const std::size_t found = statement.find(words);
  if (found == std::string_view::npos) return {};
  statement.remove_prefix(found + words.size());
  if (statement.starts_with(condition)) statement.remove_prefix(condition.size());
  return FirstWord(statement);
}

/// The columns of every table, in order: each begins a line, two blanks in.
std::map<std::string, Columns> TablesOf(std::string_view script) {
  const std::set<std::string> constraints{"PRIMARY", "FOREIGN", "CONSTRAINT", "CHECK"};
  std::map<std::string, Columns> tables;
  for (const std::string& statement : SplitSqlScript(script)) {
    const std::string table = NameBehind(statement, "CREATE TABLE ");
    if (table.empty()) continue;
    for (const std::string_view line : Split(statement, '\n')) {
      if (!line.starts_with("  ") || line.starts_with("   ")) continue;
      const std::string word = FirstWord(line.substr(2));
      if (!constraints.contains(word)) tables[table].push_back(word);
    }
  }
  return tables;
}

std::set<std::string> IndexesOf(std::string_view script) {
  std::set<std::string> names;
  for (const std::string& statement : SplitSqlScript(script)) {
    const std::string name = NameBehind(statement, "INDEX ");
    if (!name.empty()) names.insert(name);
  }
  return names;
}

}  // namespace

TEST(SchemaTest, EveryEngineHasTheSameTablesAndColumns) {
  const auto expected = TablesOf(data::sqliteSchema);
  ASSERT_EQ(expected.size(), 15U);
  ASSERT_EQ(expected.at("Clientes").size(), 6U);
  EXPECT_EQ(TablesOf(data::sqlServerSchema), expected);
  EXPECT_EQ(TablesOf(data::postgreSqlSchema), expected);
  EXPECT_EQ(TablesOf(data::accessSchema), expected);
}

TEST(SchemaTest, TheServersHaveTheSameIndexes) {
  const auto expected = IndexesOf(data::sqliteSchema);
  EXPECT_TRUE(expected.contains("LoteAbierto"));
  EXPECT_EQ(IndexesOf(data::sqlServerSchema), expected);
  EXPECT_EQ(IndexesOf(data::postgreSqlSchema), expected);
}

}  // namespace tolvan::test
