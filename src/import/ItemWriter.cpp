#include "import/ItemWriter.h"

#include <array>

#include "base/Text.h"
#include "import/Batch.h"
#include "import/CellCleaning.h"
#include "import/ItemQueries.h"

namespace tolvan {
namespace {

constexpr std::size_t changesPerBlock = 100;

/// Both inventories carry the same cost and price.
constexpr std::array inventories{0, 1};

void AppendAlternate(WriteBlock& block, const ItemCreation& item) {
  const AlternateUnit& alternate = *item.alternate;
  block.Add(item.row, InsertUnit({item.code, alternate.unit, false, alternate.multiplier, true}));
  for (const int inventory : inventories) {
    const ItemLayer layer{item.code, alternate.unit, inventory};
    block.Add(item.row, InsertCost(layer, alternate.cost.value_or(ItemCost())));
  }
  if (!alternate.net) return;
  for (const int inventory : inventories) {
    block.Add(item.row, InsertPrice({item.code, alternate.unit, inventory}, *alternate.net, item.fixedPrice));
  }
}

void AppendLayers(WriteBlock& block, const ItemUpdate& item, std::string_view unit, const std::optional<ItemCost>& cost,
                  const std::optional<Currency>& net) {
  for (const int inventory : inventories) {
    if (cost) block.SetCost(item.row, {item.code, unit, inventory}, *cost);
  }
  for (const int inventory : inventories) {
    if (net) block.SetPrice(item.row, {item.code, unit, inventory}, *net, item.fixedPrice);
  }
}

}  // namespace

void ItemWriter::Create(ItemCreation item) {
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
  Take(std::move(item));
}

void ItemWriter::Take(Change change) {
  const std::string key = ToUpper(std::visit([](const auto& item) { return item.code; }, change));
  // What a row writes must be there before the same item is looked at again.
  if (block_.size() == changesPerBlock || itemsInBlock_.contains(key)) Flush();
  itemsInBlock_.insert(key);
  block_.push_back(std::move(change));
}

void ItemWriter::Flush() {
  LookUp();
  WriteBlock block;
  for (const Change& change : block_) {
    std::visit([&](const auto& item) { Append(block, item); }, change);
  }
  block.Run(*database_);
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
    const Change& change = block_[questions[failure.Index()].change];
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

void ItemWriter::Append(WriteBlock& block, const ItemCreation& item) {
  if (item.fingerprint) block.Add(item.row, ClearFingerprint(*item.fingerprint));
  if (brands_.insert(item.brand).second) block.Add(item.row, InsertBrand(item.brand));
  if (item.createsDepartment && departments_.insert(item.department).second) {
    block.Add(item.row, InsertDepartment(item.department));
  }
  block.Add(item.row, InsertItem(item));
  block.Add(item.row, InsertUnit({item.code, defaultCode, true}));
  for (const int inventory : inventories) {
    block.Add(item.row, InsertCost({item.code, defaultCode, inventory}, item.cost));
  }
  for (const int inventory : inventories) {
    if (item.net) block.Add(item.row, InsertPrice({item.code, defaultCode, inventory}, *item.net, item.fixedPrice));
  }
  if (item.alternate) AppendAlternate(block, item);
}

void ItemWriter::Append(WriteBlock& block, const ItemUpdate& item) {
  AppendLayers(block, item, *item.unit, item.cost, item.net);
  if (item.alternate) AppendLayers(block, item, item.alternate->unit, item.alternate->cost, item.alternate->net);
  if (!item.fingerprint) return;
  block.Add(item.row, ClearFingerprint(*item.fingerprint));
  block.Add(item.row, SetFingerprint(item.code, *item.fingerprint));
}

}  // namespace tolvan
