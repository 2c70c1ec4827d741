// The envelope of every file that goes to the collector device: the instance and class of the document, and a content
// element that the producer of the class fills.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "host/XmlDocument.h"

namespace tolvan {

class basComponenteXML;

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

}  // namespace tolvan
