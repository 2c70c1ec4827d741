// Texts between the component (UTF-8, CR LF between lines) and the toolkit.
#pragma once

#include <wx/string.h>

#include <string>
#include <string_view>

namespace tolvan {

wxString ToWx(std::string_view text);

/// For what people read: CR LF becomes one line end, and those at both ends are dropped.
wxString ToWxMessage(std::string_view text);

std::string FromWx(const wxString& text);

}  // namespace tolvan
