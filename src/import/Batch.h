// Many statements in few round trips.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "host/DatabaseServices.h"

namespace tolvan {

/// How many rows of a workbook are classified together. With at most four round trips for a block a distant server sees
/// few of them, and memory stays small.
inline constexpr std::size_t rowsPerBatch = 500;

/// The failure of one statement of a batch, with its place in it.
class BatchFailure : public HostError {
 public:
  BatchFailure(const HostError& error, std::size_t index) : HostError(error), index_(index) {}
  std::size_t Index() const noexcept { return index_; }

 private:
  std::size_t index_;
};

/// RunBatch; throws BatchFailure for the first statement that failed. An empty batch runs nothing.
std::vector<BatchResult> RunWhole(DatabaseServices& database, std::span<const SqlStatement> statements);

/// Whether the query of a batch found anything.
inline bool FoundRows(const BatchResult& result) {
  return !result.rows->AtEnd();
}

}  // namespace tolvan
