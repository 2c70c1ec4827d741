// A date that three settings hold as its parts.
#pragma once

#include "base/Calendar.h"
#include "services/ImpExpSettings.h"

namespace tolvan {

struct DateSettings {
  Setting year;
  Setting month;
  Setting day;
};

inline constexpr DateSettings reportDateSettings{
    .year = Setting::FechaReporteAnno, .month = Setting::FechaReporteMes, .day = Setting::FechaReporteDia};
inline constexpr DateSettings uploadDateSettings{
    .year = Setting::OffsetAnno, .month = Setting::OffsetMes, .day = Setting::OffsetDia};

/// The stored date, carried when its parts run over (day 31 of February is in March). Throws HostError InvalidValue
/// when they are no date at all; `what` names the date in its text ("fecha de reporte").
Date StoredDate(const ImpExpSettings& settings, const DateSettings& parts, std::string_view what);

}  // namespace tolvan
