#include "import/RepeatedRows.h"

#include "base/Text.h"

namespace tolvan {

std::optional<std::uint32_t> RepeatedRows::Earlier(std::string_view key, std::uint32_t sheetRow) {
  const auto [first, isNew] = first_.emplace(ToUpper(key), sheetRow);
  return isNew ? std::nullopt : std::optional(first->second);
}

std::string RepeatedRows::Reason(std::string_view what, std::uint32_t earlier) {
  return std::string(what) + " se repite: ya está en la fila " + std::to_string(earlier) + " de la hoja";
}

}  // namespace tolvan
