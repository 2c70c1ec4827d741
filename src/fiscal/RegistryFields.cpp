#include "fiscal/RegistryFields.h"

#include <algorithm>

#include "base/Text.h"

namespace tolvan {
namespace {

constexpr std::size_t longestCharacter = 4;  // bytes of one character in UTF-8

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

}  // namespace

RegistryFields CutRegistryLine(const RegistryLine& line) {
  RegistryFields fields;
  const std::size_t first = line.text.find('|');
  if (first == std::string_view::npos) {
    if (line.separatorBeyond) fields.kind = FieldsKind::EndlessFirst;
    return fields;
  }
  fields.kind = FieldsKind::Two;
  fields.identifier = line.text.substr(0, first);
  const std::string_view rest = line.text.substr(first + 1);
  fields.name = rest.substr(0, rest.find('|'));
  return fields;
}

void AppendCharacters(std::string& text, std::string_view bytes, std::size_t count, bool utf8) {
  const std::string_view single = bytes.substr(0, count);
  if (IsAscii(single)) {
    text += single;
    return;
  }
  if (utf8) {
    const std::string_view characters = FirstCharacters(bytes.substr(0, count * longestCharacter), count);
    if (IsValidUtf8(characters)) {
      text += characters;
      return;
    }
  }
  text += FromWindows1252(single);
}

}  // namespace tolvan
