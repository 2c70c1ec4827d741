// Synthetic taxpayers in the form of the published registry: identifiers with their check digits, eleven fields, CR LF,
// Windows-1252. The same for the same numbers on every machine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "cli/demo/DemoRandom.h"

namespace tolvan {

struct DemoTaxpayer {
  std::string code;  ///< normalised; nine digits of a company or eleven of a person
  std::string name;
};

/// Different numbers below 2 million give different codes; two in five are companies.
DemoTaxpayer MakeDemoTaxpayer(std::uint32_t number, DemoRandom& random);

/// The line of the registry with its end.
std::string RegistryLineOf(const DemoTaxpayer& taxpayer, DemoRandom& random);

/// The content of a registry file.
std::string MakeDemoRegistry(std::uint32_t lines);

}  // namespace tolvan
