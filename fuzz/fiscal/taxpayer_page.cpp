// Any bytes as the lookup page: a name is found exactly where the markers stand, trimmed, and always valid text.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/Text.h"
#include "fiscal/TaxpayerLookup.h"

namespace tolvan {
namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

void Run(std::string_view page) {
  const PageReading reading = ReadTaxpayerPage(page, "101012341");
  const std::size_t start = page.find("<td>101012341</td><td>");
  Require((reading.kind == PageKind::NameShown) == !reading.name.empty());
  Require(IsValidUtf8(reading.name));
  Require(TrimBlanks(reading.name) == reading.name);
  if (start == std::string_view::npos) Require(reading.kind != PageKind::NameShown && reading.complete);
  if (reading.kind == PageKind::NotListed) Require(page.find("txtRncCed") != std::string_view::npos);
  if (reading.complete) Require(reading.name.find("</td><td>") == std::string::npos);
}

}  // namespace
}  // namespace tolvan

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tolvan::Run({reinterpret_cast<const char*>(data), size});
  return 0;
}
