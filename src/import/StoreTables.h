// The small tables that an import reads once before it classifies or applies.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "host/DatabaseServices.h"
#include "services/Rate.h"

namespace tolvan {

class DepartmentTable {
 public:
  /// Throws HostError.
  static DepartmentTable Load(DatabaseServices& database);

  bool Contains(std::string_view department) const;

  /// False for a department that the table does not hold.
  bool RequiresSerials(std::string_view department) const;

 private:
  std::unordered_map<std::string, bool> requiresSerials_;  // by upper-cased code
};

/// How many units of the store's currency one unit of the foreign currency costs, never zero; of the first foreign
/// currency where there are several. Throws HostError, kind InvalidValue when no foreign currency is registered or its
/// factor is unusable.
Rate LoadForeignFactor(DatabaseServices& database);

}  // namespace tolvan
