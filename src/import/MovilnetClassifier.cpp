#include "import/MovilnetClassifier.h"

#include <algorithm>
#include <stdexcept>

#include "base/Text.h"
#include "import/CellValues.h"
#include "import/ItemStatements.h"
#include "import/MovilnetRow.h"
#include "import/WorkbookReading.h"

namespace tolvan {
namespace {

/// Whether the row's item is asked for at all: not when the user removed the association.
bool AsksForItem(const MovilnetRow& row) {
  return !row.chosenItem || !row.chosenItem->empty();
}

/// What the rows before one hold.
struct EarlierRows {
  RepeatedRows lines;
  RepeatedRows items;  // that will be updated
  RepeatedRows codes;  // that will be created
};

/// Why a row without a reason of its own is not processed; empty when it is.
std::string ReasonOf(const MovilnetRow& row, const MovilnetDecision& decision, std::optional<std::uint32_t> sameLine,
                     EarlierRows& earlier) {
  if (sameLine && !row.UserDecided()) return RepeatedRows::Reason("el modelo", *sameLine);
  if (!decision.associated.empty()) {
    const auto first = earlier.items.Earlier(decision.associated, row.sheetRow);
    return first ? RepeatedRows::Reason("el Item " + decision.associated, *first) : "";
  }
  if (decision.codeTaken) return "el código " + row.code + " ya está registrado en otro Item";
  const auto first = earlier.codes.Earlier(row.code, row.sheetRow);
  return first ? RepeatedRows::Reason("el código " + row.code, *first) : "";
}

}  // namespace

std::vector<MovilnetDecision> MovilnetClassifier::LookUp(std::span<const MovilnetRow> rows) const {
  std::vector<MovilnetDecision> decisions(rows.size());
  for (std::size_t begin = 0; begin < rows.size(); begin += rowsPerBlock) {
    if (store_.interruption.Requested()) throw HostError(HostErrorKind::Interrupted, "");
    const std::size_t count = std::min(rowsPerBlock, rows.size() - begin);
    const std::span<MovilnetDecision> block = std::span(decisions).subspan(begin, count);
    LookUpBlock(rows.subspan(begin, count), block);
    LookUpCosts(block);
  }
  return decisions;
}

SqlStatement MovilnetClassifier::ItemStatement(const MovilnetRow& row, const MovilnetDecision& decision) const {
  SqlStatement statement(
      "SELECT I.idItem, I.Descripcion, P.Precio FROM Items AS I LEFT JOIN Precios AS P ON I.idItem = P.idItem AND "
      "P.idUnidad = ");
  statement.Text(defaultCode).Sql(" AND P.Fijo = ").Boolean(true);
  if (row.chosenItem) return statement.Sql(" WHERE I.idItem = ").Text(store_.items.SpellingOf(*row.chosenItem));
  return statement.Sql(" WHERE I.MD5OrigenImportar = ").Text(decision.fingerprint);
}

void MovilnetClassifier::LookUpBlock(std::span<const MovilnetRow> rows, std::span<MovilnetDecision> decisions) const {
  std::vector<SqlStatement> statements;
  statements.reserve(rows.size() * 2);
  for (std::size_t index = 0; index < rows.size(); ++index) {
    const MovilnetRow& row = rows[index];
    decisions[index].fingerprint = OriginFingerprint(store_.hashes, row.brand, row.description);
    if (AsksForItem(row)) statements.push_back(ItemStatement(row, decisions[index]));
    statements.push_back(CodeExistsStatement(store_.items.SpellingOf(row.code)));
  }
  const std::vector<BatchResult> results = RunWhole(store_.database, statements);
  std::size_t next = 0;
  for (std::size_t index = 0; index < rows.size(); ++index) {
    const MovilnetRow& row = rows[index];
    MovilnetDecision& decision = decisions[index];
    if (AsksForItem(row)) {
      const BatchResult& item = results[next++];
      decision.lost = row.chosenItem && !FoundRows(item);
      if (FoundRows(item)) Associate(row, *item.rows, decision);
      if (decision.lost) decision.associated = *row.chosenItem;
    }
    decision.codeTaken = FoundRows(results[next++]);
  }
}

void MovilnetClassifier::LookUpCosts(std::span<MovilnetDecision> decisions) const {
  std::vector<SqlStatement> statements;
  std::vector<MovilnetDecision*> asked;
  for (MovilnetDecision& decision : decisions) {
    if (decision.associated.empty()) continue;
    SqlStatement& statement = statements.emplace_back("SELECT CostoActual FROM ItemsUnidadesInv WHERE idItem = ");
    statement.Text(decision.associated).Sql(" AND idUnidad = ").Text(defaultCode);
    statement.Sql(" AND Inv = ").Integer(store_.inventory);
    asked.push_back(&decision);
  }
  const std::vector<BatchResult> costs = RunWhole(store_.database, statements);
  for (std::size_t index = 0; index < costs.size(); ++index) {
    if (FoundRows(costs[index])) asked[index]->currentCost = CurrencyOf(costs[index].rows->Value(std::size_t{0}));
  }
}

void MovilnetClassifier::Associate(const MovilnetRow& row, const Recordset& item, MovilnetDecision& decision) const {
  decision.associated = item.Text(0);
  decision.itemDescription = item.Text(1);
  const Currency net = CurrencyOf(item.Value(std::size_t{2})).value_or(Currency());
  try {
    decision.currentPrice = store_.generalRate.WithTax(net);
    decision.difference = PriceDifference(row.price.OrZero(), *decision.currentPrice);
  } catch (const std::overflow_error&) {
    throw HostError(HostErrorKind::InvalidValue,
                    "el precio con impuestos del Item " + decision.associated + " es demasiado grande");
  }
}

void MovilnetClassifier::Settle(std::span<const MovilnetRow> rows, std::span<MovilnetDecision> decisions) {
  EarlierRows earlier;
  for (std::size_t index = 0; index < rows.size(); ++index) {
    const MovilnetRow& row = rows[index];
    MovilnetDecision& decision = decisions[index];
    decision.reason = row.reason;
    if (decision.lost) AppendSentence(decision.reason, "el Item " + decision.associated + " ya no está registrado");
    const auto sameLine = earlier.lines.Earlier(decision.fingerprint, row.sheetRow);
    if (decision.reason.empty()) decision.reason = ReasonOf(row, decision, sameLine, earlier);
    decision.action = decision.associated.empty() ? RowAction::Create : RowAction::Update;
    if (!decision.reason.empty()) decision.action = RowAction::None;
  }
}

}  // namespace tolvan
