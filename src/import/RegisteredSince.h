// What another program registered between the classification of a list and its writing.
#pragma once

#include <span>
#include <string>

#include "host/DatabaseServices.h"

namespace tolvan {

/// Spanish: which of the `codes` that were to be created belong to items by now, and how to go on; empty when none
/// does, or when the database cannot be asked.
std::string RegisteredSince(DatabaseServices& database, std::span<const std::string> codes);

}  // namespace tolvan
