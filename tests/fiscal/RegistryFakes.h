// What the tests of the registry import stand on: an input in memory, a user who interrupts, and a customer
// table in a real database file.
#pragma once

#include <limits>
#include <string>
#include <vector>

#include "contract/TemporaryFolder.h"
#include "database/sql/SqlDialects.h"
#include "database/sql/SqlScript.h"
#include "database/sqlite/SqliteDatabaseServices.h"
#include "fiscal/TaxpayerRegistryImport.h"
#include "spreadsheet/ZipPackage.h"
#include "support/FakeHost.h"
#include "support/FileContent.h"
#include "system/posix/PosixFileHelper.h"

namespace tolvan::data {}

namespace tolvan::test {

/// Asks for the stop at the n-th question, and at every one after it.
class CountdownInterruption final : public Interruption {
 public:
  explicit CountdownInterruption(int questions) : left_(questions) {}
  bool Requested() const noexcept override { return left_ == 0 || --left_ == 0; }

 private:
  mutable int left_;
};

inline const CountdownInterruption nobodyInterrupts(std::numeric_limits<int>::max());

/// Writes down the lines that were not taken: "3:1" is line 3 with the first kind after Skipped.
class RecordingObserver : public RegistryObserver {
 public:
  void LineRejected(const Rejection& rejection) override {
    rejected += (rejected.empty() ? "" : " ") + std::to_string(rejection.line) + ":" +
                std::to_string(static_cast<int>(rejection.kind));
  }
  void BatchKept(const RegistryCounts&) override {}
  std::string rejected;
};

/// A store with its customer table and everything an import needs.
class Store {
 public:
  explicit Store(const SqliteOptions& options) : database(options) { RunSqlScript(database, data::sqliteSchema); }
  Store() : Store(SqliteOptions{.path = ":memory:"}) {}

  /// Imports these bytes. The message of a failed import is put into `message`.
  bool Import(const std::string& content, std::size_t batchLines = 1'000'000,
              const Interruption& stop = nobodyInterrupts) {
    observer = {};
    TaxpayerRegistryImport import({database, dialect, files, archives, dialogs, stop, progress}, &observer);
    const std::string path = folder.File("DGII_RNC.TXT");
    WriteFile(path, content);
    import.SetRutaArchivo(path);
    import.SetBatchLines(batchLines);
    const bool done = import.ImportarArchivoRNC(message);
    counts = import.Counts();
    end = import.End();
    return done;
  }

  /// "new not-registered errors lines".
  std::string CountsText() const {
    return std::to_string(counts.newCustomers) + " " + std::to_string(counts.notRegistered) + " " +
           std::to_string(counts.errors) + " " + std::to_string(counts.lines);
  }

  /// Every row, "code=name" with ";" between, in the order of the codes.
  std::string Table() {
    std::string text;
    const auto rows = database.OpenRecordset(SqlStatement("SELECT * FROM Clientes ORDER BY idCliente"));
    for (; !rows->AtEnd(); rows->MoveNext()) {
      if (!text.empty()) text += ';';
      text += TextOf(rows->Value("idCliente")) + "=" + TextOf(rows->Value("Descripcion"));
    }
    return text;
  }

  /// The first field of the first row of a query.
  std::string Ask(const std::string& query) { return TextOf(database.OpenRecordset(SqlStatement(query))->Value(0)); }

  TemporaryFolder folder;
  SqliteDatabaseServices database;
  SqliteDialect dialect;
  PosixFileHelper files{"/"};
  ZipArchiveReader archives;
  FakeDialogs dialogs;
  clsCallBackProgreso progress;
  RecordingObserver observer;
  RegistryCounts counts;
  RegistryImportEnd end = RegistryImportEnd::NotRun;
  std::string message;
};

}  // namespace tolvan::test
