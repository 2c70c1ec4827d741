#include "spreadsheet/WorkbookKind.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/Text.h"

namespace tolvan {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t lookedAt = 1024;

std::string Beginning(const WorkbookFile& file) {
  std::string bytes(lookedAt, '\0');
  bytes.resize(file.ReadAt(0, bytes));
  return bytes;
}

bool LooksLikeText(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char c) {
    return static_cast<unsigned char>(c) >= 0x20 || c == '\t' || c == '\r' || c == '\n' || c == '\f';
  });
}

std::string_view WithoutMark(std::string_view text) {
  if (text.starts_with("\xEF\xBB\xBF"sv)) text.remove_prefix(3);
  const std::size_t first = text.find_first_not_of(" \t\r\n"sv);
  return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

/// A book of the versions 2 to 5 without a container: the record that begins it, and its length.
bool IsBareBiff(std::string_view bytes) {
  constexpr std::array starts{"\x09\x00\x04\x00"sv, "\x09\x02\x06\x00"sv, "\x09\x04\x06\x00"sv, "\x09\x08"sv};
  return std::any_of(starts.begin(), starts.end(), [&](std::string_view start) { return bytes.starts_with(start); });
}

}  // namespace

WorkbookKind KindOf(const WorkbookFile& file) {
  const std::string bytes = Beginning(file);
  if (bytes.starts_with("PK\3\4"sv) || bytes.starts_with("PK\5\6"sv)) return WorkbookKind::Zip;
  if (bytes.starts_with("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv)) return WorkbookKind::Compound;
  return WorkbookKind::Other;
}

std::string DescribeOther(const WorkbookFile& file) {
  const std::string bytes = Beginning(file);
  if (IsBareBiff(bytes))
    return "el libro es de una versión de Excel anterior a la 97; guárdelo de nuevo como .xls o .xlsx";
  if (bytes.starts_with("%PDF-"sv)) return "es un documento PDF, no un libro de Excel";
  const bool isText = LooksLikeText(bytes) || bytes.starts_with("\xFF\xFE"sv) || bytes.starts_with("\xFE\xFF"sv);
  if (!isText) return "no es un libro de Excel";
  const std::string_view text = WithoutMark(bytes);
  if (ContainsIgnoringCase(text, "<html"sv) || ContainsIgnoringCase(text, "<table"sv))
    return "es una página HTML con nombre de libro; ábrala en Excel y guárdela como .xlsx";
  if (text.starts_with('<')) return "es un documento XML, no un libro de Excel";
  return "es un archivo de texto con nombre de libro; ábralo en Excel y guárdelo como .xlsx";
}

}  // namespace tolvan
