#include "host/SqlStatement.h"

#include <gtest/gtest.h>

#include "host/SqlDialect.h"

namespace tolvan {
namespace {

/// Marks each literal by its kind, so that a misplaced one shows.
class MarkingDialect : public SqlDialect {
 public:
  DatabaseEngine Engine() const override { return DatabaseEngine::Sqlite; }
  std::string Literal(const SqlLiteral& value) const override {
    if (const auto* text = std::get_if<std::string>(&value)) return "<" + *text + ">";
    if (const auto* money = std::get_if<Currency>(&value)) return "$" + money->ToShortestText();
    return "#" + std::to_string(value.index());
  }
  std::string CurrentMoment() const override { return "now"; }
  SqlStatement InsertUnlessPresent(std::string_view, std::string_view, std::span<const std::string_view>,
                                   std::span<const SqlLiteral>) const override {
    return {};
  }
};

TEST(SqlStatement, LiteralsStandInTheirPlacesWhateverTheyHold) {
  SqlStatement condition("a = ");
  condition.Text("? or ''=?").Sql(" AND b = ").Money(Currency::FromUnits(3));
  SqlStatement statement("SELECT ");
  statement.Null().Sql(" WHERE ").Append(condition).Sql(" AND c = ").Boolean(true).Append(SqlStatement(";"));

  EXPECT_EQ(statement.ParameterText(), "SELECT ? WHERE a = ? AND b = ? AND c = ?;");
  EXPECT_EQ(statement.Literals().size(), 4U);
  EXPECT_EQ(statement.Render(MarkingDialect()), "SELECT #0 WHERE a = <? or ''=?> AND b = $3 AND c = #1;");
}

TEST(SqlStatement, CanBeAppendedToItself) {
  SqlStatement statement("a");
  statement.Integer(1).Append(statement);
  EXPECT_EQ(statement.ParameterText(), "a?a?");
  EXPECT_EQ(statement.Render(MarkingDialect()), "a#2a#2");
}

}  // namespace
}  // namespace tolvan
