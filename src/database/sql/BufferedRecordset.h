// A recordset whose rows were all read before anybody walks it, so that it needs nothing from its provider any more.
// For the results of batches, and for fakes.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/Text.h"
#include "host/DatabaseServices.h"

namespace tolvan {

class BufferedRecordset final : public Recordset {
 public:
  using Row = std::vector<FieldValue>;

  /// Names that many recordsets of one statement share.
  using Names = std::shared_ptr<const std::vector<std::string>>;

  /// Every row has one value for each name.
  BufferedRecordset(std::vector<std::string> names, std::vector<Row> rows)
      : BufferedRecordset(std::make_shared<const std::vector<std::string>>(std::move(names)), std::move(rows)) {}
  BufferedRecordset(Names names, std::vector<Row> rows) : names_(std::move(names)), rows_(std::move(rows)) {}

  /// Reads what is left of `source`, current row included. Throws what `source` throws.
  static std::unique_ptr<BufferedRecordset> ReadWhole(Names names, Recordset& source) {
    std::vector<Row> rows;
    for (; !source.AtEnd(); source.MoveNext()) {
      Row& row = rows.emplace_back();
      row.reserve(names->size());
      for (std::size_t index = 0; index < names->size(); ++index) row.push_back(source.Value(index));
    }
    return std::make_unique<BufferedRecordset>(std::move(names), std::move(rows));
  }

  bool AtEnd() const override { return current_ == rows_.size(); }
  void MoveNext() override { ++current_; }
  std::size_t FieldCount() const override { return names_->size(); }
  std::optional<std::size_t> FindField(std::string_view name) const override {
    for (std::size_t index = 0; index < names_->size(); ++index) {
      if (EqualIgnoringCase((*names_)[index], name)) return index;
    }
    return std::nullopt;
  }
  FieldValue Value(std::size_t index) const override { return rows_[current_][index]; }
  std::string_view Text(std::size_t index) const override {
    const FieldValue& value = rows_[current_][index];
    if (const auto* text = std::get_if<std::string>(&value)) return *text;
    text_ = TextOf(value);
    return text_;
  }
  using Recordset::Value;

 private:
  Names names_;
  std::vector<Row> rows_;
  std::size_t current_ = 0;
  mutable std::string text_;  // what Text last made
};

}  // namespace tolvan
