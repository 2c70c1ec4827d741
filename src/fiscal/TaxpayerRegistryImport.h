// The taxpayer registry import: reads the tax authority's text file and puts every taxpayer that the customer table
// does not hold yet on file. What it makes of untidy files is written down in docs/registro-rnc.md.
//
// The work is done in batches, each kept for good before the next begins: an interruption or a failure loses nothing
// that was counted, and a second run goes on by itself because what is on file is skipped.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "fiscal/RegistryBatchWriter.h"
#include "fiscal/RegistryCounts.h"
#include "fiscal/RegistryFile.h"
#include "fiscal/RegistryLineReader.h"
#include "host/UserInterface.h"
#include "services/clsCallBackProgreso.h"

namespace tolvan {

/// What the import works with. All of it must outlive the import.
struct RegistryImportHost {
  DatabaseServices& database;
  const SqlDialect& dialect;
  FileHelper& files;
  ArchiveReader& archives;
  Dialogs& dialogs;
  const Interruption& interruption;
  clsCallBackProgreso& progress;
};

enum class RegistryImportEnd {
  NotRun,         ///< no file, or it cannot be opened, or it is not the registry
  Finished,       ///< read to its end
  Interrupted,    ///< at the user's request
  FileFailed,     ///< the file cannot be read further
  DatabaseFailed  ///< the database as a whole does not take any more
};

class TaxpayerRegistryImport {
 public:
  /// `observer` may be null.
  explicit TaxpayerRegistryImport(const RegistryImportHost& host, RegistryObserver* observer = nullptr);

  /// Lines written together. The usual number depends on the engine. At least 1.
  void SetBatchLines(std::size_t count) { batchLines_ = count; }

  const std::string& RutaArchivo() const { return path_; }
  void SetRutaArchivo(std::string path) { path_ = std::move(path); }

  /// Asks the user for the file; a cancelled question leaves the path alone.
  void ElegirArchivo();

  /// Imports the file, chosen first when there is none yet: the registry's text, or the zip that holds it. True when it
  /// was read to its end; the counts are then shown in a box. A file without a single line that holds a "|", though
  /// with others, is not the registry. Otherwise `message` says why, with the counts so far once lines were read.
  /// Throws nothing but what the observer throws.
  bool ImportarArchivoRNC(std::string& message);

  /// Puts one taxpayer on file unless its code is there; `inserted` tells whether. True when the identifier is valid
  /// and the statement ran. `countryCode` is not used: the Dominican rules always apply. Throws HostError when it is
  /// not the statement but the database that fails.
  bool RegistrarClienteRNC(std::string_view identifier, std::string_view name, std::string_view countryCode,
                           bool& inserted, bool active);

  /// Of the last import, also while it runs.
  const RegistryCounts& Counts() const { return counts_; }
  RegistryImportEnd End() const { return end_; }

 private:
  bool Refuse(std::string& message, std::string text) const;
  std::string RunOnFile(RegistryFile& file);
  void ReadLines(RegistryFile& file);
  bool HasNoRegistryLine() const;
  void TakeLine(const RegistryLine& line, bool utf8);
  void WriteBatch();
  void CountBatch();
  void Reject(std::uint32_t place, const BatchLine& line);
  void ShowCounts() const;
  std::string CountsText() const;

  RegistryImportHost host_;
  RegistryObserver* observer_;
  std::size_t batchLines_;
  std::string path_;
  RegistryCounts counts_;
  RegistryImportEnd end_ = RegistryImportEnd::NotRun;
  RegistryBatchWriter writer_;
  RegistryBatch batch_;
  std::string identifier_;  // of the line at hand; its memory is used again
};

}  // namespace tolvan
