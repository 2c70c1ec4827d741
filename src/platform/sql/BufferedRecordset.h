// A recordset whose rows were all read before anybody walks it, so that it needs nothing from its provider any more.
// For the results of batches, and for fakes.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/Recordset.h"

namespace tolvan {

class BufferedRecordset final : public Recordset {
 public:
  using Row = std::vector<FieldValue>;

  /// Every row has one value for each name.
  BufferedRecordset(std::vector<std::string> names, std::vector<Row> rows);

  /// Reads what is left of `source`, current row included. Throws what `source` throws.
  static std::unique_ptr<BufferedRecordset> ReadWhole(std::vector<std::string> names, Recordset& source);

  bool AtEnd() const override { return current_ == rows_.size(); }
  void MoveNext() override { ++current_; }
  std::size_t FieldCount() const override { return names_.size(); }
  std::optional<std::size_t> FindField(std::string_view name) const override;
  FieldValue Value(std::size_t index) const override { return rows_[current_][index]; }
  std::string_view Text(std::size_t index) const override;
  using Recordset::Value;

 private:
  std::vector<std::string> names_;
  std::vector<Row> rows_;
  std::size_t current_ = 0;
  mutable std::string text_;  // what Text last made
};

}  // namespace tolvan
