#include "database/sql/SqlScript.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tolvan::test {

TEST(SqlScriptTest, StatementsEndAtSemicolonsOutsideTextsNamesAndComments) {
  const auto statements = SplitSqlScript(R"(
-- Tabla; con comentario
CREATE TABLE [a;b] (x TEXT DEFAULT 'uno;''dos--'); ;
/* nada; aquí */ CREATE VIEW "v;1" AS SELECT 1 - -1 /* ; */ FROM T
-- fin)");
  EXPECT_THAT(statements, ::testing::ElementsAre("CREATE TABLE [a;b] (x TEXT DEFAULT 'uno;''dos--')",
                                                 "CREATE VIEW \"v;1\" AS SELECT 1 - -1 \n FROM T"));
}

}  // namespace tolvan::test
