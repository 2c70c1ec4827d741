// Any bytes as an .xlsx.
#include "ReadAll.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tolvan::ReadAll(tolvan::ReadXlsx, data, size);
  return 0;
}
