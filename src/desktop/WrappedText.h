// A text that is broken into lines as wide as its place, however that changes.
#pragma once

#include <wx/stattext.h>

#include <string_view>

namespace tolvan {

class WrappedText : public wxStaticText {
 public:
  /// `widest` is the width in pixels that the text asks for at first; a minimal width that it is given lets it become
  /// narrower.
  WrappedText(wxWindow* parent, std::string_view text, int widest);

  void SetWrapped(std::string_view text);

 private:
  void WrapTo(int width);

  wxString text_;
  int wrapped_ = 0;
};

}  // namespace tolvan
