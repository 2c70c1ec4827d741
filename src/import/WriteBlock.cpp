#include "import/WriteBlock.h"

#include "base/Text.h"
#include "import/Batch.h"

namespace tolvan {
namespace {

struct UnitsOfItem {
  bool hasUnit = false;
  bool hasPrincipal = false;
};

UnitsOfItem ReadUnits(Recordset& units, std::string_view wanted) {
  UnitsOfItem found;
  for (; !units.AtEnd(); units.MoveNext()) {
    if (EqualIgnoringCase(units.Text(0), wanted)) found.hasUnit = true;
    if (BooleanOf(units.Value(std::size_t{1})).value_or(false)) found.hasPrincipal = true;
  }
  return found;
}

bool SameUnit(const ItemLayer& left, const ItemLayer& right) {
  return left.item == right.item && left.unit == right.unit;
}

}  // namespace

void WriteBlock::Add(std::size_t row, SqlStatement statement) {
  statements_.push_back(std::move(statement));
  rows_.push_back(row);
}

void WriteBlock::SetCost(std::size_t row, const ItemLayer& layer, const ItemCost& cost) {
  layers_.push_back({statements_.size(), layer, true, cost, {}, false});
  Add(row, UpdateCost(layer, cost));
}

void WriteBlock::SetPrice(std::size_t row, const ItemLayer& layer, Currency net, bool fixed) {
  layers_.push_back({statements_.size(), layer, false, {}, net, fixed});
  Add(row, UpdatePrice(layer, net, fixed));
}

void WriteBlock::Run(DatabaseServices& database) {
  const std::vector<BatchResult> results = RunRows(database);
  std::vector<LayerWrite> missing;
  std::vector<std::size_t> missingRows;
  for (const LayerWrite& write : layers_) {
    if (results[write.statement].affectedRows.value_or(0) > 0) continue;
    missing.push_back(write);
    missingRows.push_back(rows_[write.statement]);
  }
  if (!missing.empty()) InsertMissing(database, missing, missingRows);
}

std::vector<BatchResult> WriteBlock::RunRows(DatabaseServices& database) {
  try {
    return RunWhole(database, statements_);
  } catch (const BatchFailure& failure) {
    throw RowFailure(failure, rows_[failure.Index()]);
  }
}

void WriteBlock::InsertMissing(DatabaseServices& database, const std::vector<LayerWrite>& missing,
                               const std::vector<std::size_t>& rows) {
  WriteBlock questions;
  for (std::size_t index = 0; index < missing.size(); ++index) {
    if (missing[index].isCost) questions.Add(rows[index], UnitsOfItemStatement(missing[index].layer.item));
  }
  const std::vector<BatchResult> units = questions.RunRows(database);
  WriteBlock inserts;
  std::size_t next = 0;
  const ItemLayer* lastUnit = nullptr;
  for (std::size_t index = 0; index < missing.size(); ++index) {
    const LayerWrite& write = missing[index];
    const ItemLayer& layer = write.layer;
    if (!write.isCost) {
      inserts.Add(rows[index], InsertPrice(layer, write.net, write.fixed));
      continue;
    }
    const UnitsOfItem found = ReadUnits(*units[next++].rows, layer.unit);
    // The two inventories of a unit stand one behind the other; the unit itself is made once.
    const bool made = lastUnit != nullptr && SameUnit(*lastUnit, layer);
    if (!found.hasUnit && !made) {
      inserts.Add(rows[index], InsertUnit({layer.item, layer.unit, !found.hasPrincipal}));
    }
    lastUnit = &layer;
    inserts.Add(rows[index], InsertCost(layer, write.cost));
  }
  static_cast<void>(inserts.RunRows(database));
}

}  // namespace tolvan
