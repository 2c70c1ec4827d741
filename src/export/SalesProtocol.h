// The texts that go to the reporting server and come back. The wire format is described in docs/formats.md.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/Calendar.h"
#include "base/Currency.h"
#include "export/SalesTotals.h"

namespace tolvan {

/// The fields of the question for the days that the server still needs.
std::vector<std::string> PendingDaysFields(std::string_view store, Date reference);

/// The fields that report one day. `separator` is removed from the amounts.
std::vector<std::string> DayFields(std::string_view store, Date day, const DaySalesTotals& totals,
                                   std::string_view separator);

/// Two decimals, without any occurrence of `separator`.
std::string FormatAmount(Currency value, std::string_view separator);

/// Every field encoded and followed by a blank; the whole, trimmed, encoded once more.
std::string EncodeFields(std::span<const std::string> fields);

/// The pieces between single blanks, each decoded; none of an empty text.
std::vector<std::string> DecodeAnswer(std::string_view answer);

/// "20240131"; nothing for any other text and for a day that is in no calendar.
std::optional<Date> ParseListedDay(std::string_view element);

}  // namespace tolvan
