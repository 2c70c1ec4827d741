#pragma once

#include <string>

#include "host/HostContext.h"
#include "store/DeferredArchiveReader.h"
#include "store/HostFront.h"
#include "system/SettingsAndLayouts.h"
#include "system/posix/PosixFileHelper.h"

namespace tolvan {

/// The services of a host that is described by its configuration file.
class ConfiguredAppServices final : public AppServices {
 public:
  /// `applicationFolder` and `layoutFile` are absolute.
  ConfiguredAppServices(const std::string& applicationFolder, FileGuard guard, bool diagnostic, std::string layoutFile,
                        const HostFront& front);

  std::string ApplicationFolder() const override { return files_.NormalizeFolder({}); }
  bool DiagnosticFlag() const override { return diagnostic_; }
  std::int32_t ReadLayout(std::string_view section, std::string_view key, std::int32_t defaultValue) const override;
  void WriteLayout(std::string_view section, std::string_view key, std::int32_t value) noexcept override;
  bool IsEmailAddress(std::string_view text) const override;
  FileHelper& Files() override { return files_; }
  ArchiveReader& Archives() override { return archives_; }
  Dialogs& UserDialogs() override { return front_.dialogs; }
  Clock& SystemClock() override { return front_.clock; }
  Interruption& UserInterruption() override { return front_.interruption; }

 private:
  HostFront front_;
  bool diagnostic_;
  PosixFileHelper files_;
  DeferredArchiveReader archives_;
  mutable LayoutStore layouts_;  // reading may put a damaged file aside
};

}  // namespace tolvan
