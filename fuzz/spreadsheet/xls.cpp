// Any bytes as an .xls.
#include "ReadAll.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tolvan::ReadAll(tolvan::ReadXls, data, size);
  return 0;
}
