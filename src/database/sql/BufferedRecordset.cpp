#include "database/sql/BufferedRecordset.h"

#include "base/Text.h"

namespace tolvan {

std::unique_ptr<BufferedRecordset> BufferedRecordset::ReadWhole(Names names, Recordset& source) {
  std::vector<Row> rows;
  for (; !source.AtEnd(); source.MoveNext()) {
    Row& row = rows.emplace_back();
    row.reserve(names->size());
    for (std::size_t index = 0; index < names->size(); ++index) row.push_back(source.Value(index));
  }
  return std::make_unique<BufferedRecordset>(std::move(names), std::move(rows));
}

std::optional<std::size_t> BufferedRecordset::FindField(std::string_view name) const {
  for (std::size_t index = 0; index < names_->size(); ++index) {
    if (EqualIgnoringCase((*names_)[index], name)) return index;
  }
  return std::nullopt;
}

std::string_view BufferedRecordset::Text(std::size_t index) const {
  const FieldValue& value = rows_[current_][index];
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  text_ = TextOf(value);
  return text_;
}

}  // namespace tolvan
