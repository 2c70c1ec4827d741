// Imports of the taxpayer registry into any database, for tests.
#pragma once

#include "contract/TemporaryFolder.h"
#include "fiscal/IdentifierChecks.h"
#include "fiscal/RejectionReport.h"
#include "fiscal/TaxpayerRegistryImport.h"
#include "services/clsCallBackProgreso.h"
#include "support/FakeHost.h"
#include "support/FileContent.h"
#include "system/posix/PosixFileHelper.h"

namespace tolvan::test {

/// How an import of the registry went.
struct RegistryRun {
  bool finished = false;
  std::string message;
  RegistryCounts counts;
  std::string rejected;  ///< the report of rejected lines
};

inline RegistryRun ImportRegistry(DatabaseServices& database, const SqlDialect& dialect, const std::string& registry) {
  const TemporaryFolder folder;
  PosixFileHelper files("/");
  MissingArchives archives;
  FakeDialogs dialogs;
  FakeInterruption interruption;
  clsCallBackProgreso progress;
  RejectionList rejections;
  TaxpayerRegistryImport import({database, dialect, files, archives, dialogs, interruption, progress}, &rejections);
  WriteFile(folder.File("DGII_RNC.TXT"), registry);
  import.SetRutaArchivo(folder.File("DGII_RNC.TXT"));
  RegistryRun run;
  run.finished = import.ImportarArchivoRNC(run.message);
  run.counts = import.Counts();
  rejections.SaveTo(files, folder.File("rechazos"));
  run.rejected = ReadFile(folder.File("rechazos"));
  return run;
}

/// A registry of so many customers, in no order, with their valid identifiers and CR LF.
inline std::string MakeRegistry(int customers) {
  std::string registry;
  for (int index = 0; index < customers; ++index) {
    const std::string body = std::to_string(10'000'000 + index * 7'919 % customers);
    registry += body + *ExpectedRncCheckDigit(body) + "|EMPRESA " + std::to_string(index) + ", SRL|||\r\n";
  }
  return registry;
}

}  // namespace tolvan::test
