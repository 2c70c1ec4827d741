// The XML library of the machine, which on some systems may be missing. A front makes one object of it per process.
#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "host/XmlDocument.h"

namespace tolvan {

class XmlLibrary {
 public:
  virtual ~XmlLibrary() = default;

  /// Whether documents can be made. The first call tries to make one; later calls give the same answer without trying.
  bool Available() noexcept;

  /// Why documents cannot be made, as far as it is known. Nothing while they can.
  const std::optional<HostError>& Failure() const noexcept { return failure_; }

  /// An empty document. Throws when the library is missing or fails. Never returns null.
  virtual std::unique_ptr<XmlDocument> CreateDocument() = 0;

  /// Opens the download address of the library's installer for the user. A failure is ignored.
  virtual void OpenDownload(std::string_view address) noexcept = 0;

 private:
  bool Try() noexcept;

  std::optional<bool> available_;
  std::optional<HostError> failure_;
};

}  // namespace tolvan
