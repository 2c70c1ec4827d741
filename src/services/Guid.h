// Identifiers that no other document or computer has.
#pragma once

#include <string>

namespace tolvan {

/// A new random GUID (version 4 of RFC 4122) in registry form: 38 characters, braces, upper-case hexadecimal digits
/// grouped 8-4-4-4-12. Throws std::runtime_error when the system gives no random numbers.
std::string NewGuidText();

}  // namespace tolvan
