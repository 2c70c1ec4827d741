// The files that the registry's benchmark works on: the demo store's synthetic taxpayers, 800,000 of them, in random
// order.
#pragma once

#include <cstdint>
#include <string>

namespace tolvan::bench {

/// Writes the registry to `registryPath` and, to `rowsPath`, the rows that an import makes of it: the six columns of
/// the customer table, UTF-8, separated by "|", LF. Ends the program when a file cannot be written.
void WriteRegistry(std::uint32_t lines, const std::string& registryPath, const std::string& rowsPath);

}  // namespace tolvan::bench
