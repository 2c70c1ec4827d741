// Asks whether the XML library is there, and tells the user when it is not. Whether it is there is found out once per
// process: the library object remembers, and a front makes one of those.
#pragma once

#include <string>
#include <string_view>

#include "host/UserInterface.h"
#include "host/XmlDocument.h"

namespace tolvan {

class basComponenteXML {
 public:
  static constexpr std::string_view missingText =
      "No se encontró el componente Microsoft XML 6.0 para ejecutar ciertas funciones de Tolvan. Favor descargue e "
      "instale desde el sitio de Microsoft el componente Microsoft XML 6";

  /// `title` is the title of the error message, `downloadAddress` where the library's installer is to be had; empty
  /// when nobody knows. Library and dialogs outlive this object.
  basComponenteXML(XmlLibrary& library, Dialogs& dialogs, std::string title, std::string downloadAddress);

  /// Tells a missing library unless `silent`, and then asks whether to download it when `offerDownload` is set and
  /// there is an address. The question's default is no, so that nothing opens where nobody can be asked.
  bool XmlLibraryAvailable(bool silent, bool offerDownload);

  XmlLibrary& Library() { return library_; }

 private:
  void OfferDownload();

  XmlLibrary& library_;
  Dialogs& dialogs_;
  std::string title_;
  std::string downloadAddress_;
};

}  // namespace tolvan
