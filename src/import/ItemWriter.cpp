#include "import/ItemWriter.h"

#include <array>

#include "base/Text.h"
#include "import/CellValues.h"
#include "import/ItemStatements.h"

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

/// The writes of a block of rows, sent together: first what is certain, then the rows that an update did not find. The
/// texts that layers point to must stay where they are until Run has returned.
class WriteBatch {
 public:
  void Add(std::size_t row, SqlStatement statement);

  /// A cost or price that replaces the present one, or begins where there is none.
  void SetCost(std::size_t row, const ItemLayer& layer, const ItemCost& cost);
  void SetPrice(std::size_t row, const ItemLayer& layer, Currency net, bool fixed);

  /// Runs everything. Throws RowFailure for the first statement that failed. A batch is run once.
  void Run(DatabaseServices& database);

 private:
  struct LayerWrite {
    std::size_t statement = 0;  // its place in statements_
    ItemLayer layer;
    bool isCost = false;
    ItemCost cost;
    Currency net;
    bool fixed = false;
  };

  std::vector<BatchResult> RunRows(DatabaseServices& database);
  void InsertMissing(DatabaseServices& database, const std::vector<LayerWrite>& missing,
                     const std::vector<std::size_t>& rows);

  std::vector<SqlStatement> statements_;
  std::vector<std::size_t> rows_;  // of each statement
  std::vector<LayerWrite> layers_;
};

void WriteBatch::Add(std::size_t row, SqlStatement statement) {
  statements_.push_back(std::move(statement));
  rows_.push_back(row);
}

void WriteBatch::SetCost(std::size_t row, const ItemLayer& layer, const ItemCost& cost) {
  layers_.push_back({statements_.size(), layer, true, cost, {}, false});
  Add(row, UpdateCost(layer, cost));
}

void WriteBatch::SetPrice(std::size_t row, const ItemLayer& layer, Currency net, bool fixed) {
  layers_.push_back({statements_.size(), layer, false, {}, net, fixed});
  Add(row, UpdatePrice(layer, net, fixed));
}

void WriteBatch::Run(DatabaseServices& database) {
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

std::vector<BatchResult> WriteBatch::RunRows(DatabaseServices& database) {
  try {
    return RunWhole(database, statements_);
  } catch (const BatchFailure& failure) {
    throw RowFailure(failure, rows_[failure.Index()]);
  }
}

void WriteBatch::InsertMissing(DatabaseServices& database, const std::vector<LayerWrite>& missing,
                               const std::vector<std::size_t>& rows) {
  WriteBatch questions;
  for (std::size_t index = 0; index < missing.size(); ++index) {
    if (missing[index].isCost) questions.Add(rows[index], UnitsOfItemStatement(missing[index].layer.item));
  }
  const std::vector<BatchResult> units = questions.RunRows(database);
  WriteBatch inserts;
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
    // The two inventories of a unit follow each other; the unit itself is made once.
    const bool made = lastUnit != nullptr && SameUnit(*lastUnit, layer);
    if (!found.hasUnit && !made) {
      inserts.Add(rows[index], InsertUnit({layer.item, layer.unit, !found.hasPrincipal}));
    }
    lastUnit = &layer;
    inserts.Add(rows[index], InsertCost(layer, write.cost));
  }
  static_cast<void>(inserts.RunRows(database));
}

namespace {

constexpr std::size_t changesPerBlock = 100;

/// Both inventories carry the same cost and price.
constexpr std::array inventories{0, 1};

void AppendAlternate(WriteBatch& batch, const ItemCreation& item) {
  const AlternateUnit& alternate = *item.alternate;
  batch.Add(item.row, InsertUnit({item.code, alternate.unit, false, alternate.multiplier, true}));
  for (const int inventory : inventories) {
    const ItemLayer layer{item.code, alternate.unit, inventory};
    batch.Add(item.row, InsertCost(layer, alternate.cost.value_or(ItemCost())));
  }
  if (!alternate.net) return;
  for (const int inventory : inventories) {
    batch.Add(item.row, InsertPrice({item.code, alternate.unit, inventory}, *alternate.net, item.fixedPrice));
  }
}

void AppendLayers(WriteBatch& batch, const ItemUpdate& item, std::string_view unit, const std::optional<ItemCost>& cost,
                  const std::optional<Currency>& net) {
  for (const int inventory : inventories) {
    if (cost) batch.SetCost(item.row, {item.code, unit, inventory}, *cost);
  }
  for (const int inventory : inventories) {
    if (net) batch.SetPrice(item.row, {item.code, unit, inventory}, *net, item.fixedPrice);
  }
}

}  // namespace

