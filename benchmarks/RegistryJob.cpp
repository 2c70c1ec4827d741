#include "RegistryJob.h"

#include <cstdio>
#include <cstdlib>

#include "fiscal/TaxpayerRegistryImport.h"
#include "platform/files/PosixFileHelper.h"

namespace tolvan::bench {
namespace {

class NoDialogs final : public Dialogs {
 public:
  void ShowMessage(MessageIcon, std::string_view, std::string_view) override {}
  bool AskYesNo(std::string_view, std::string_view, bool defaultYes) override { return defaultYes; }
  std::optional<std::string> AskText(std::string_view, std::string_view, std::string_view) override { return {}; }
  std::optional<std::string> PickFileToOpen(std::string_view, std::string_view) override { return {}; }
  std::optional<std::string> PickFileToSave(std::string_view, std::string_view, std::string_view) override {
    return {};
  }
  std::optional<std::string> PickFolder(std::string_view, std::string_view) override { return {}; }
};

class Never final : public Interruption {
 public:
  bool Requested() const noexcept override { return false; }
};

}  // namespace

RegistryCounts ImportRegistry(DatabaseServices& database, const SqlDialect& dialect, const std::string& registryPath) {
  PosixFileHelper files("/");
  NoDialogs dialogs;
  const Never never;
  clsCallBackProgreso progress;
  TaxpayerRegistryImport import({database, dialect, files, dialogs, never, progress});
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
