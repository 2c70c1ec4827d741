#include "fiscal/RegistryBatchWriter.h"

#include <algorithm>
#include <unordered_set>

namespace tolvan {
namespace {

/// Into how many parts a failing group is taken apart.
constexpr std::size_t partCount = 16;

}  // namespace

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

RegistryBatchWriter::RegistryBatchWriter(DatabaseServices& database, const SqlDialect& dialect,
                                         const Interruption& interruption, bool active)
    : database_(database), interruption_(interruption), statement_(dialect, active) {
  statements_.assign(statement_.HasStatementForMany() ? 1 : dialect.Engine().statementsPerCall, statement_.Blank());
}

std::optional<HostError> RegistryBatchWriter::Write(RegistryBatch& batch) {
  batch_ = &batch;
  messages_.clear();
  try {
    const std::vector<std::uint32_t>& order = batch.OrderByCode();
    if (order.empty()) return std::nullopt;
    if (TryTogether(order)) {
      Settle(order);
      return std::nullopt;
    }
    std::vector<std::uint32_t> inFileOrder;
    for (std::uint32_t place = 0; place < batch.Lines().size(); ++place) {
      if (batch.Lines()[place].key != 0) inFileOrder.push_back(place);
    }
    TakeApart(inFileOrder);
    return std::nullopt;
  } catch (const HostError& error) {
    return error;
  }
}

bool RegistryBatchWriter::TryTogether(Places places) {
  inserted_.clear();
  const std::unique_ptr<Transaction> transaction = database_.BeginTransaction();
  if (!(statement_.HasStatementForMany() ? RunAsOne(places) : RunInChunks(places))) return false;
  transaction->Commit();
  return true;
}

bool RegistryBatchWriter::RunInChunks(Places places) {
  const std::size_t chunkSize = statements_.size();
  for (std::size_t start = 0; start < places.size(); start += chunkSize) {
    if (interruption_.Requested()) throw HostError(HostErrorKind::Interrupted, {});
    if (!RunChunk(places.subspan(start, std::min(chunkSize, places.size() - start)))) return false;
  }
  return true;
}

bool RegistryBatchWriter::RunChunk(Places places) {
  for (std::size_t index = 0; index < places.size(); ++index) {
    statement_.Fill(statements_[index], batch_->RowOf(batch_->Lines()[places[index]]));
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

bool RegistryBatchWriter::RunAsOne(Places places) {
  if (interruption_.Requested()) throw HostError(HostErrorKind::Interrupted, {});
  // Of lines with one code only the first is sent, and below it takes the code that came back with it.
  std::vector<CustomerRow> rows;
  std::unordered_set<std::uint64_t> keys;
  rows.reserve(places.size());
  for (const std::uint32_t place : places) {
    const BatchLine& line = batch_->Lines()[place];
    if (keys.insert(line.key).second) rows.push_back(batch_->RowOf(line));
  }
  std::unordered_set<std::string> codes;
  try {
    const std::unique_ptr<Recordset> added = database_.OpenRecordset(statement_.ForMany(rows));
    for (; !added->AtEnd(); added->MoveNext()) codes.emplace(added->Text(0));
  } catch (const HostError& error) {
    if (IsFailureOfStatement(error)) return false;
    // Without its text, which holds the whole batch.
    throw HostError(error.Kind(), error.what(), {}, error.NativeCode());
  }
  for (const std::uint32_t place : places) {
    inserted_.push_back(codes.erase(std::string(batch_->RowOf(batch_->Lines()[place]).code)) > 0);
  }
  return true;
}

void RegistryBatchWriter::TakeApart(Places places) {
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

void RegistryBatchWriter::WriteAlone(std::uint32_t place) {
  BatchLine& line = batch_->Lines()[place];
  try {
    statement_.Fill(statements_.front(), batch_->RowOf(line));
    line.outcome = database_.Execute(statements_.front()) > 0 ? LineOutcome::Inserted : LineOutcome::Present;
  } catch (const HostError& error) {
    if (!IsFailureOfStatement(error)) throw;
    line.outcome = LineOutcome::Rejected;
    line.rejection = RejectionKind::StatementFailed;
    messages_.insert_or_assign(place, error.what());
  }
}

void RegistryBatchWriter::Settle(Places places) {
  for (std::size_t index = 0; index < places.size(); ++index) {
    batch_->Lines()[places[index]].outcome = inserted_[index] ? LineOutcome::Inserted : LineOutcome::Present;
  }
}

}  // namespace tolvan
