#include "ui/ActionTable.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tolvan {
namespace {

std::vector<std::string> Shown(const ActionTable& table) {
  std::vector<std::string> shown;
  for (const ActionNode& node : table.Nodes()) shown.push_back(node.parentKey + node.key + " " + node.caption);
  return shown;
}

TEST(ActionTable, TheTreeHasEveryActionButTheUpload) {
  const std::vector<std::string> expected = {"_1 Archivo Ventas Vexlor", "_3 Precios Movilnet 2010",
                                             "_4 Terminal de Datos Tolvan", "_5 Datos desde Hoja de Excel",
                                             "_6 RNC a Clientes (Rep. Dom.)"};
  EXPECT_EQ(Shown(ComponentActions()), expected);
}

TEST(ActionTable, ChildrenFollowTheirParentDepthFirst) {
  ActionTable table;
  table.Register(2, 1002, 5);
  table.Register(5, 1005, 0);
  table.Register(6, 1006, 0);
  table.Register(1, 1001, 2);
  const std::vector<std::string> expected = {"_5 Datos desde Hoja de Excel", "_5_2 Servidor Central de Ventas",
                                             "_2_1 Archivo Ventas Vexlor", "_6 RNC a Clientes (Rep. Dom.)"};
  EXPECT_EQ(Shown(table), expected);
}

TEST(ActionTable, NumbersOutsideTheSixSlotsAreBoundsErrors) {
  EXPECT_EQ(ActionTable::NumberOf("_6"), 6);
  for (const char* key : {"_7", "_0", "_-1", "_", "", "_x", "_99999999999"}) {
    EXPECT_THROW(ActionTable::NumberOf(key), std::out_of_range) << key;
  }
}

}  // namespace
}  // namespace tolvan
