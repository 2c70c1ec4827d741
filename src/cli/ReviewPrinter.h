// The review of an import on standard output: a table in the groups of the review window, or the JSON document.
#pragma once

#include <iosfwd>
#include <string>

#include "import/PriceImporter.h"

namespace tolvan {

/// The three groups, each with its rows; a group without rows is left out.
void PrintReview(std::ostream& out, const PriceImporter& importer);

/// The document of one call. `error` is the key of a failure, left out when empty.
std::string ReviewJson(const PriceImporter& importer, bool applied, const std::string& error);

}  // namespace tolvan
