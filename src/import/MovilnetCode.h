// How an item code and a department are made from a line of the Movilnet price list.
#pragma once

#include <string>
#include <string_view>

namespace tolvan {

/// The code, at most 12 characters, never empty: kind letter, brand prefix, and what of the model is neither brand nor
/// a common word. `model`, `brand` and `type` are columns A, B and C as read.
std::string MovilnetCode(std::string_view model, std::string_view brand, std::string_view type);

/// "CDMA", "GSM" (also for UMTS; it wins over CDMA), or "" when the type names none of them.
std::string MovilnetDepartment(std::string_view type);

}  // namespace tolvan
