#include "desktop/MessageWindow.h"

#include <wx/artprov.h>
#include <wx/button.h>
#include <wx/clipbrd.h>
#include <wx/dcclient.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/textctrl.h>

#include "desktop/ControlName.h"
#include "desktop/TextScale.h"

namespace tolvan {
namespace {

/// A text box is as large as its text, as far as that is reasonable; longer texts are scrolled.
wxSize SizeOfText(const wxTextCtrl& box, const wxString& text) {
  const wxSize largest = ScaledToText(box, wxSize(560, 340));
  const wxSize smallest = ScaledToText(box, wxSize(240, 24));
  wxClientDC dc(wxConstCast(&box, wxTextCtrl));
  dc.SetFont(box.GetFont());
  const wxSize natural = dc.GetMultiLineTextExtent(text);
  const int margin = box.FromDIP(24);
  const int width = wxClip(natural.x + margin, smallest.x, largest.x);
  int lines = 0;
  for (const wxString& line : wxSplit(text, '\n', '\0')) {
    lines += 1 + dc.GetTextExtent(line).x / (width - margin + 1);
  }
  return {width, wxClip((lines + 1) * dc.GetCharHeight() + box.FromDIP(6), smallest.y, largest.y)};
}

}  // namespace

MessageWindow::MessageWindow(wxWindow* parent, MessageIcon icon, const wxString& title, const wxString& text,
                             Buttons buttons, bool defaultYes)
    : wxDialog(parent, wxID_ANY, title), text_(text) {
  NameControl(*this, "mensaje");
  auto* const content = new wxBoxSizer(wxHORIZONTAL);
  if (icon != MessageIcon::None) {
    const wxArtID art = icon == MessageIcon::Exclamation ? wxART_WARNING : wxART_INFORMATION;
    auto* const picture = new wxStaticBitmap(this, wxID_ANY, wxArtProvider::GetBitmapBundle(art, wxART_MESSAGE_BOX));
    NameControl(*picture, icon == MessageIcon::Exclamation ? "iconoAdvertencia" : "iconoInformacion",
                icon == MessageIcon::Exclamation ? "Advertencia" : "Información");
    content->Add(picture, wxSizerFlags().Border(wxRIGHT, FromDIP(12)));
  }
  content->Add(MakeText(text), wxSizerFlags(1).Expand());
  auto* const all = new wxBoxSizer(wxVERTICAL);
  all->Add(content, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(12)));
  all->Add(MakeButtons(buttons, defaultYes), wxSizerFlags().Right().Border(wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(12)));
  SetSizerAndFit(all);
  CentreOnParent();
  Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    const auto* box = dynamic_cast<wxTextCtrl*>(FindFocus());
    const bool partSelected = box != nullptr && !box->GetStringSelection().empty();
    if (event.GetKeyCode() == 'C' && event.ControlDown() && !partSelected) {
      CopyText();
    } else {
      event.Skip();
    }
  });
}

wxWindow* MessageWindow::MakeText(const wxString& text) {
  auto* const box = new wxTextCtrl(this, wxID_ANY, text, wxDefaultPosition, wxDefaultSize,
                                   wxTE_MULTILINE | wxTE_READONLY | wxTE_NO_VSCROLL | wxBORDER_NONE);
  box->SetBackgroundColour(GetBackgroundColour());
  NameControl(*box, "textoMensaje", "Mensaje");
  const wxSize size = SizeOfText(*box, text);
  box->SetMinSize(size);
  return box;
}

wxSizer* MessageWindow::MakeButtons(Buttons buttons, bool defaultYes) {
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  const auto add = [&](int id, const wxString& label, const char* name) {
    auto* const button = new wxButton(this, id, label);
    NameControl(*button, name);
    button->Bind(wxEVT_BUTTON, [this, id](wxCommandEvent&) { EndModal(id); });
    row->Add(button, wxSizerFlags().Border(wxLEFT, FromDIP(8)));
    return button;
  };
  wxButton* first = nullptr;
  if (buttons == Buttons::Accept) {
    first = add(wxID_OK, wxString::FromUTF8("&Aceptar"), "bMensajeAceptar");
    SetEscapeId(wxID_OK);
  } else {
    wxButton* const yes = add(wxID_YES, wxString::FromUTF8("&Sí"), "bMensajeSi");
    wxButton* const no = add(wxID_NO, "&No", "bMensajeNo");
    first = defaultYes ? yes : no;
    SetEscapeId(wxID_NO);
  }
  first->SetDefault();
  first->SetFocus();
  return row;
}

void MessageWindow::CopyText() const {
  wxClipboardLocker lock;
  if (!lock || !wxTheClipboard->SetData(new wxTextDataObject(text_))) return;
  wxTheClipboard->Flush();  // so that it can be pasted when this program has ended
}

}  // namespace tolvan
