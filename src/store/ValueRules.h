// What makes the values of a host configuration usable. Every rule answers why a value cannot be used, in Spanish, or
// nothing when it can.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/HostConfiguration.h"

namespace tolvan {

using Complaint = std::optional<std::string>;

Complaint TakeNumber(std::string_view value, std::int32_t least, std::int32_t most, std::int32_t& target);
Complaint TakeFlag(std::string_view value, bool& target);
Complaint TakeFilledText(std::string_view value, std::string& target);

/// Digits 0 and #, one point at most, commas for grouping, anything else before and behind.
Complaint TakeMoneyFormat(std::string_view value, std::string& target);

/// Empty or a text without digits and signs, which are parts of the amounts it is removed from.
Complaint TakeSeparator(std::string_view value, std::string& target);

/// Names separated by commas or blanks.
Complaint TakeNames(std::string_view value, std::vector<std::string>& target);

Complaint TakeEngine(std::string_view value, DatabaseConfiguration& target);

/// A mail address, or empty where `mayBeEmpty`.
Complaint TakeAddress(std::string_view value, bool mayBeEmpty, std::string& target);

/// Empty, or smtp:// or smtps:// with host and optional port.
Complaint TakeMailServer(std::string_view value, std::string& target);

/// Empty, or host[:port] without a scheme.
Complaint TakeHost(std::string_view value, std::string& target);

/// Empty, or an address that begins with http:// or https://.
Complaint TakeWebAddress(std::string_view value, std::string& target);

}  // namespace tolvan
