#include "transport/clsDatosTransporteXMLSalida.h"

#include <utility>

#include "services/Guid.h"
#include "transport/XMLUtil.h"
#include "transport/basComponenteXML.h"

namespace tolvan {

clsDatosTransporteXMLSalida::clsDatosTransporteXMLSalida(basComponenteXML& component)
    : component_(component), instance_(NewGuidText()) {}

bool clsDatosTransporteXMLSalida::DocumentoCargado() const {
  return document_ && document_->HasChildren();
}

bool clsDatosTransporteXMLSalida::NuevoDocumento(std::string_view className) {
  if (className.empty() || !component_.XmlLibraryAvailable(false, false)) return false;
  std::string newClass(className);
  std::unique_ptr<XmlDocument> document = component_.Library().CreateDocument();
  BuildEnvelope(*document, newClass);
  document_ = std::move(document);
  class_ = std::move(newClass);
  return true;
}

void clsDatosTransporteXMLSalida::BuildEnvelope(XmlDocument& document, std::string_view className) const {
  document.AppendProcessingInstruction("xml", "");
  const XmlNode root = document.AppendElement(document.Top(), "TransporteTolvanSystems");
  const XmlNode meta = document.AppendElement(root, "Meta");
  XMLUtil::AddElement(document, meta, "Instancia", std::string_view(instance_));
  XMLUtil::AddElement(document, meta, "Clase", className);
  document.AppendElement(root, "Contenido");
}

std::optional<XmlNode> clsDatosTransporteXMLSalida::NodoContenido() const {
  if (!DocumentoCargado()) return std::nullopt;
  const std::optional<XmlNode> root = document_->DocumentElement();
  if (!root) return std::nullopt;
  return document_->SelectSingleNode(*root, "Contenido");
}

XmlDocument* clsDatosTransporteXMLSalida::XD() const {
  return DocumentoCargado() ? document_.get() : nullptr;
}

}  // namespace tolvan
