#include "export/StoredDate.h"

#include <cstdlib>

#include "host/HostError.h"

namespace tolvan {

Date StoredDate(const ImpExpSettings& settings, const DateSettings& parts, std::string_view what) {
  const int year = settings.Integer(parts.year);
  const int month = settings.Integer(parts.month);
  const int day = settings.Integer(parts.day);
  const bool plausible = year >= 1 && year <= 9999 && std::abs(month) <= 1200 && std::abs(day) <= 36600;
  if (!plausible) {
    throw HostError(HostErrorKind::InvalidValue, "la " + std::string(what) + " guardada no es una fecha: día " +
                                                     std::to_string(day) + ", mes " + std::to_string(month) + ", año " +
                                                     std::to_string(year));
  }
  return Date::FromParts(year, month, day);
}

}  // namespace tolvan
