#include "desktop/ReviewDialog.h"

#include <gtk/gtk.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/menu.h>
#include <wx/notebook.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "base/NumberText.h"
#include "desktop/Controls.h"
#include "desktop/ItemSearchDialog.h"
#include "desktop/ProgressDisplays.h"
#include "desktop/WindowParts.h"
#include "services/ResourceTexts.h"

namespace tolvan {
namespace {

constexpr std::array tabTitles{"Nuevos Items que se crearán", "Items que se actualizarán",
                               "Renglones que no se procesarán"};
constexpr std::array menuTitles{"Asociar a un Item Existente", "Quitar asociación (Crear como nuevo Item)",
                                "Establecer código para crear nuevo Item (Código Excel)"};
constexpr int noteLines = 3;
constexpr int usualWidth = 940;  // of the list, in pixels of a plain screen and the usual font
constexpr int narrowest = 300;
constexpr int usualLines = 14;
constexpr int fewestLines = 5;
constexpr int menuIds = wxID_HIGHEST + 100;

}  // namespace

ReviewDialog::ReviewDialog(wxWindow* parent, const ComponentContext& context, DesktopWork& work,
                           frmStatusImportar& logic)
    : wxDialog(parent, wxID_ANY, ToWx(frmStatusImportar::caption), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER | wxMAXIMIZE_BOX),
      context_(context),
      work_(work),
      logic_(logic),
      layout_(*this, "frmStatusImportar") {
  NameControl(*this, "frmStatusImportar");
  auto* const all = new wxBoxSizer(wxVERTICAL);
  all->Add(MakeLabel(*this, "Favor revise detenidamente las tres pestañas antes de proceder con la operación."),
           wxSizerFlags().Border(wxALL, Gap(*this)));
  MakeTabs(*all);
  MakeList(*all);
  wxSizer* const foot = MakeFoot();
  all->Add(foot, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, Gap(*this)));
  SetSizer(all);
  FitToScreen(*this, {{list_, wxSize(WidthScaledToText(*this, narrowest), list_->HeightOf(fewestLines))}});
  BreakTabTitles();
  BindEvents();
  RestoreLayout(context.services, layout_);
  list_->SetFocus();
}

void ReviewDialog::MakeTabs(wxSizer& sizer) {
  tabs_ = new wxNotebook(this, wxID_ANY);
  NameControl(*tabs_, "tabFiltro", "Pestañas");
  for (const char* title : tabTitles) {
    auto* const page = new wxPanel(tabs_);
    page->SetMinSize(wxSize(-1, 0));
    page->SetCanFocus(false);  // there is nothing in it
    tabs_->AddPage(page, wxString::FromUTF8(title));
  }
  sizer.Add(tabs_, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, Gap(*this)));
  explanation_ =
      new WrappedText(this, ResourceText(text_id::newItemsExplanation), WidthScaledToText(*this, usualWidth));
  explanation_->SetMinSize(wxSize(WidthScaledToText(*this, narrowest), explanation_->GetMinHeight()));
  NameControl(*explanation_, "lbExp");
  sizer.Add(explanation_, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, Gap(*this)));
}

/// Titles that have no room beside each other stand in two lines each, because the toolkit would hide the last tab.
void ReviewDialog::BreakTabTitles() {
  const int aroundTitle = FromDIP(44);
  int needed = 0;
  for (const char* title : tabTitles) needed += GetTextExtent(wxString::FromUTF8(title)).x + aroundTitle;
  const bool breaks = needed > GetClientSize().x - 2 * Gap(*this);
  for (std::size_t page = 0; page < tabTitles.size(); ++page) {
    wxString title = wxString::FromUTF8(tabTitles.at(page));
    const std::size_t middle = title.find(' ', title.length() / 2);
    if (breaks && middle != wxString::npos) title[middle] = '\n';
    if (tabs_->GetPageText(page) != title) tabs_->SetPageText(page, title);
  }
  gint height = 0;
  gtk_widget_get_preferred_height(tabs_->GetHandle(), &height, nullptr);
  if (tabs_->GetMinHeight() == height) return;
  tabs_->SetMinSize(wxSize(-1, height));
  Layout();
}

