// Imports of the taxpayer registry into any database, for tests.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <utility>

#include "contract/TemporaryFolder.h"
#include "fiscal/TaxpayerRegistryImport.h"
#include "fiscal/clsInfoFiscalClienteDO.h"
#include "support/FakeHost.h"
#include "support/FileContent.h"
#include "system/posix/PosixFileHelper.h"

namespace tolvan::test {

/// A user who stops the work with the n-th question.
inline FakeInterruption StopsAt(int question) {
  FakeInterruption user;
  user.questions = question;
  return user;
}

inline const FakeInterruption nobodyInterrupts;

/// What an import may have otherwise than usual.
struct RegistryRunOptions {
  std::size_t blockLines = 0;  ///< 0: as many as the engine takes
  const Interruption& stop = nobodyInterrupts;
  ArchiveReader* archives = nullptr;
  std::function<void(const RegistryCounts&)> atEveryLine{};
};

/// How an import of the registry went.
struct RegistryRun {
  bool finished = false;
  std::string message;
  RegistryImportEnd end = RegistryImportEnd::NotRun;
  RegistryCounts counts;
  std::string rejected;  ///< the report of rejected lines
  std::vector<FakeDialogs::Box> boxes;
};

/// A progress bar that only passes every step on.
struct StepBar final : ProgressBar {
  explicit StepBar(std::function<void()> each) : step(std::move(each)) {}
  void SetMin(std::int32_t) override {}
  void SetMax(std::int32_t) override {}
  void SetValue(std::int32_t) override { step(); }
  std::int32_t Max() const override { return 0; }
  std::function<void()> step;
};

inline RegistryRun ImportRegistryFile(DatabaseServices& database, const SqlDialect& dialect, const std::string& path,
                                      const RegistryRunOptions& options = {}) {
  PosixFileHelper files("/");
  MissingArchives noArchives;
  FakeDialogs dialogs;
  clsCallBackProgreso progress;
  RejectionList rejections;
  ArchiveReader& archives = options.archives != nullptr ? *options.archives : noArchives;
  TaxpayerRegistryImport import({database, dialect, files, archives, dialogs, options.stop, progress}, &rejections);
  StepBar bar([&] { options.atEveryLine(import.Counts()); });
  if (options.atEveryLine) progress.EstablecerControles(nullptr, &bar, nullptr, nullptr, nullptr);
  import.SetRutaArchivo(path);
  if (options.blockLines > 0) import.SetBlockLines(options.blockLines);
  const ActionReport report = import.Import();
  EXPECT_EQ(report.told, report.done);
  const auto result = report.DetailsAs<RegistryImportResult>();
  FakeFiles kept;
  rejections.SaveTo(kept, "rechazos");
  return {.finished = report.done,
          .message = report.text.substr(report.done ? 0 : 2),
          .end = result.end,
          .counts = result.counts,
          .rejected = kept.contents["rechazos"],
          .boxes = dialogs.boxes};
}

inline RegistryRun ImportRegistry(DatabaseServices& database, const SqlDialect& dialect, const std::string& registry,
                                  const RegistryRunOptions& options = {}) {
  const TemporaryFolder folder;
  WriteFile(folder.File("DGII_RNC.TXT"), registry);
  return ImportRegistryFile(database, dialect, folder.File("DGII_RNC.TXT"), options);
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
