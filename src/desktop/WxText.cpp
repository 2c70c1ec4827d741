#include "desktop/WxText.h"

#include "base/Text.h"

namespace tolvan {

wxString ToWx(std::string_view text) {
  wxString shown = wxString::FromUTF8(text.data(), text.size());
  if (!shown.empty() || text.empty()) return shown;
  // A path may hold bytes that are no UTF-8: better shown by another code page than not at all.
  const std::string readable = FromWindows1252(text);
  return wxString::FromUTF8(readable.data(), readable.size());
}

wxString ToWxMessage(std::string_view text) {
  wxString shown = ToWx(text);
  shown.Replace("\r\n", "\n");
  return shown.Trim(true).Trim(false);
}

std::string FromWx(const wxString& text) {
  const wxScopedCharBuffer bytes = text.utf8_str();
  return {bytes.data(), bytes.length()};
}

}  // namespace tolvan