void ReviewDialog::MakeList(wxSizer& sizer) {
  list_ = new ReviewListView(this, context_.services);
  list_->SetMinSize(wxSize(WidthScaledToText(*this, usualWidth), list_->HeightOf(usualLines)));
  sizer.Add(list_, wxSizerFlags(1).Expand().Border(wxALL, Gap(*this)));
  // A field and no label, so that the text can be copied. Its height stays, so that the list does not jump.
  note_ = new wxTextCtrl(this, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize,
                         wxTE_MULTILINE | wxTE_READONLY | wxBORDER_NONE);
  note_->SetBackgroundColour(GetBackgroundColour());
  note_->SetMinSize(wxSize(-1, noteLines * note_->GetCharHeight()));
  NameControl(*note_, "txtNota", "Observación del renglón");
  sizer.Add(note_, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, Gap(*this)));
}

wxSizer* ReviewDialog::MakeFoot() {
  auto* const counts = new wxBoxSizer(wxVERTICAL);
  for (std::size_t index = 0; index < summary_.size(); ++index) {
    summary_.at(index) = MakeLabel(*this, {});
    summary_.at(index)->SetMinSize(GetTextExtent("000000 renglones previamente asociados."));
    NameControl(*summary_.at(index), "lCant" + std::to_string(index));
    counts->Add(summary_.at(index));
  }
  reviewed_ = new wxCheckBox(this, wxID_ANY,
                             wxString::FromUTF8("Ya he revisado y verificado que todos los renglones están en orden"));
  NameControl(*reviewed_, "Check1");
  accept_ = MakeButton(*this, "bAceptar", "&Proceder");
  cancel_ = MakeButton(*this, "bCancelar", ResourceText(text_id::cancelButton));
  auto* const buttons = new wxBoxSizer(wxHORIZONTAL);
  buttons->Add(accept_, wxSizerFlags().Border(wxRIGHT, Gap(*this)));
  buttons->Add(cancel_);
  auto* const outcome = new wxBoxSizer(wxHORIZONTAL);
  outcome->Add(counts, wxSizerFlags(1).CentreVertical());
  outcome->Add(buttons, wxSizerFlags().Bottom());
  // The check box has a row of its own: beside the counts it would leave them too little of a narrow screen.
  auto* const foot = new wxBoxSizer(wxVERTICAL);
  foot->Add(reviewed_, wxSizerFlags().Right().Border(wxBOTTOM, Gap(*this)));
  foot->Add(outcome, wxSizerFlags().Expand());
  return foot;
}

void ReviewDialog::BindEvents() {
  tabs_->Bind(wxEVT_NOTEBOOK_PAGE_CHANGED, [this](wxBookCtrlEvent& event) {
    event.Skip();
    OnTab();
  });
  reviewed_->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) { logic_.Check1_Click(event.IsChecked()); });
  accept_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnAccept(); });
  cancel_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { logic_.bCancelar_Click(); });
  Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent& event) {
    event.Veto();
    logic_.QueryUnload();
  });
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    event.Skip();
    CallAfter([this] { BreakTabTitles(); });
  });
  list_->Bind(wxEVT_DATAVIEW_SELECTION_CHANGED, [this](wxDataViewEvent&) { ShowNote(); });
  list_->Bind(wxEVT_DATAVIEW_ITEM_CONTEXT_MENU, [this](wxDataViewEvent&) { AskForMenu(false); });
  Bind(wxEVT_CHAR_HOOK, &ReviewDialog::OnKey, this);
  for (std::size_t entry = 0; entry < menuTitles.size(); ++entry) {
    const int number = static_cast<int>(entry);
    Bind(
        wxEVT_MENU,
        [this, number](wxCommandEvent&) {
          logic_.mnuRenglonR_Click(number, list_->SelectedRow());
          ShowNote();
        },
        menuIds + number);
  }
}

