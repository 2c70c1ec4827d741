#include "fiscal/RegistryBlockWriter.h"

#include <algorithm>
#include <array>
#include <unordered_set>

namespace tolvan {
namespace {

constexpr std::string_view table = "CLIENTES";
constexpr std::array<std::string_view, 6> columns = {"idCliente",   "Descripcion",       "RIF",
                                                     "TipoCliente", "PersoneriaCliente", "Activo"};

// What stands in the blank statement where a row's values go.
constexpr std::string_view codeMark = "code";
constexpr std::string_view nameMark = "name";
constexpr std::string_view personeriaMark = "personeria";

std::vector<std::size_t> PlacesOf(const SqlStatement& statement, std::string_view mark) {
  std::vector<std::size_t> places;
  for (std::size_t index = 0; index < statement.Literals().size(); ++index) {
    const auto* text = std::get_if<std::string>(&statement.Literals()[index]);
    if (text != nullptr && *text == mark) places.push_back(index);
  }
  return places;
}

/// Into how many parts a failing group is taken apart.
constexpr std::size_t partCount = 16;

}  // namespace

CustomerStatement::CustomerStatement(const SqlDialect& dialect, bool active) : dialect_(&dialect), active_(active) {
  // Only valid identifiers are written, so every row is that of a taxpayer (1), and its code for reports is its code.
  const std::array<SqlLiteral, columns.size()> values = {std::string(codeMark),       std::string(nameMark),
                                                         std::string(codeMark),       std::int64_t{1},
                                                         std::string(personeriaMark), active};
  blank_ = dialect.InsertUnlessPresent(table, "Clientes", columns, values);
  codePlaces_ = PlacesOf(blank_, codeMark);
  namePlaces_ = PlacesOf(blank_, nameMark);
  personeriaPlaces_ = PlacesOf(blank_, personeriaMark);
  const std::array<CustomerRow, 1> anyRow{};
  hasStatementForMany_ = TryForMany(anyRow).has_value();
}

SqlStatement CustomerStatement::ForMany(std::span<const CustomerRow> rows) const {
  return TryForMany(rows).value();
}

std::optional<SqlStatement> CustomerStatement::TryForMany(std::span<const CustomerRow> rows) const {
  std::vector<SqlLiteral> values;
  values.reserve(rows.size() * columns.size());
  for (const CustomerRow& row : rows) {
    values.emplace_back(std::string(row.code));
    values.emplace_back(std::string(row.name));
    values.emplace_back(std::string(row.code));
    values.emplace_back(std::int64_t{1});
    values.emplace_back(std::int64_t{row.personeria});
    values.emplace_back(active_);
  }
  return dialect_->InsertManyUnlessPresent(table, columns, values);
}

void CustomerStatement::Fill(SqlStatement& statement, const CustomerRow& row) const {
  for (const std::size_t place : codePlaces_) statement.ReplaceText(place, row.code);
  for (const std::size_t place : namePlaces_) statement.ReplaceText(place, row.name);
  for (const std::size_t place : personeriaPlaces_) {
    statement.ReplaceLiteral(place, std::int64_t{row.personeria});
  }
}

bool IsFailureOfStatement(const HostError& error) {
  switch (error.Kind()) {
    case HostErrorKind::Constraint:
    case HostErrorKind::Statement:
    case HostErrorKind::InvalidValue:
    case HostErrorKind::Failed:
      return true;
    default:
      return false;
  }
}

RegistryBlockWriter::RegistryBlockWriter(DatabaseServices& database, const SqlDialect& dialect,
                                         const Interruption& interruption, bool active)
    : database_(database), interruption_(interruption), statement_(dialect, active) {
  statements_.assign(statement_.HasStatementForMany() ? 1 : dialect.Engine().statementsPerCall, statement_.Blank());
}

std::optional<HostError> RegistryBlockWriter::Write(RegistryBlock& block) {
  block_ = &block;
  messages_.clear();
  try {
    const std::vector<std::uint32_t>& order = block.OrderByCode();
    if (order.empty()) return std::nullopt;
    if (TryTogether(order)) {
      Settle(order);
      return std::nullopt;
    }
    std::vector<std::uint32_t> inFileOrder;
    for (std::uint32_t place = 0; place < block.Lines().size(); ++place) {
      if (block.Lines()[place].key != 0) inFileOrder.push_back(place);
    }
    TakeApart(inFileOrder);
    return std::nullopt;
  } catch (const HostError& error) {
    return error;
  }
}

bool RegistryBlockWriter::TryTogether(Places places) {
  inserted_.clear();
  const std::unique_ptr<Transaction> transaction = database_.BeginTransaction();
  if (!(statement_.HasStatementForMany() ? RunAsOne(places) : RunInChunks(places))) return false;
  transaction->Commit();
  return true;
}

bool RegistryBlockWriter::RunInChunks(Places places) {
  const std::size_t chunkSize = statements_.size();
  for (std::size_t start = 0; start < places.size(); start += chunkSize) {
    if (interruption_.Requested()) throw HostError(HostErrorKind::Interrupted, {});
    if (!RunChunk(places.subspan(start, std::min(chunkSize, places.size() - start)))) return false;
  }
  return true;
}

bool RegistryBlockWriter::RunChunk(Places places) {
  for (std::size_t index = 0; index < places.size(); ++index) {
    statement_.Fill(statements_[index], block_->RowOf(block_->Lines()[places[index]]));
  }
  const std::vector<BatchResult> results = database_.RunBatch(std::span(statements_).first(places.size()));
  for (const BatchResult& result : results) {
    if (result.error) {
      if (!IsFailureOfStatement(*result.error)) throw HostError(*result.error);
      return false;
    }
    inserted_.push_back(result.affectedRows.value_or(0) > 0);
  }
  return true;
}

bool RegistryBlockWriter::RunAsOne(Places places) {
  if (interruption_.Requested()) throw HostError(HostErrorKind::Interrupted, {});
  // Of lines with one code only the first is sent, and below it takes the code that came back with it.
  std::vector<CustomerRow> rows;
  std::unordered_set<std::uint64_t> keys;
  rows.reserve(places.size());
  for (const std::uint32_t place : places) {
    const BlockLine& line = block_->Lines()[place];
    if (keys.insert(line.key).second) rows.push_back(block_->RowOf(line));
  }
  std::unordered_set<std::string> codes;
  try {
    const std::unique_ptr<Recordset> added = database_.OpenRecordset(statement_.ForMany(rows));
    for (; !added->AtEnd(); added->MoveNext()) codes.emplace(added->Text(0));
  } catch (const HostError& error) {
    if (IsFailureOfStatement(error)) return false;
    // Without its text, which holds the whole block.
    throw HostError(error.Kind(), error.what(), {}, error.NativeCode());
  }
  for (const std::uint32_t place : places) {
    inserted_.push_back(codes.erase(std::string(block_->RowOf(block_->Lines()[place]).code)) > 0);
  }
  return true;
}

void RegistryBlockWriter::TakeApart(Places places) {
  if (places.size() == 1) {
    WriteAlone(places.front());
    return;
  }
  const std::size_t partSize = (places.size() + partCount - 1) / partCount;
  for (std::size_t start = 0; start < places.size(); start += partSize) {
    const Places part = places.subspan(start, std::min(partSize, places.size() - start));
    if (part.size() > 1 && TryTogether(part)) {
      Settle(part);
    } else {
      TakeApart(part);
    }
  }
}

void RegistryBlockWriter::WriteAlone(std::uint32_t place) {
  BlockLine& line = block_->Lines()[place];
  try {
    statement_.Fill(statements_.front(), block_->RowOf(line));
    line.outcome = database_.Execute(statements_.front()) > 0 ? LineOutcome::Inserted : LineOutcome::Present;
  } catch (const HostError& error) {
    if (!IsFailureOfStatement(error)) throw;
    line.outcome = LineOutcome::Rejected;
    line.rejection = RejectionKind::StatementFailed;
    messages_.insert_or_assign(place, error.what());
  }
}

void RegistryBlockWriter::Settle(Places places) {
  for (std::size_t index = 0; index < places.size(); ++index) {
    block_->Lines()[places[index]].outcome = inserted_[index] ? LineOutcome::Inserted : LineOutcome::Present;
  }
}

}  // namespace tolvan
