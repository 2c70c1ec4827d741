#include "host/Recordset.h"

#include "host/HostError.h"

namespace tolvan {

std::size_t Recordset::RequireField(std::string_view name) const {
  const std::optional<std::size_t> found = FindField(name);
  if (!found) throw HostError(HostErrorKind::Statement, "la consulta no devuelve el campo " + std::string(name));
  return *found;
}

}  // namespace tolvan
