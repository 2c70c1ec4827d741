#pragma once

#include <memory>

#include "host/XmlDocument.h"
#include "system/posix/PosixServices.h"
#include "xml/PugiXmlLibrary.h"

namespace tolvan {

/// The XML library of the XML module, loaded when the first document is made. Without the module the library is
/// missing. Documents may outlive this object.
class DeferredXmlLibrary final : public XmlLibrary {
 public:
  std::unique_ptr<XmlDocument> CreateDocument() override;

  /// The module comes with the program: there is nothing to download.
  void OpenDownload(std::string_view /*address*/) noexcept override {}

 private:
  ModuleLoader module_{xmlModuleFile, "el módulo de XML"};
  std::unique_ptr<XmlLibrary> library_;
};

}  // namespace tolvan
