#include "transport/clsDatosTransporteXMLSalida.h"

#include <cstdint>
#include <random>
#include <utility>

#include "transport/XMLUtil.h"
#include "transport/basComponenteXML.h"

namespace tolvan {
namespace {

/// A new random GUID (version 4 of RFC 4122) in registry form: 38 characters, braces, upper-case hexadecimal digits
/// grouped 8-4-4-4-12. Throws std::runtime_error when the system gives no random numbers.
std::string NewGuidText() {
  constexpr std::string_view pattern = "{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}";
  constexpr std::string_view digits = "0123456789ABCDEF";
  constexpr std::size_t versionPlace = 15;  // the digit that tells the version
  constexpr std::size_t variantPlace = 20;  // the digit whose two high bits tell the variant

  std::random_device source;
  std::string text(pattern);
  std::uint32_t bits = 0;
  unsigned left = 0;
  for (std::size_t place = 0; place < text.size(); ++place) {
    if (text[place] != 'x') continue;
    if (left == 0) {
      bits = source();
      left = 8;
    }
    std::size_t digit = bits & 0xFU;
    bits >>= 4U;
    --left;
    if (place == versionPlace) digit = 4;
    if (place == variantPlace) digit = 8U | (digit & 3U);
    text[place] = digits[digit];
  }
  return text;
}

}  // namespace

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
