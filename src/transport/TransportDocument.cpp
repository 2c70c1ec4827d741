#include "transport/TransportDocument.h"

#include <cstdint>
#include <random>
#include <utility>

#include "base/NumberText.h"

namespace tolvan {
namespace {

/// A new random GUID (version 4 of RFC 4122) in registry form: 38 characters, braces, upper-case hexadecimal digits
/// grouped 8-4-4-4-12. Throws std::runtime_error when the system gives no random numbers.
std::string NewGuidText() {
  constexpr std::string_view pattern = "{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}";
  constexpr std::string_view digits = "0123456789ABCDEF";
  constexpr std::size_t versionPlace = 15;  // the digit that is the version
  constexpr std::size_t variantPlace = 20;  // the digit whose two high bits are the variant

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

XmlNode XMLUtil::AddElement(XmlDocument& document, XmlNode parent, std::string_view name, std::string_view value) {
  const XmlNode element = document.AppendElement(parent, name);
  document.AppendText(element, value);
  return element;
}

XmlNode XMLUtil::AddElement(XmlDocument& document, XmlNode parent, std::string_view name, const FieldValue& value) {
  return AddElement(document, parent, name, std::string_view(TextOf(value)));
}

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

std::string TransportFileName(std::string_view prefix, Date day) {
  std::string name(prefix);
  name.append(" ").append(PaddedNumber(day.Year(), 4)).append(PaddedNumber(day.Month(), 2));
  return name.append(PaddedNumber(day.Day(), 2)).append(".tolpak");
}

std::string ChooseTransportFile(std::string_view prefix, Dialogs& dialogs, const Clock& clock) {
  return dialogs
      .PickFileToSave("Guardar Archivo de Transporte", "Archivo de Transporte (*.tolpak)|*.tolpak|",
                      TransportFileName(prefix, clock.Today()))
      .value_or("");
}

}  // namespace tolvan
