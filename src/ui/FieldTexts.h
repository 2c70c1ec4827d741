// Dates and times of day as the user types and reads them: "31/01/2024" and "19:00".
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/Calendar.h"
#include "ui/OpcionesView.h"

namespace tolvan {

std::string DateText(Date date);

/// Day, month and year with "/", "-" or "." between them, blanks around; a year of two digits is one of this century.
/// Nothing when there is no such day, or the year is not from 1900 to 9999.
std::optional<Date> ParseDateText(std::string_view text);

std::string TimeText(TimeOfDay time);

/// Hour and minute with ":" or "." between them, or the hour alone. Nothing when there is no such time.
std::optional<TimeOfDay> ParseTimeText(std::string_view text);

/// `time` moved by minutes, around midnight.
TimeOfDay Moved(TimeOfDay time, int minutes);

}  // namespace tolvan
