// The scripts of data/esquema say the same in four languages; a column added to one of them must be in all.
#include <gmock/gmock.h>

#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "database/sql/SqlScript.h"

namespace tolvan::test {
namespace {

using Columns = std::vector<std::string>;

/// The columns of every table, in order: each begins a line, two blanks in.
std::map<std::string, Columns> TablesOf(std::string_view script) {
  const std::regex table(R"(CREATE TABLE (?:IF NOT EXISTS )?(\w+))");
  const std::regex column(R"(\n  (?!PRIMARY|FOREIGN|CONSTRAINT|CHECK)(\w+))");
  std::map<std::string, Columns> tables;
  for (const std::string& statement : SplitSqlScript(script)) {
    std::smatch name;
    if (!std::regex_search(statement, name, table)) continue;
    Columns& columns = tables[name[1]];
    const std::sregex_iterator begin(statement.begin(), statement.end(), column);
    for (auto match = begin; match != std::sregex_iterator(); ++match) columns.push_back((*match)[1]);
  }
  return tables;
}

std::set<std::string> IndexesOf(std::string_view script) {
  const std::regex index(R"(INDEX (?:IF NOT EXISTS )?(\w+) ON)");
  std::set<std::string> names;
  for (const std::string& statement : SplitSqlScript(script)) {
    std::smatch name;
    if (std::regex_search(statement, name, index)) names.insert(name[1]);
  }
  return names;
}

}  // namespace

TEST(SqlScriptTest, StatementsEndAtSemicolonsOutsideTextsNamesAndComments) {
  const auto statements = SplitSqlScript(R"(
-- Tabla; con comentario
CREATE TABLE [a;b] (x TEXT DEFAULT 'uno;''dos--'); ;
/* nada; aquí */ CREATE VIEW "v;1" AS SELECT 1 - -1 /* ; */ FROM T
-- fin)");
  EXPECT_THAT(statements, ::testing::ElementsAre("CREATE TABLE [a;b] (x TEXT DEFAULT 'uno;''dos--')",
                                                 "CREATE VIEW \"v;1\" AS SELECT 1 - -1 \n FROM T"));
}

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
