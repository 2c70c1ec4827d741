// By what an item is known to come from a line of the Movilnet list.
#pragma once

#include <string>
#include <string_view>

#include "host/SystemServices.h"

namespace tolvan {

/// The lower-case hexadecimal MD5 of brand and description, joined and in upper case, in the bytes of Windows-1252.
/// What that code page lacks is told apart by an escape; the rule is in docs/importacion.md.
std::string OriginFingerprint(const HashService& hashes, std::string_view brand, std::string_view description);

}  // namespace tolvan
