// Whether the alternate-unit columns of a template row apply to an item. The rule is described in docs/importacion.md.
#pragma once

#include <optional>
#include <string>

#include "host/DatabaseServices.h"
#include "host/SqlStatement.h"
#include "import/TemplateRow.h"

namespace tolvan {

class AlternateUnitRule {
 public:
  /// Whether the row names an alternate unit at all: a unit code other than "DEF", and a multiplier above 1.
  static bool Named(const TemplateRow& row);

  /// Tells what of the columns of the alternate unit is given though no unit is named.
  static void TellUnused(const TemplateRow& row, Remarks& remarks);

  /// The item's units other than the principal one.
  static SqlStatement UnitsStatement(std::string_view code, std::string_view principalUnit);

  /// Finds a row when the item is sold with serial numbers.
  static SqlStatement SerialsStatement(std::string_view code);

  /// The one of `units` that is the row's, as it is stored: the same code, in any casing, and the same multiplier. When
  /// there is none, a remark tells why.
  static std::optional<std::string> Find(const TemplateRow& row, Recordset& units, Remarks& remarks);
};

}  // namespace tolvan
