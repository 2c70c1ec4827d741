// The review of an import on standard output: a table in the groups of the review window.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>

#include "import/PriceImporter.h"

namespace tolvan {

/// The three groups, each with its rows; a group without rows is left out. Where a terminal shows it, the table fits
/// its `columns` as far as the codes and amounts of a row do, says nothing twice, and has about fifty rows.
void PrintReview(std::ostream& out, const PriceImporter& importer, std::optional<std::size_t> columns);

}  // namespace tolvan
