// Any bytes as an .xls.
#include "ReadAll.h"
#include "spreadsheet/XlsReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tolvan::ReadAll<tolvan::XlsReader>(data, size);
  return 0;
}
