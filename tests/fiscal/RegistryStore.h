// A customer table in a real database for the tests of the registry import.
#pragma once

#include <string>

#include "database/sql/SqlDialects.h"
#include "database/sql/SqlScript.h"
#include "database/sqlite/SqliteDatabaseServices.h"
#include "spreadsheet/ZipPackage.h"
#include "support/RegistryRun.h"

namespace tolvan::test {

struct RegistryStore {
  explicit RegistryStore(const SqliteOptions& options = {.path = ":memory:"}) : database(options) {
    RunSqlScript(database, data::sqliteSchema);
  }

  /// An import over this store that tells its user in `dialogs`.
  TaxpayerRegistryImport Importer() {
    return TaxpayerRegistryImport({database, dialect, files, archives, dialogs, nobodyInterrupts, progress});
  }

  /// Imports these bytes; how it went is in `run`.
  bool Import(const std::string& content, std::size_t blockLines = 0, const Interruption& stop = nobodyInterrupts) {
    run = ImportRegistry(database, dialect, content, {.blockLines = blockLines, .stop = stop, .archives = &archives});
    return run.finished;
  }

  /// "new not-registered errors lines".
  std::string Counts() const {
    return std::to_string(run.counts.newCustomers) + " " + std::to_string(run.counts.notRegistered) + " " +
           std::to_string(run.counts.errors) + " " + std::to_string(run.counts.lines);
  }

  /// Every row, "code=name" with ";" between, in the order of the codes.
  std::string Table() {
    return Ask(
        "SELECT group_concat(row, ';') FROM (SELECT idCliente || '=' || Descripcion AS row FROM Clientes ORDER "
        "BY idCliente)");
  }

  /// The first field of the first row of a query.
  std::string Ask(const std::string& query) { return TextOf(database.OpenRecordset(SqlStatement(query))->Value(0)); }

  SqliteDatabaseServices database;
  SqliteDialect dialect;
  PosixFileHelper files{"/"};
  ZipArchiveReader archives;
  FakeDialogs dialogs;
  clsCallBackProgreso progress;
  RegistryRun run;
};

}  // namespace tolvan::test
