// The writes of a block of rows, sent together: first what is certain, then the rows that an update did not find.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/DatabaseServices.h"
#include "import/ItemStatements.h"

namespace tolvan {

/// The failure of a row's step.
class RowFailure : public HostError {
 public:
  RowFailure(const HostError& error, std::size_t row) : HostError(error), row_(row) {}
  std::size_t Row() const noexcept { return row_; }  ///< of the import, from 1

 private:
  std::size_t row_;
};

/// The texts that layers point to must stay where they are until Run has returned.
class WriteBlock {
 public:
  void Add(std::size_t row, SqlStatement statement);

  /// A cost or price that replaces the present one, or begins where there is none.
  void SetCost(std::size_t row, const ItemLayer& layer, const ItemCost& cost);
  void SetPrice(std::size_t row, const ItemLayer& layer, Currency net, bool fixed);

  /// Runs everything. Throws RowFailure for the first statement that failed. A block is run once.
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

}  // namespace tolvan
