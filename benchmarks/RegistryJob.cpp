#include "RegistryJob.h"

#include <cstdio>
#include <cstdlib>

#include "NobodyThere.h"
#include "fiscal/TaxpayerRegistryImport.h"
#include "spreadsheet/ZipPackage.h"
#include "system/posix/PosixFileHelper.h"

namespace tolvan::bench {

RegistryCounts ImportRegistry(DatabaseServices& database, const SqlDialect& dialect, const std::string& registryPath) {
  PosixFileHelper files("/");
  ZipArchiveReader archives;
  NoDialogs dialogs;
  const NoInterruption never;
  clsCallBackProgreso progress;
  TaxpayerRegistryImport import({database, dialect, files, archives, dialogs, never, progress});
  import.SetRutaArchivo(registryPath);
  std::string message;
  if (!import.ImportarArchivoRNC(message)) Stop(message);
  return import.Counts();
}

void Stop(const std::string& text) {
  std::fprintf(stderr, "%s\n", text.c_str());
  std::exit(2);
}

}  // namespace tolvan::bench
