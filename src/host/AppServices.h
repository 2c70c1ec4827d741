// What the host offers to every component beside its data: folders, the diagnostic flag, the machine-wide registry,
// small checks, and the services for files, archives, dialogs and time.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/ArchiveReader.h"
#include "host/Clock.h"
#include "host/Dialogs.h"
#include "host/FileHelper.h"
#include "host/Interruption.h"

namespace tolvan {

class AppServices {
 public:
  virtual ~AppServices() = default;

  /// Absolute, with a separator at the end.
  virtual std::string ApplicationFolder() const = 0;

  /// Whether diagnostic boxes are to be shown.
  virtual bool DiagnosticFlag() const = 0;

  /// Whole numbers of the machine-wide registry, kept across runs. A value that is missing or unreadable is the
  /// default.
  virtual std::int32_t ReadRegistry(std::string_view section, std::string_view key,
                                    std::int32_t defaultValue) const = 0;

  /// A failure to keep the value is not reported.
  virtual void WriteRegistry(std::string_view section, std::string_view key, std::int32_t value) noexcept = 0;

  /// One plausible mail address: a local part, "@", a domain of labels; no blanks, at most 254 characters.
  virtual bool IsEmailAddress(std::string_view text) const = 0;

  virtual FileHelper& Files() = 0;
  virtual ArchiveReader& Archives() = 0;
  virtual Dialogs& UserDialogs() = 0;
  virtual Clock& SystemClock() = 0;
  virtual Interruption& UserInterruption() = 0;
};

}  // namespace tolvan
