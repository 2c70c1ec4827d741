// Any bytes as an .xlsx.
#include "ReadAll.h"
#include "spreadsheet/XlsxReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tolvan::ReadAll<tolvan::XlsxReader>(data, size);
  return 0;
}
