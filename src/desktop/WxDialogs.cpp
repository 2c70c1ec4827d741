#include "desktop/WxDialogs.h"

#include <wx/artprov.h>
#include <wx/button.h>
#include <wx/clipbrd.h>
#include <wx/dcclient.h>
#include <wx/dirdlg.h>
#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <cctype>
#include <iostream>

#include "base/Text.h"
#include "desktop/Controls.h"
#include "desktop/WindowParts.h"

namespace tolvan {
namespace {

/// Follows what the component asks for: content decides what a file is, so any name can be chosen.
constexpr std::string_view allFiles = "|Todos los archivos|*";

std::optional<std::string> Pick(wxFileDialog& dialog) {
  if (dialog.ShowModal() != wxID_OK) return std::nullopt;
  return FromWx(dialog.GetPath());
}

/// The extension that a filter's first pattern asks for, such as ".tolpak"; empty when it asks for none.
std::string ExtensionOf(std::string_view filter) {
  const std::vector<std::string_view> parts = Split(filter, '|');
  if (parts.size() < 2 || !parts[1].starts_with("*.")) return {};
  return std::string(parts[1].substr(1, parts[1].find(';') - 1));
}

/// A text box is as large as its text, within reason; longer texts are scrolled.
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

/// A message box whose text can be selected and copied: with the mouse, or whole with Ctrl-C.
class MessageWindow : public wxDialog {
 public:
  enum class Buttons { Accept, YesNo };

  MessageWindow(wxWindow* parent, MessageIcon icon, const wxString& title, const wxString& text, Buttons buttons,
                bool defaultYes = true);

 private:
  wxWindow* MakeText(const wxString& text);
  wxSizer* MakeButtons(Buttons buttons, bool defaultYes);
  void CopyText() const;

  wxString text_;
};

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

/// The input box: a prompt, a line of text, accept and cancel.
class TextQuestion : public wxDialog {
 public:
  TextQuestion(wxWindow* parent, const wxString& title, const wxString& prompt, const wxString& initial);

  wxString Answer() const;

 private:
  wxTextCtrl* answer_;
};

TextQuestion::TextQuestion(wxWindow* parent, const wxString& title, const wxString& prompt, const wxString& initial)
    : wxDialog(parent, wxID_ANY, title) {
  NameControl(*this, "pregunta");
  auto* const label = new wxStaticText(this, wxID_ANY, {});
  label->SetLabelText(prompt);
  label->Wrap(WidthScaledToText(*this, 460));
  answer_ = new wxTextCtrl(this, wxID_ANY, initial);
  FitHeight(*answer_);
  NameControl(*answer_, "txtRespuesta", FromWx(prompt));
  auto* const all = new wxBoxSizer(wxVERTICAL);
  all->Add(label, wxSizerFlags().Border(wxALL, FromDIP(12)));
  all->Add(answer_, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, FromDIP(12)));
  AddDialogButtons(*this, *all, "bPreguntaAceptar", "bPreguntaCancelar");
  SetSizerAndFit(all);
  CentreOnParent();
  answer_->SelectAll();
  answer_->SetFocus();
}

wxString TextQuestion::Answer() const {
  return answer_->GetValue();
}

}  // namespace

std::string FilterForBothCases(std::string_view filter) {
  std::string both;
  bool pattern = false;
  for (const char each : filter) {
    if (each == '|') pattern = !pattern;
    if (pattern && std::isalpha(static_cast<unsigned char>(each)) != 0) {
      both.append("[").append(ToLower(std::string(1, each))).append(ToUpper(std::string(1, each))).append("]");
    } else {
      both += each;
    }
  }
  if (both.ends_with('|')) both.pop_back();
  return both;
}

void WxDialogs::BeginIn(std::vector<std::string> openFolders, std::vector<std::string> saveFolders) {
  openFolders_ = std::move(openFolders);
  saveFolders_ = std::move(saveFolders);
}

std::string WxDialogs::FirstFolder(const std::vector<std::string>& folders) const {
  if (wxDirExists(ToWx(lastFolder_))) return lastFolder_;
  for (const std::string& each : folders) {
    if (wxDirExists(ToWx(each))) return each;
  }
  return {};
}

std::optional<std::string> WxDialogs::Used(std::optional<std::string> path) {
  if (path) lastFolder_ = FromWx(wxPathOnly(ToWx(*path)));
  return path;
}

void WxDialogs::ShowMessage(MessageIcon icon, std::string_view title, std::string_view text) {
  if (work_.SessionEnds()) {
    std::cerr << ReplaceAll(text, "\r\n", "\n") << '\n';
    return;
  }
  const StandstillScope standstill(work_);
  MessageWindow(DialogParent(), icon, ToWx(title), ToWxMessage(text), MessageWindow::Buttons::Accept).ShowModal();
}

bool WxDialogs::AskYesNo(std::string_view title, std::string_view text, bool defaultYes) {
  if (work_.SessionEnds()) return defaultYes;
  const StandstillScope standstill(work_);
  MessageWindow box(DialogParent(), MessageIcon::None, ToWx(title), ToWxMessage(text), MessageWindow::Buttons::YesNo,
                    defaultYes);
  return box.ShowModal() == wxID_YES;
}

std::optional<std::string> WxDialogs::AskText(std::string_view title, std::string_view prompt,
                                              std::string_view initial) {
  if (work_.SessionEnds()) return std::nullopt;
  const StandstillScope standstill(work_);
  TextQuestion question(DialogParent(), ToWx(title), ToWxMessage(prompt), ToWx(initial));
  if (question.ShowModal() != wxID_OK) return std::nullopt;
  return FromWx(question.Answer());
}

std::optional<std::string> WxDialogs::PickFileToOpen(std::string_view title, std::string_view filter) {
  if (work_.SessionEnds()) return std::nullopt;
  const StandstillScope standstill(work_);
  const std::string withAll = FilterForBothCases(filter) + std::string(allFiles);
  wxFileDialog dialog(DialogParent(), ToWx(title), ToWx(FirstFolder(openFolders_)), {}, ToWx(withAll),
                      wxFD_OPEN | wxFD_FILE_MUST_EXIST);
  return Used(Pick(dialog));
}

std::optional<std::string> WxDialogs::PickFileToSave(std::string_view title, std::string_view filter,
                                                     std::string_view defaultName) {
  if (work_.SessionEnds()) return std::nullopt;
  const StandstillScope standstill(work_);
  wxFileDialog dialog(DialogParent(), ToWx(title), ToWx(FirstFolder(saveFolders_)), ToWx(defaultName),
                      ToWx(FilterForBothCases(filter)), wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
  std::optional<std::string> path = Used(Pick(dialog));
  const std::string extension = ExtensionOf(filter);
  if (!path || extension.empty() || wxFileName(ToWx(*path)).HasExt()) return path;
  // A name typed without its extension gets it, unless that names a file that is there and nobody agreed to replace.
  return wxFileExists(ToWx(*path + extension)) ? path : *path + extension;
}

std::optional<std::string> WxDialogs::PickFolder(std::string_view title, std::string_view initial) {
  if (work_.SessionEnds()) return std::nullopt;
  const StandstillScope standstill(work_);
  const std::string begin = wxDirExists(ToWx(initial)) ? std::string(initial) : FirstFolder(saveFolders_);
  wxDirDialog dialog(DialogParent(), ToWx(title), ToWx(begin), wxDD_DEFAULT_STYLE);
  if (dialog.ShowModal() != wxID_OK) return std::nullopt;
  lastFolder_ = FromWx(dialog.GetPath());
  return lastFolder_;
}

}  // namespace tolvan
