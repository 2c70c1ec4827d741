#pragma once

#include <memory>
#include <string>

#include "host/XmlDocument.h"

namespace tolvan::test {

/// A machine without the library.
struct MissingXmlLibrary : XmlLibrary {
  std::unique_ptr<XmlDocument> CreateDocument() override {
    ++attempts;
    throw HostError(HostErrorKind::Configuration, "no está instalado");
  }
  void OpenDownload(std::string_view address) noexcept override { opened = address; }

  int attempts = 0;
  std::string opened;
};

}  // namespace tolvan::test
