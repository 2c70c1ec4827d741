#pragma once

#include <cstdint>
#include <string_view>

namespace tolvan {

/// What an import does with a row of the workbook. The numbers are part of the importers' interface.
enum class RowAction : std::int16_t { None = 0, Update = 1, Create = 2 };

/// "No procesar", "Actualizar" or "Agregar".
constexpr std::string_view ActionText(RowAction action) {
  switch (action) {
    case RowAction::None:
      return "No procesar";
    case RowAction::Update:
      return "Actualizar";
    case RowAction::Create:
      return "Agregar";
  }
  return "";
}

}  // namespace tolvan
