// What an import needs, on a machine that has none of it: an import that gets as far as reading ends there.
#pragma once

#include "host/SpreadsheetApplication.h"
#include "host/SystemServices.h"
#include "ui/ImportLauncher.h"

namespace tolvan::test {

struct MissingSpreadsheets : SpreadsheetApplication {
  void Start() override { throw HostError(HostErrorKind::Unreachable, "no instalado"); }
  std::unique_ptr<WorksheetReader> OpenFirstWorksheet(std::string_view, const Interruption&) override { return {}; }
  std::unique_ptr<NewWorkbook> CreateFromTemplate(std::string_view, std::uint32_t) override { return {}; }
};

struct MissingHashes : HashService {
  std::string Md5(std::string_view) const override { return {}; }
};

struct MissingTools {
  MissingSpreadsheets spreadsheets;
  MissingHashes hashes;
  ImportTools imports{spreadsheets, hashes, {}};
};

}  // namespace tolvan::test
