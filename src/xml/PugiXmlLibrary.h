// XML documents on pugixml, which is linked and so always there; and the module that holds them.
#pragma once

#include "host/XmlDocument.h"

namespace tolvan {

class PugiXmlLibrary final : public XmlLibrary {
 public:
  std::unique_ptr<XmlDocument> CreateDocument() override;
  void OpenDownload(std::string_view address) noexcept override;
};

/// The module: a library of its own, loaded when a transport document is first made, because linking it costs every
/// start of a program half a millisecond.
inline constexpr const char* xmlModuleFile = "libtolvan_xml.so";

}  // namespace tolvan

// The module's entry point.
extern "C" {

/// The caller owns the result, which is never null, and deletes it.
using TolvanMakeXmlLibrary = tolvan::XmlLibrary*();

TolvanMakeXmlLibrary tolvanMakeXmlLibrary;
}