void ReviewDialog::OnKey(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  const bool menuKey = key == WXK_WINDOWS_MENU || key == WXK_MENU || (key == WXK_F10 && event.ShiftDown());
  const bool pageKey = key == WXK_TAB || key == WXK_PAGEDOWN || key == WXK_PAGEUP;
  if (key == WXK_ESCAPE) return logic_.bCancelar_Click();
  if (menuKey && list_->IsDescendant(FindFocus())) return AskForMenu(true);
  // Wherever the focus is: the toolkit knows these keys only inside the tabs, and nothing that takes it is in them.
  if (pageKey && event.ControlDown() && tabs_->IsEnabled()) {
    return tabs_->AdvanceSelection(key == WXK_PAGEDOWN || (key == WXK_TAB && !event.ShiftDown()));
  }
  event.Skip();
}

void ReviewDialog::OnTab() {
  logic_.tabFiltro_Click(tabs_->GetSelection() + 1);
  ShowNote();
}

void ReviewDialog::ShowNote() {
  logic_.lvStatus_ItemClick(list_->SelectedRow());
}

void ReviewDialog::OnAccept() {
  const WorkScope scope(work_);
  list_->Disable();
  tabs_->Disable();
  if (logic_.bAceptar_Click()) return;
  list_->Enable();
  tabs_->Enable();
  ShowNote();
  list_->SetFocus();  // what was disabled has lost it, and without it no key arrives
}

void ReviewDialog::AskForMenu(bool atSelectedLine) {
  constexpr int rightButton = 2;
  menuAtLine_ = atSelectedLine;
  logic_.lvStatus_MouseUp(rightButton, list_->SelectedRow());
}

void ReviewDialog::PopUpMenu(bool associate, bool dissociate, bool setCode) {
  const std::array enabled{associate, dissociate, setCode};
  wxMenu menu;
  for (std::size_t entry = 0; entry < menuTitles.size(); ++entry) {
    menu.Append(menuIds + static_cast<int>(entry), wxString::FromUTF8(menuTitles.at(entry)))->Enable(enabled.at(entry));
  }
  if (!menuAtLine_) {
    wxDialog::PopupMenu(&menu);
    return;
  }
  const wxRect line = list_->GetItemRect(list_->GetSelection());
  const wxPoint place = ScreenToClient(list_->ClientToScreen(line.GetBottomLeft()));
  wxDialog::PopupMenu(&menu, place);
}

void ReviewDialog::SetExplanation(std::string_view text) {
  explanation_->SetWrapped(text);
}

void ReviewDialog::SetNote(std::string_view text) {
  note_->ChangeValue(ToWx(text));
}

void ReviewDialog::SetSummary(int index, std::string_view text) {
  summary_.at(static_cast<std::size_t>(index))->SetLabelText(ToWx(text));
}

void ReviewDialog::EnableAccept(bool enabled) {
  accept_->Enable(enabled);
}

std::optional<std::string> ReviewDialog::PickItem(const SqlStatement& items, std::string_view subject) {
  try {
    const HostApplication& application = context_.application;
    ItemSearch search(context_.application.Database(), items, application.InventoryFlag());
    ItemSearchDialog dialog(this, search, subject, [&](Currency price) {
      return FormatMoney(price, application.MoneyFormat(), application.SeparatorText());
    });
    if (dialog.ShowModal() == wxID_OK) return dialog.Chosen();
  } catch (const HostError& error) {
    context_.UserDialogs().ShowMessage(MessageIcon::Exclamation, context_.application.ProductName(),
                                       TextForPeople(error));
  }
  return std::nullopt;
}

void ReviewDialog::ShowUntilClosed() {
  if (work_.SessionEnds()) return;
  // Grey behind the review: the button there that stops work would otherwise look as if it could be pressed.
  wxWindow* const owner = GetParent();
  owner->Disable();
  wxDialog::ShowModal();
  owner->Enable();
  SaveLayout(context_.services, layout_);
  list_->SaveColumns();
}

void ReviewDialog::CloseWindow() {
  if (IsModal()) EndModal(wxID_CLOSE);
}

std::unique_ptr<StatusDisplay> ReviewDialog::OpenStatus() {
  return std::make_unique<WaitDialog>(this, work_);
}

}  // namespace tolvan
