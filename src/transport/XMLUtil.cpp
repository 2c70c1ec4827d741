#include "transport/XMLUtil.h"

namespace tolvan::XMLUtil {

XmlNode AddElement(XmlDocument& document, XmlNode parent, std::string_view name, std::string_view value) {
  const XmlNode element = document.AppendElement(parent, name);
  document.AppendText(element, value);
  return element;
}

XmlNode AddElement(XmlDocument& document, XmlNode parent, std::string_view name, const FieldValue& value) {
  return AddElement(document, parent, name, std::string_view(TextOf(value)));
}

}  // namespace tolvan::XMLUtil
