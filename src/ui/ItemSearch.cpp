#include "ui/ItemSearch.h"

#include <algorithm>
#include <unordered_map>

#include "base/Text.h"
#include "import/ItemStatements.h"
#include "import/StoreTables.h"

namespace tolvan {
namespace {

/// Lower case, and the Spanish letters without their marks.
std::string Folded(std::string_view text) {
  std::string folded = ToLower(text);
  for (const auto& [marked, plain] : std::initializer_list<std::pair<std::string_view, std::string_view>>{
           {"á", "a"}, {"é", "e"}, {"í", "i"}, {"ó", "o"}, {"ú", "u"}, {"ü", "u"}, {"ñ", "n"}}) {
    folded = ReplaceAll(folded, marked, plain);
  }
  return folded;
}

}  // namespace

ItemSearch::ItemSearch(DatabaseServices& database, const SqlStatement& items, std::int32_t inventory) {
  SqlStatement statement("SELECT idItem, Descripcion FROM Items WHERE idItem IN (");
  statement.Append(items).Sql(") ORDER BY idItem");
  const auto rows = database.OpenRecordset(statement);
  for (; !rows->AtEnd(); rows->MoveNext()) {
    items_.push_back({.code = TextOf(rows->Value(0)), .description = TextOf(rows->Value(1))});
    keys_.push_back(Folded(items_.back().code + " " + items_.back().description));
  }
  ReadPrices(database, inventory);
  Filter({});
}

/// The search goes on without the prices that cannot be read: they are a help to find the item.
void ItemSearch::ReadPrices(DatabaseServices& database, std::int32_t inventory) {
  try {
    std::unordered_map<std::string, FoundItem*> byCode;
    for (FoundItem& item : items_) byCode.emplace(item.code, &item);
    const TaxTable taxes = TaxTable::Load(database);
    const auto rows = database.OpenRecordset(AllItemsStatement(inventory, "DEF"));
    for (; !rows->AtEnd(); rows->MoveNext()) {
      const ItemRecord record = ItemRecord::Read(*rows, taxes);
      const auto found = byCode.find(record.code);
      if (found != byCode.end()) found->second->price = record.withTax;
    }
  } catch (const HostError&) {
    return;
  }
}

void ItemSearch::Filter(std::string_view text) {
  const std::string typed = Folded(TrimBlanks(text));
  const std::vector<std::string_view> words = Split(typed, ' ');
  shown_.clear();
  for (std::size_t item = 0; item < items_.size(); ++item) {
    const bool holdsAll = std::all_of(
        words.begin(), words.end(), [&](std::string_view word) { return keys_[item].find(word) != std::string::npos; });
    if (holdsAll) shown_.push_back(item);
  }
  std::stable_partition(shown_.begin(), shown_.end(), [&](std::size_t item) { return keys_[item].starts_with(typed); });
}

}  // namespace tolvan
