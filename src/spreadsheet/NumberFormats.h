// Which number formats show a date or a time of day. A workbook stores dates as numbers; only the format tells them
// apart.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tolvan {

/// Whether a format code such as "dd/mm/yyyy" or "[h]:mm" shows a date or time in its first section. Colours,
/// conditions, locales and literal text do not count.
bool ShowsDate(std::string_view formatCode);

/// The cell formats of one workbook, by number in the order of its list.
class CellFormats {
 public:
  /// A format code of the workbook; it comes before the built-in one of the same number. Throws HostError Damaged past
  /// the limit, as AddCellFormat does.
  void DefineFormat(std::uint32_t formatId, std::string_view code);
  void AddCellFormat(std::uint32_t formatId);

  /// False for a cell format that the workbook does not have.
  bool IsDate(std::size_t cellFormat) const { return cellFormat < isDate_.size() && isDate_[cellFormat] != 0; }

 private:
  std::unordered_map<std::uint32_t, bool> defined_;
  std::vector<std::uint8_t> isDate_;
};

}  // namespace tolvan