void ItemWriter::Take(ItemChange change) {
  if (auto* item = std::get_if<ItemCreation>(&change)) UseStoredSpellings(*item);
  const std::string key = ToUpper(std::visit([](const auto& item) { return item.code; }, change));
  // What a row writes must be there before the same item is looked at again.
  if (block_.size() == changesPerBlock || itemsInBlock_.contains(key)) Flush();
  itemsInBlock_.insert(key);
  block_.push_back(std::move(change));
}

void ItemWriter::UseStoredSpellings(ItemCreation& item) {
  if (!stored_) {
    stored_ = {.items = StoredCodes::OfItems(*database_),
               .brands = StoredCodes::OfBrands(*database_),
               .departments = StoredCodes::OfDepartments(*database_)};
  }
  if (const std::string_view taken = stored_->items.SpellingOf(item.code); taken != item.code) {
    const HostError error(HostErrorKind::Constraint, "el código ya está registrado como " + std::string(taken));
    throw RowFailure(error, item.row);
  }
  item.brand = stored_->brands.SpellingOf(item.brand);
  item.department = stored_->departments.SpellingOf(item.department);
}

void ItemWriter::Flush() {
  LookUp();
  WriteBatch batch;
  for (const ItemChange& change : block_) {
    std::visit([&](const auto& item) { Append(batch, item); }, change);
  }
  batch.Run(*database_);
  block_.clear();
  itemsInBlock_.clear();
}

void ItemWriter::LookUp() {
  const std::vector<Question> questions = Questions();
  std::vector<SqlStatement> statements;
  statements.reserve(questions.size());
  for (const Question& question : questions) statements.push_back(question.statement);
  try {
    const std::vector<BatchResult> answers = RunWhole(*database_, statements);
    for (std::size_t index = 0; index < answers.size(); ++index) Answer(questions[index], answers[index]);
  } catch (const BatchFailure& failure) {
    const ItemChange& change = block_[questions[failure.Index()].change];
    throw RowFailure(failure, std::visit([](const auto& item) { return item.row; }, change));
  }
}

std::vector<ItemWriter::Question> ItemWriter::Questions() const {
  std::vector<Question> questions;
  std::unordered_set<std::string_view> asked;
  for (std::size_t index = 0; index < block_.size(); ++index) {
    if (const auto* item = std::get_if<ItemCreation>(&block_[index])) {
      const bool unknown = !brands_.contains(item->brand) && asked.insert(item->brand).second;
      if (unknown) questions.push_back({index, BrandStatement(item->brand)});
    } else if (const auto& update = std::get<ItemUpdate>(block_[index]); !update.unit) {
      questions.push_back({index, PrincipalUnitStatement(update.code)});
    }
  }
  return questions;
}

void ItemWriter::Answer(const Question& question, const BatchResult& answer) {
  if (const auto* item = std::get_if<ItemCreation>(&block_[question.change])) {
    if (FoundRows(answer)) brands_.insert(item->brand);
    return;
  }
  auto& update = std::get<ItemUpdate>(block_[question.change]);
  if (!FoundRows(answer)) {
    const HostError error(HostErrorKind::Statement, "el Item " + update.code + " no tiene unidad principal");
    throw RowFailure(error, update.row);
  }
  update.unit = answer.rows->Text(0);
}

void ItemWriter::Append(WriteBatch& batch, const ItemCreation& item) {
  if (item.fingerprint) batch.Add(item.row, ClearFingerprint(*item.fingerprint));
  if (brands_.insert(item.brand).second) batch.Add(item.row, InsertBrand(item.brand));
  if (item.createsDepartment && departments_.insert(item.department).second) {
    batch.Add(item.row, InsertDepartment(item.department));
  }
  batch.Add(item.row, InsertItem(item));
  batch.Add(item.row, InsertUnit({item.code, defaultCode, true}));
  for (const int inventory : inventories) {
    batch.Add(item.row, InsertCost({item.code, defaultCode, inventory}, item.cost));
  }
  for (const int inventory : inventories) {
    if (item.net) batch.Add(item.row, InsertPrice({item.code, defaultCode, inventory}, *item.net, item.fixedPrice));
  }
  if (item.alternate) AppendAlternate(batch, item);
}

void ItemWriter::Append(WriteBatch& batch, const ItemUpdate& item) {
  AppendLayers(batch, item, *item.unit, item.cost, item.net);
  if (item.alternate) AppendLayers(batch, item, item.alternate->unit, item.alternate->cost, item.alternate->net);
  if (!item.fingerprint) return;
  batch.Add(item.row, ClearFingerprint(*item.fingerprint));
  batch.Add(item.row, SetFingerprint(item.code, *item.fingerprint));
}

}  // namespace tolvan
