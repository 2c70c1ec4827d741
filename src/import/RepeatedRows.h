// One rule for every list: of rows that mean the same, the first is processed and the others are not.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace tolvan {

class RepeatedRows {
 public:
  /// The sheet row that had `key` before, in any casing; nothing when `sheetRow` is the first.
  std::optional<std::uint32_t> Earlier(std::string_view key, std::uint32_t sheetRow);

  /// Why a row is not processed, Spanish: `what` ("el código") stands in the row `earlier` already.
  static std::string Reason(std::string_view what, std::uint32_t earlier);

 private:
  std::unordered_map<std::string, std::uint32_t> first_;  // by the key in upper case
};

}  // namespace tolvan
