#include "transport/basComponenteXML.h"

#include <utility>

namespace tolvan {

basComponenteXML::basComponenteXML(XmlLibrary& library, Dialogs& dialogs, std::string title,
                                   std::string downloadAddress)
    : library_(library), dialogs_(dialogs), title_(std::move(title)), downloadAddress_(std::move(downloadAddress)) {}

bool basComponenteXML::XmlLibraryAvailable(bool silent, bool offerDownload) {
  if (library_.Available()) return true;
  if (!silent) {
    dialogs_.ShowMessage(MessageIcon::Exclamation, title_, missingText);
    if (offerDownload && !downloadAddress_.empty()) OfferDownload();
  }
  return false;
}

void basComponenteXML::OfferDownload() {
  const std::string question =
      "Para esta función se requiere instalar el siguiente componente en este equipo:\r\n\r\n"
      "Microsoft XML versión 6\r\n\r\n"
      "Puede instalarlo desde la siguiente dirección de descarga:\r\n\r\n" +
      downloadAddress_ + "\r\n\r\n¿Desea descargar este archivo ahora?";
  if (dialogs_.AskYesNo("Se necesita un componente", question, false)) library_.OpenDownload(downloadAddress_);
}

}  // namespace tolvan
