#pragma once

#include <string_view>

namespace tolvan {

/// One plausible mail address: a local part of at most 64 bytes, "@", and a domain of at least two labels of letters,
/// digits and inner hyphens, or "localhost". No blanks, controls, quotes or angle brackets, so it can stand in a mail
/// header; at most 254 characters. Letters outside ASCII are taken in both halves.
bool IsEmailAddress(std::string_view text);

}  // namespace tolvan
