// What the demo store sells: made-up brands and ordinary goods, combined into a few hundred items.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/Currency.h"

namespace tolvan {

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

}  // namespace tolvan
