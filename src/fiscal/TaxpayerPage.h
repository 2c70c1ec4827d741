// Reads the tax authority's lookup page. The page is known by two things only: the cells that show the taxpayer, and
// the name of the search form's text box. Everything else on it may change.
#pragma once

#include <string>
#include <string_view>

namespace tolvan {

enum class PageKind {
  NameShown,
  NotListed,  ///< the search form without the taxpayer: the registry does not hold the identifier
  Unknown,    ///< not the page this program knows
};

struct PageReading {
  PageKind kind = PageKind::Unknown;

  /// As the page has it, trimmed of blanks: entities and mark-up inside stay. UTF-8; a name that is not UTF-8 is read
  /// as Windows-1252. Empty unless NameShown.
  std::string name;

  /// False when the page ends within the name.
  bool complete = true;
};

/// `code` is the normalised identifier that was asked for.
PageReading ReadTaxpayerPage(std::string_view page, std::string_view code);

}  // namespace tolvan
