#include "fiscal/RegistryContent.h"

#include <algorithm>
#include <array>

#include "base/Text.h"

namespace tolvan {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t markupLookedAt = 4U << 10;
constexpr std::size_t controlsLookedAt = 64U << 10;

struct Signature {
  std::string_view bytes;
  std::string_view kind;
};

constexpr std::array signatures{
    Signature{"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv, "un libro de Excel u otro documento de Office"sv},
    Signature{"%PDF-"sv, "un documento PDF"sv},
    Signature{"PK\3\4"sv, "un archivo comprimido"sv},
    Signature{"PK\5\6"sv, "un archivo comprimido"sv},
    Signature{"\x1F\x8B"sv, "un archivo comprimido"sv},
    Signature{"7z\xBC\xAF\x27\x1C"sv, "un archivo comprimido"sv},
    Signature{"Rar!\x1A\x07"sv, "un archivo comprimido"sv},
    Signature{"\xFF\xFE"sv, "un texto en UTF-16"sv},
    Signature{"\xFE\xFF"sv, "un texto en UTF-16"sv},
};

std::string_view MarkupKind(std::string_view beginning) {
  if (beginning.starts_with("\xEF\xBB\xBF"sv)) beginning.remove_prefix(3);
  const std::size_t first = beginning.find_first_not_of(" \t\r\n"sv);
  if (first == std::string_view::npos || beginning[first] != '<') return {};
  const std::string_view text = beginning.substr(first, markupLookedAt);
  for (const std::string_view element : {"<!doctype html"sv, "<html"sv, "<head"sv, "<body"sv, "<table"sv, "<script"sv})
    if (ContainsIgnoringCase(text, element)) return "una página web"sv;
  return text.starts_with("<?xml"sv) ? "un documento XML"sv : std::string_view();
}

/// A stray control character, a NUL in a name too, is one line's fault. In what is no text they are many.
bool IsFullOfControls(std::string_view beginning) {
  constexpr std::ptrdiff_t fewest = 16;
  constexpr std::ptrdiff_t oneIn = 20;
  const std::string_view text = beginning.substr(0, controlsLookedAt);
  const std::ptrdiff_t controls = std::count_if(text.begin(), text.end(), [](char c) {
    return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\r' && c != '\n' && c != '\f';
  });
  return controls >= fewest && controls * oneIn > static_cast<std::ptrdiff_t>(text.size());
}

std::string_view WithoutCutCharacter(std::string_view text) {
  constexpr std::size_t mostFollowing = 3;
  std::size_t end = text.size();
  while (end > 0 && text.size() - end < mostFollowing && (static_cast<unsigned char>(text[end - 1]) & 0xC0U) == 0x80)
    --end;
  const bool leads = end > 0 && static_cast<unsigned char>(text[end - 1]) >= 0xC0;
  return leads ? text.substr(0, end - 1) : text;
}

}  // namespace

std::string_view KindOfOtherFile(std::string_view beginning) {
  for (const Signature& one : signatures)
    if (beginning.starts_with(one.bytes)) return one.kind;
  if (const std::string_view kind = MarkupKind(beginning); !kind.empty()) return kind;
  return IsFullOfControls(beginning) ? "un archivo que no es de texto"sv : std::string_view();
}

bool BeginsAsZip(std::string_view beginning) {
  return beginning.starts_with("PK\3\4"sv) || beginning.starts_with("PK\5\6"sv);
}

bool BeginsAsUtf8(std::string_view beginning) {
  const std::string_view whole = beginning.size() < registryBeginning ? beginning : WithoutCutCharacter(beginning);
  const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
  return !std::all_of(whole.begin(), whole.end(), isAscii) && IsValidUtf8(whole);
}

}  // namespace tolvan
