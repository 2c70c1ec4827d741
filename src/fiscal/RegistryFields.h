// What the import takes from one line of the registry file: two fields, and the name as it is stored.
#pragma once

#include <string>
#include <string_view>

#include "fiscal/RegistryLineReader.h"

namespace tolvan {

enum class FieldsKind {
  Two,           ///< identifier and name are there
  NoSeparator,   ///< a line without "|": skipped, not counted
  EndlessFirst,  ///< the first field is longer than the reader's buffer, and no identifier
};

struct RegistryFields {
  FieldsKind kind = FieldsKind::NoSeparator;
  std::string_view identifier;
  std::string_view name;  ///< bytes of the file; of a name longer than the buffer its beginning
};

RegistryFields CutRegistryLine(const RegistryLine& line);

inline constexpr std::size_t longestName = 125;  ///< characters that the customer table holds

/// Appends the first `count` characters of bytes of the file as UTF-8. `utf8`: the file as a whole is; what is not
/// UTF-8 is read as Windows-1252 even then. Blanks, quotes and control characters stay.
void AppendCharacters(std::string& text, std::string_view bytes, std::size_t count, bool utf8);

}  // namespace tolvan
