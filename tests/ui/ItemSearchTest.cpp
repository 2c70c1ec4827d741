#include "ui/ItemSearch.h"

#include <gtest/gtest.h>

#include "support/FakeHost.h"

namespace tolvan {
namespace {

std::vector<std::string> Shown(const ItemSearch& search) {
  std::vector<std::string> codes;
  for (std::size_t line = 0; line < search.Count(); ++line) codes.push_back(search.At(line).code);
  return codes;
}

TEST(ItemSearch, KeepsWhatHoldsEveryWordTypedAndPutsCodesThatBeginWithItFirst) {
  test::FakeDatabase database;
  database.answer = [&](const SqlStatement&) {
    if (database.statements.size() > 1) throw HostError(HostErrorKind::Statement, "sin precios");
    return std::make_unique<test::FakeRecordset>(
        std::vector<std::string>{"idItem", "Descripcion"},
        std::vector<std::vector<FieldValue>>{{std::string("A1"), std::string("Teléfono MÓVIL")},
                                             {std::string("B2"), std::string("Módem móvil a1")},
                                             {std::string("C3"), FieldValue()},
                                             {std::string("D4"), std::string("como Z9")},
                                             {std::string("Z9"), std::string("otro")}});
  };
  SqlStatement visible("SELECT idItem FROM Items WHERE Oculto = ");
  ItemSearch search(database, visible.Boolean(false), 0);
  EXPECT_EQ(database.statements.front().ParameterText(),
            "SELECT idItem, Descripcion FROM Items WHERE idItem IN (SELECT idItem FROM Items WHERE Oculto = ?) ORDER "
            "BY idItem");
  EXPECT_EQ(Shown(search), (std::vector<std::string>{"A1", "B2", "C3", "D4", "Z9"}));
  const std::vector<std::pair<std::string, std::vector<std::string>>> cases{
      {"movil", {"A1", "B2"}}, {" MÓDEM  móv ", {"B2"}},
      {"c3", {"C3"}},          {"zz", {}},
      {"b", {"B2"}},           {"", {"A1", "B2", "C3", "D4", "Z9"}},
      {"z9", {"Z9", "D4"}}};
  for (const auto& [typed, expected] : cases) {
    search.Filter(typed);
    EXPECT_EQ(Shown(search), expected) << typed;
  }
}

}  // namespace
}  // namespace tolvan
