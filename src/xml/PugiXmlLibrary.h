// XML documents on pugixml, which is linked and so always there.
#pragma once

#include "host/XmlDocument.h"

namespace tolvan {

class PugiXmlLibrary final : public XmlLibrary {
 public:
  std::unique_ptr<XmlDocument> CreateDocument() override;
  void OpenDownload(std::string_view address) noexcept override;
};

}  // namespace tolvan
