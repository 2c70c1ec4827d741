#include "import/TemplateClassifier.h"

#include <algorithm>

#include "base/Text.h"
#include "import/CellValues.h"
#include "import/ItemStatements.h"
#include "import/WorkbookReading.h"

namespace tolvan {
namespace {

constexpr std::string_view codeTaken =
    "el código ya está registrado en un Item sin unidad principal en este inventario";
constexpr std::string_view unchanged = "sin cambios en costo ni PVP";
constexpr std::string_view notComparable = "el Item no tiene precio en la lista DEF: el PVP no se compara";
constexpr std::string_view foreignCostUnused =
    "el costo en moneda extranjera no se toma en cuenta, porque el costo no cambia";
constexpr std::string_view serials = "el Item requiere seriales: la unidad alterna no se toma en cuenta";

/// Whether the row names an alternate unit at all: a unit code other than "DEF", and a multiplier above 1. What the
/// columns of that unit change is described in docs/importacion.md.
bool NamesAlternateUnit(const TemplateRow& row) {
  return !row.unitCode.empty() && row.unitCode != defaultCode && row.multiplier > 1;
}

/// Remarks what of the columns of the alternate unit is given though no unit is named.
void RemarkUnusedUnit(const TemplateRow& row, Remarks& remarks) {
  if (NamesAlternateUnit(row)) return;
  const bool hasUnit = !row.unitCode.empty() && row.unitCode != defaultCode;
  if (hasUnit) {
    remarks.push_back("la unidad " + row.unitCode + " no se toma en cuenta: su multiplicador no es mayor que 1");
  } else if (row.multiplier > 1 || row.alternatePrice.Given() || row.alternateCost.Given()) {
    remarks.emplace_back("no se nombra una unidad alterna: las columnas I, J y K no se toman en cuenta");
  }
}

/// The one of the item's other `units` that is the row's, as it is stored: the same code, in any casing, and the same
/// multiplier. When there is none, a remark says why.
std::optional<std::string> FindAlternateUnit(const TemplateRow& row, Recordset& units, Remarks& remarks) {
  for (; !units.AtEnd(); units.MoveNext()) {
    if (!EqualIgnoringCase(units.Text(1), row.unitCode)) continue;
    const std::int64_t multiplier = IntegerOf(units.Value(std::size_t{2})).value_or(0);
    if (multiplier == row.multiplier) return std::string(units.Text(1));
    remarks.push_back("la unidad " + row.unitCode + " del Item es de " + std::to_string(multiplier) + " y no de " +
                      std::to_string(row.multiplier) + ": no se toma en cuenta");
    return std::nullopt;
  }
  remarks.push_back("el Item no tiene la unidad " + row.unitCode + ": no se toma en cuenta");
  return std::nullopt;
}

/// A code that comes again is not processed again: the second row would meet what the first has written.
void RefuseRepeated(std::span<const TemplateRow> rows, std::span<TemplateDecision> decisions) {
  RepeatedRows earlier;
  for (std::size_t index = 0; index < rows.size(); ++index) {
    if (!decisions[index].looked) continue;
    const auto first = earlier.Earlier(rows[index].code, rows[index].sheetRow);
    if (first) decisions[index].reason = RepeatedRows::Reason("el código", *first);
  }
}

/// A row with a reason is not processed, whatever else was found out about it.
void Settle(const TemplateRow& row, TemplateDecision& decision) {
  if (!row.reason.empty()) decision.reason = row.reason;
  if (!decision.reason.empty()) decision.action = RowAction::None;
  if (decision.action != RowAction::Update) {
    decision.associated.clear();
    decision.databaseDescription.clear();
  }
  if (decision.action == RowAction::None && decision.reason.empty()) decision.reason = unchanged;
}

}  // namespace

std::vector<TemplateDecision> TemplateClassifier::Classify(std::span<const TemplateRow> rows) const {
  std::vector<TemplateDecision> decisions(rows.size());
  for (std::size_t begin = 0; begin < rows.size(); begin += rowsPerBlock) {
    if (store_.interruption.Requested()) throw HostError(HostErrorKind::Interrupted, "");
    const std::size_t count = std::min(rowsPerBlock, rows.size() - begin);
    ClassifyBlock(rows.subspan(begin, count), std::span(decisions).subspan(begin, count));
  }
  RefuseRepeated(rows, decisions);
  for (std::size_t index = 0; index < rows.size(); ++index) Settle(rows[index], decisions[index]);
  return decisions;
}

void TemplateClassifier::ClassifyBlock(std::span<const TemplateRow> rows, std::span<TemplateDecision> decisions) const {
  std::vector<SqlStatement> statements;
  statements.reserve(rows.size());
  for (const TemplateRow& row : rows) {
    if (!row.code.empty()) statements.push_back(ItemStatement(store_.items.SpellingOf(row.code), store_.inventory));
  }
  const std::vector<BatchResult> items = RunWhole(store_.database, statements);
  std::vector<std::size_t> unknown;
  std::vector<std::size_t> withUnits;
  std::size_t next = 0;
  for (std::size_t index = 0; index < rows.size(); ++index) {
    TemplateDecision& decision = decisions[index];
    decision.remarks = rows[index].remarks;
    RemarkUnusedUnit(rows[index], decision.remarks);
    if (rows[index].code.empty()) continue;
    decision.looked = true;
    const BatchResult& item = items[next++];
    decision.found = FoundRows(item);
    if (!decision.found) {
      unknown.push_back(index);
    } else if (Compare(rows[index], *item.rows, decision)) {
      withUnits.push_back(index);
    }
  }
  if (!unknown.empty()) DecideNew(rows, decisions, unknown);
  if (!withUnits.empty()) CheckUnits(rows, decisions, withUnits);
}

void TemplateClassifier::DecideNew(std::span<const TemplateRow> rows, std::span<TemplateDecision> decisions,
                                   std::span<const std::size_t> unknown) const {
  // Only these are asked whether their code is free: that of a row that was found is not.
  std::vector<SqlStatement> statements;
  statements.reserve(unknown.size());
  for (const std::size_t index : unknown) {
    statements.push_back(CodeExistsStatement(store_.items.SpellingOf(rows[index].code)));
  }
  const std::vector<BatchResult> codes = RunWhole(store_.database, statements);
  for (std::size_t place = 0; place < unknown.size(); ++place) {
    TemplateDecision& decision = decisions[unknown[place]];
    decision.codeFree = !FoundRows(codes[place]);
    DecideNew(rows[unknown[place]], decision);
  }
}

void TemplateClassifier::DecideNew(const TemplateRow& row, TemplateDecision& decision) const {
  decision.action = RowAction::Create;
  decision.rate = store_.taxes.GeneralRate();
  decision.costChanged = true;
  decision.priceChanged = row.price.Given();
  if (row.cost.unusable) decision.remarks.emplace_back("el Item se crea con costo 0");
  if (row.price.unusable) decision.remarks.emplace_back("el Item se crea sin precio");
  if (appliesAlternateUnit_ && NamesAlternateUnit(row)) {
    decision.unitUpdate = !store_.departments.RequiresSerials(row.department);
    if (!decision.unitUpdate) decision.remarks.emplace_back(serials);
  }
  decision.unitPrice = decision.unitUpdate;
  decision.unitCost = decision.unitUpdate && row.alternateCost.Given();
  if (!decision.codeFree) decision.reason = codeTaken;
}

bool TemplateClassifier::Compare(const TemplateRow& row, const Recordset& found, TemplateDecision& decision) const {
  const ItemRecord item = ItemRecord::Read(found, store_.taxes);
  // One item with an impossible amount in the database is no cause to refuse the others.
  for (const std::string& fault : item.unusable) AppendSentence(decision.reason, fault);
  if (!item.unusable.empty()) return false;
  Compare(row, item, decision);
  if (!appliesAlternateUnit_ || !NamesAlternateUnit(row)) return false;
  const bool serial = store_.departments.RequiresSerials(item.department);
  if (serial) decision.remarks.emplace_back(serials);
  return !serial;
}

void TemplateClassifier::Compare(const TemplateRow& row, const ItemRecord& item, TemplateDecision& decision) {
  decision.associated = item.code;
  decision.databaseDescription = item.description;
  decision.rate = item.rate;
  decision.previousCost = item.cost;
  decision.previousPrice = item.withTax;
  decision.costChanged = row.cost.Given() && (!item.cost || AmountInCell(*row.cost.value) != AmountInCell(*item.cost));
  if (decision.previousPrice && row.price.Given()) {
    // A price with tax whose net price is the stored one is that price: the same list imported again must not change it
    // by the ten-thousandth that rounding lost.
    decision.priceChanged = AmountInCell(*row.price.value) != AmountInCell(*decision.previousPrice) &&
                            item.rate.WithoutTax(*row.price.value) != *item.net;
    if (decision.priceChanged) decision.difference = PriceDifference(*row.price.value, *decision.previousPrice);
  } else if (row.price.Given()) {
    decision.remarks.emplace_back(notComparable);
  }
  if (row.foreignCost.Given() && !decision.costChanged) decision.remarks.emplace_back(foreignCostUnused);
  if (decision.costChanged || decision.priceChanged) decision.action = RowAction::Update;
}

void TemplateClassifier::CheckUnits(std::span<const TemplateRow> rows, std::span<TemplateDecision> decisions,
                                    std::span<const std::size_t> asked) const {
  std::vector<SqlStatement> statements;
  for (const std::size_t index : asked) {
    statements.push_back(PrincipalUnitStatement(decisions[index].associated));
    statements.push_back(SerialsStatement(decisions[index].associated));
  }
  const std::vector<BatchResult> principals = RunWhole(store_.database, statements);
  statements.clear();
  for (std::size_t place = 0; place < asked.size(); ++place) {
    const BatchResult& principal = principals[2 * place];
    const std::string unit = FoundRows(principal) ? std::string(principal.rows->Text(0)) : std::string(defaultCode);
    statements.push_back(OtherUnitsStatement(decisions[asked[place]].associated, unit));
  }
  const std::vector<BatchResult> units = RunWhole(store_.database, statements);
  for (std::size_t place = 0; place < asked.size(); ++place) {
    const TemplateRow& row = rows[asked[place]];
    TemplateDecision& decision = decisions[asked[place]];
    if (FoundRows(principals[2 * place + 1])) {
      decision.remarks.emplace_back(serials);
    } else if (auto unit = FindAlternateUnit(row, *units[place].rows, decision.remarks)) {
      decision.alternateUnit = std::move(*unit);
      decision.unitPrice = row.alternatePrice.Given();
      decision.unitCost = row.alternateCost.Given();
      decision.unitUpdate = decision.unitPrice || decision.unitCost;
      if (decision.unitUpdate) decision.action = RowAction::Update;
    }
  }
}

}  // namespace tolvan
