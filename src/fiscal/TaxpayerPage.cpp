#include "fiscal/TaxpayerPage.h"

#include "base/Text.h"

namespace tolvan {
namespace {

constexpr std::string_view cellBorder = "</td><td>";
constexpr std::string_view searchBox = "txtRncCed";

bool Contains(std::string_view text, std::string_view what) {
  return text.find(what) != std::string_view::npos;
}

/// A page that shows the identifier in other mark-up than expected is not the one that was known.
PageKind KindWithoutRow(std::string_view page, std::string_view code) {
  const bool shownElsewhere = Contains(page, std::string(">").append(code).append("<"));
  return Contains(page, searchBox) && !shownElsewhere ? PageKind::NotListed : PageKind::Unknown;
}

}  // namespace

PageReading ReadTaxpayerPage(std::string_view page, std::string_view code) {
  const std::string rowStart = std::string("<td>").append(code).append(cellBorder);
  const std::size_t found = page.find(rowStart);
  if (found == std::string_view::npos) return {.kind = KindWithoutRow(page, code), .name = {}};
  const std::size_t start = found + rowStart.size();
  const std::size_t end = page.find(cellBorder, start);
  const bool complete = end != std::string_view::npos;
  const std::string_view name = TrimBlanks(page.substr(start, complete ? end - start : end));
  // A listed taxpayer has a name; an empty cell means that the columns have moved.
  if (name.empty()) return {.kind = PageKind::Unknown, .name = {}, .complete = complete};
  return {.kind = PageKind::NameShown,
          .name = IsValidUtf8(name) ? std::string(name) : FromWindows1252(name),
          .complete = complete};
}

}  // namespace tolvan
