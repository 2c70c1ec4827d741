#include "import/MovilnetCode.h"

#include <array>
#include <utility>

#include "base/Text.h"
#include "import/CellCleaning.h"

namespace tolvan {
namespace {

constexpr std::size_t prefixLength = 2;

// In this order.
constexpr std::array<std::pair<std::string_view, std::string_view>, 5> shortForms{
    {{"Refurbished", "RF"}, {"EVDO", ""}, {"VERGATARIO", "VERG"}, {"ORINOQUIA", "ORI"}, {"AUYANTEPUI", "AYT"}}};

/// How many characters the longest beginning of the brand has that occurs in the model, from 2 to `most`; 0 when none
/// does. Where a beginning occurs, every shorter one does too.
std::size_t LongestBeginning(std::string_view model, std::string_view brand, std::size_t most) {
  std::size_t found = 0;
  std::size_t least = prefixLength;
  while (least <= most) {
    const std::size_t middle = least + (most - least) / 2;
    if (ContainsIgnoringCase(model, FirstCharacters(brand, middle))) {
      found = middle;
      least = middle + 1;
    } else {
      most = middle - 1;
    }
  }
  return found;
}

/// Removes the brand and its beginnings, the longest first, down to two characters.
std::string WithoutBrand(std::string model, std::string_view brand) {
  std::size_t count = LongestBeginning(model, brand, CountCharacters(brand));
  while (count > 0) {
    model = ReplaceAllIgnoringCase(model, FirstCharacters(brand, count), "");
    count = LongestBeginning(model, brand, count - 1);
  }
  return model;
}

}  // namespace

std::string MovilnetCode(std::string_view model, std::string_view brand, std::string_view type) {
  std::string name(TrimBlanks(model));
  for (const auto& [word, shortForm] : shortForms) name = ReplaceAllIgnoringCase(name, word, shortForm);
  name = ReplaceAll(WithoutBrand(std::move(name), brand), " ", "");
  const std::string kind = ContainsIgnoringCase(type, "modem") ? "M" : "T";
  const std::string prefix = ToUpper(FirstCharacters(ReplaceAll(brand, " ", ""), prefixLength));
  return CleanModelCode(kind + prefix + name);
}

std::string MovilnetDepartment(std::string_view type) {
  std::string department;
  if (ContainsIgnoringCase(type, "CDMA")) department = "CDMA";
  if (ContainsIgnoringCase(type, "GSM")) department = "GSM";
  if (ContainsIgnoringCase(type, "UMTS")) department = "GSM";
  return department;
}

}  // namespace tolvan
