#include "desktop/WrappedText.h"

#include <wx/window.h>

#include "desktop/WxText.h"

namespace tolvan {

WrappedText::WrappedText(wxWindow* parent, std::string_view text, int widest)
    : wxStaticText(parent, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize, wxST_NO_AUTORESIZE),
      text_(ToWxMessage(text)) {
  WrapTo(widest);
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    event.Skip();
    const int width = event.GetSize().x;
    // The new height is asked for once the layout that is going on has ended.
    if (width > 1 && width != wrapped_) CallAfter([this, width] { WrapTo(width); });
  });
}

void WrappedText::SetWrapped(std::string_view text) {
  text_ = ToWxMessage(text);
  WrapTo(wrapped_);
}

void WrappedText::WrapTo(int width) {
  wrapped_ = width;
  SetLabelText(text_);
  Wrap(width);
  InvalidateBestSize();
  const wxSize size(GetMinWidth(), GetBestSize().y);
  if (size == GetMinSize()) return;
  SetMinSize(size);
  if (GetParent()->GetSizer() != nullptr) GetParent()->Layout();
}

}  // namespace tolvan
