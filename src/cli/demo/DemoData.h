// The made-up data of the demo store, the same on every machine: goods combined into a few hundred items, and taxpayers
// in the form of the published registry.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/Currency.h"

namespace tolvan {

/// A small generator whose sequence is the same on every machine, for content that must be the same for the same day.
/// The algorithm is splitmix64.
class DemoRandom {
 public:
  explicit DemoRandom(std::uint64_t seed) : state_(seed) {}

  /// Evenly from 0 to `bound` - 1; `bound` is above 0. The bias of the remainder does not matter here.
  std::uint32_t Below(std::uint32_t bound) { return static_cast<std::uint32_t>(Next() % bound); }

  /// True `percent` times out of a hundred.
  bool Chance(std::uint32_t percent) { return Below(100) < percent; }

 private:
  std::uint64_t Next() {
    std::uint64_t value = state_ += 0x9E3779B97F4A7C15;
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EB;
    return value ^ (value >> 31);
  }

  std::uint64_t state_;
};

struct DemoBrand {
  std::string code;
  std::string description;
};

struct DemoDepartment {
  std::string code;
  std::string description;
  bool needsSerials = false;
};

struct DemoItem {
  std::string code;         ///< capitals and digits only, so that no cleaning changes it
  std::string description;  ///< capitals, without hyphens, slashes and points
  std::string brand;
  std::string department;
  int taxClass = 1;
  bool exempt = false;
  Currency cost;
  Currency priceWithTax;
  int boxOf = 0;  ///< pieces in its alternate unit "CAJA"; 0 for none
};

struct DemoCatalogue {
  std::vector<DemoBrand> brands;
  std::vector<DemoDepartment> departments;
  std::vector<DemoItem> items;
};

/// Always the same.
DemoCatalogue MakeDemoCatalogue();

/// The thirteen digits of a barcode: twelve, and the check digit that makes the weighted sum (1 and 3 in turn) a
/// multiple of ten.
std::string DemoBarcode(std::string_view twelveDigits);

/// A synthetic taxpayer; the identifier carries its check digit.
struct DemoTaxpayer {
  std::string code;  ///< normalised; nine digits of a company or eleven of a person
  std::string name;
};

/// Different numbers below 2 million give different codes; two in five are companies.
DemoTaxpayer MakeDemoTaxpayer(std::uint32_t number, DemoRandom& random);

/// The line of the registry: eleven fields in Windows-1252, and CR LF.
std::string RegistryLineOf(const DemoTaxpayer& taxpayer, DemoRandom& random);

/// The content of a registry file.
std::string MakeDemoRegistry(std::uint32_t lines);

}  // namespace tolvan
