// The element-writing routine that every producer of a transport document uses.
#pragma once

#include <string_view>

#include "host/DatabaseServices.h"
#include "host/XmlDocument.h"

namespace tolvan::XMLUtil {

/// Appends to `parent` an element that holds exactly one text node, with an empty text too, and returns the element.
XmlNode AddElement(XmlDocument& document, XmlNode parent, std::string_view name, std::string_view value);

/// The same with a database value converted to text; NULL is the empty text.
XmlNode AddElement(XmlDocument& document, XmlNode parent, std::string_view name, const FieldValue& value);

}  // namespace tolvan::XMLUtil
