// The taxpayer registry import: reads the tax authority's text file and puts every taxpayer that the customer table
// does not hold yet on file. What it makes of untidy files is written down in docs/registro-rnc.md.
//
// The work is done in blocks of lines, each kept for good before the next begins: an interruption or a failure loses
// nothing that was counted, and a second run goes on by itself because what is on file is skipped.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "fiscal/RegistryBlockWriter.h"
#include "fiscal/RegistryFile.h"
#include "fiscal/RegistryLines.h"
#include "fiscal/RegistryReport.h"
#include "host/UserInterface.h"
#include "services/ActionReport.h"
#include "services/clsCallBackProgreso.h"

namespace tolvan {

struct ComponentContext;

// How the user chooses the file, and what is said without one.
inline constexpr std::string_view registryPickerTitle = "Seleccionar Archivo de Texto RNC";
inline constexpr std::string_view registryPickerFilter = "Archivo de Texto RNC|*.txt";
inline constexpr std::string_view registryNotChosen = "Debe seleccionar primero el archivo de texto";

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

/// Those of a component's host. Opens the database at the first call; throws HostError when it cannot.
RegistryImportHost RegistryHostOf(const ComponentContext& context, Dialogs& dialogs, clsCallBackProgreso& progress);

/// How far the file was read.
enum class RegistryImportEnd {
  NotRun,         ///< no file, or it cannot be opened, or it is not the registry
  Finished,       ///< read to its end
  Interrupted,    ///< at the user's request
  FileFailed,     ///< the file cannot be read further
  DatabaseFailed  ///< the database as a whole does not take any more
};

/// The details of the import's report.
struct RegistryImportResult {
  RegistryImportEnd end = RegistryImportEnd::NotRun;
  RegistryCounts counts{};
};

class TaxpayerRegistryImport {
 public:
  /// `rejections` takes the lines that are not imported. It may be null, else it must outlive this object.
  explicit TaxpayerRegistryImport(const RegistryImportHost& host, RejectionTarget* rejections = nullptr);

  /// Lines written together. The usual number depends on the engine. At least 1.
  void SetBlockLines(std::size_t count) { blockLines_ = count; }

  const std::string& RutaArchivo() const { return path_; }
  void SetRutaArchivo(std::string path) { path_ = std::move(path); }

  /// Asks the user for the file; a cancelled question leaves the path alone.
  void ElegirArchivo();

  /// Imports the file, chosen first when there is none yet: the registry's text, or the zip that holds it. True when it
  /// was read to its end; the counts are then shown in a box. A file without a single line that holds a "|", though
  /// with others, is not the registry. Otherwise `message` says why, with the counts so far once lines were read.
  /// Throws nothing but what the target of the rejections throws.
  bool ImportarArchivoRNC(std::string& message);

  /// The same, with its report: the user has been told when it is done, and the details are a RegistryImportResult.
  ActionReport Import();

  /// For the host, through the COM library: puts one taxpayer on file unless its code is there; `inserted` tells
  /// whether. True when the identifier is valid and the statement ran. `countryCode` is not used: the Dominican rules
  /// always apply. Throws HostError when it is not the statement but the database that fails.
  bool RegistrarClienteRNC(std::string_view identifier, std::string_view name, std::string_view countryCode,
                           bool& inserted, bool active);

  /// Of the import that runs, or else of the last one.
  const RegistryCounts& Counts() const { return counts_; }

 private:
  bool Refuse(std::string& message, std::string text) const;
  std::string RunOnFile(RegistryFile& file);
  void ReadLines(RegistryFile& file);
  bool HasNoRegistryLine() const;
  void TakeLine(const RegistryLine& line, bool utf8);
  void WriteBlock();
  void CountBlock();
  void Reject(std::uint32_t place, const BlockLine& line);
  void ShowCounts() const;
  std::string CountsText() const;

  RegistryImportHost host_;
  RejectionTarget* rejections_;
  std::size_t blockLines_;
  std::string path_;
  RegistryCounts counts_;
  RegistryImportEnd end_ = RegistryImportEnd::NotRun;
  RegistryBlockWriter writer_;
  RegistryBlock block_;
  std::string identifier_;  // of the line at hand; its memory is used again
};

}  // namespace tolvan
