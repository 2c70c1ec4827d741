// Text as it stands between two tags of an XML 1.0 document.
#pragma once

#include <string>
#include <string_view>

namespace tolvan {

/// Whether the text is a name of XML 1.0. Beyond ASCII every character counts as a letter.
bool IsXmlName(std::string_view text);

/// Appends `text` with the characters of markup written as entities, a carriage return as a character reference (a
/// reader would turn it into a line feed), and everything that XML 1.0 does not allow as U+FFFD, one for each character
/// or byte.
void AppendXmlText(std::string& out, std::string_view text);

}  // namespace tolvan
