#pragma once

#include <string>

#include "import/PriceImporter.h"

namespace tolvan {

/// The JSON document of one import. `error` is the key of a failure, left out when empty.
std::string ReviewJson(const PriceImporter& importer, bool applied, const std::string& error);

}  // namespace tolvan
