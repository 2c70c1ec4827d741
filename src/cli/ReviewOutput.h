// How the command shows the review of an import: as a table for people, or as JSON for programs.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>

#include "import/PriceImporter.h"

namespace tolvan {

/// The three groups, each with its rows; a group without rows is left out. Where a terminal shows it, the table fits
/// its `columns` as far as the codes and amounts of a row do, says nothing twice, and has about fifty rows.
void PrintReview(std::ostream& out, const PriceImporter& importer, std::optional<std::size_t> columns);

/// The JSON document of one import. `error` is the key of a failure, left out when empty.
std::string ReviewJson(const PriceImporter& importer, bool applied, const std::string& error);

}  // namespace tolvan
