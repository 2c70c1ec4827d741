// The document in which everything goes to the collector device: the library that makes it, its envelope with the
// instance and class of the document and a content element that the producer of the class fills, the routine that
// writes elements into it, and the choice of its file.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/Calendar.h"
#include "host/DatabaseServices.h"
#include "host/SystemServices.h"
#include "host/UserInterface.h"
#include "host/XmlDocument.h"

namespace tolvan {

/// Asks whether the XML library is there, and tells the user when it is not. Whether it is there is found out once per
/// process: the library object remembers, and a front makes one of those.
class basComponenteXML {
 public:
  static constexpr std::string_view missingText =
      "No se encontró el componente Microsoft XML 6.0 para ejecutar ciertas funciones de Tolvan. Favor descargue e "
      "instale desde el sitio de Microsoft el componente Microsoft XML 6";

  /// `title` is the title of the error message, `downloadAddress` where the library's installer can be found, empty
  /// where that is not known. Library and dialogs outlive this object.
  basComponenteXML(XmlLibrary& library, Dialogs& dialogs, std::string title, std::string downloadAddress);

  /// Tells the user of a missing library unless `silent`, and then asks whether to download it when `offerDownload` is
  /// set and there is an address. The question's default is no, so that nothing opens where nobody can be asked. Only
  /// the host, through the COM library, sets either.
  bool XmlLibraryAvailable(bool silent, bool offerDownload);

  XmlLibrary& Library() { return library_; }

 private:
  void OfferDownload();

  XmlLibrary& library_;
  Dialogs& dialogs_;
  std::string title_;
  std::string downloadAddress_;
};

namespace XMLUtil {

/// Appends to `parent` an element that holds exactly one text node, with an empty text too, and returns the element.
XmlNode AddElement(XmlDocument& document, XmlNode parent, std::string_view name, std::string_view value);

/// The same with a database value converted to text; NULL is the empty text. For the host, through the COM library: the
/// lists of this program are written while they are read.
XmlNode AddElement(XmlDocument& document, XmlNode parent, std::string_view name, const FieldValue& value);

}  // namespace XMLUtil

/// The envelope.
class clsDatosTransporteXMLSalida {
 public:
  /// `component` must outlive this object. The instance is made here and is that of every document made later.
  explicit clsDatosTransporteXMLSalida(basComponenteXML& component);

  /// Whether there is a document with anything in it.
  bool DocumentoCargado() const;

  /// The class of the last document made; empty before.
  const std::string& Clase() const { return class_; }

  /// Makes a new envelope in the place of an earlier one. False, and nothing changed, when `className` is empty or the
  /// XML library is missing (the user is told). Throws HostError when the library fails; then nothing changed either.
  bool NuevoDocumento(std::string_view className);

  /// The element "Contenido"; nothing without a document.
  std::optional<XmlNode> NodoContenido() const;

  /// The document, owned by this object; null without one.
  XmlDocument* XD() const;

  /// The identifier that travels as "Instancia", in registry form.
  const std::string& Instancia() const { return instance_; }

 private:
  void BuildEnvelope(XmlDocument& document, std::string_view className) const;

  basComponenteXML& component_;
  std::string instance_;
  std::string class_;
  std::unique_ptr<XmlDocument> document_;
};

/// "Articulos 20261115.tolpak" for the prefix "Articulos" and 15 November 2026.
std::string TransportFileName(std::string_view prefix, Date day);

/// Asks the user where to save a transport file, proposing TransportFileName of today. Empty when the user cancels.
std::string ChooseTransportFile(std::string_view prefix, Dialogs& dialogs, const Clock& clock);

}  // namespace tolvan
