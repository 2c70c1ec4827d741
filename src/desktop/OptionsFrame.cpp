#include "desktop/OptionsFrame.h"

#include <gtk/gtk.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/dataview.h>
#include <wx/sizer.h>
#include <wx/statline.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>

#include "desktop/Controls.h"
#include "desktop/DateAndTimeFields.h"
#include "desktop/OptionsPanels.h"
#include "desktop/ProgressDisplays.h"
#include "desktop/WindowParts.h"
#include "services/ResourceTexts.h"

namespace tolvan {
namespace {

/// The key of a node, kept with its item.
class NodeKey : public wxClientData {
 public:
  explicit NodeKey(std::string key) : key_(std::move(key)) {}
  const std::string& Key() const { return key_; }

 private:
  std::string key_;
};

}  // namespace

OptionsFrame::OptionsFrame(const ComponentContext& context, DesktopWork& work, ActionTools tools)
    : wxFrame(nullptr, wxID_ANY, ToWx(ResourceText(text_id::windowCaption))),
      work_(work),
      layout_(*this, "frmOpciones"),
      logic_(context, *this, std::move(tools)) {
  NameControl(*this, "frmOpciones");
  auto* const content = new wxPanel(this);
  MakeTree(*content);
  auto* const upper = new wxBoxSizer(wxHORIZONTAL);
  upper->Add(tree_, wxSizerFlags().Expand().Border(wxRIGHT, 2 * Gap(*this)));
  upper->Add(MakeRightSide(*content), wxSizerFlags(1).Expand());
  progress_ = new ProgressPanel(content);
  progress_->Hide();
  auto* const all = new wxBoxSizer(wxVERTICAL);
  all->Add(upper, wxSizerFlags(1).Expand().Border(wxALL, Gap(*this)));
  all->Add(progress_, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, Gap(*this)));
  all->Add(MakeButtons(*content), wxSizerFlags().Right().Border(wxALL, Gap(*this)));
  content->SetSizer(all);
  auto* const whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(content, wxSizerFlags(1).Expand());
  SetSizer(whole);
  const wxSize smallest = ScaledToText(*this, wxSize(160, 120));
  FitToScreen(*this, {{tree_, wxSize(tree_->GetMinWidth(), smallest.y)}, {panels_, smallest}});
  BindEvents();
  work_.WatchStandstill([this](bool running) { ShowRunning(running); });
  logic_.Iniciar();
  tree_->SetFocus();
}

void OptionsFrame::MakeTree(wxWindow& parent) {
  tree_ = new wxDataViewTreeCtrl(&parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxDV_NO_HEADER | wxDV_SINGLE);
  tree_->SetMinSize(ScaledToText(*this, wxSize(230, 340)));
  NameControl(*tree_, "tvOpciones", "Operaciones");
}

wxSizer* OptionsFrame::MakeRightSide(wxWindow& parent) {
  auto* const column = new wxBoxSizer(wxVERTICAL);
  auto* const title = new wxStaticText(&parent, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize, wxST_NO_AUTORESIZE);
  title->SetFont(title->GetFont().Bold().Scaled(1.2F));
  title->SetMinSize(title->GetTextExtent("X"));  // its room before there is a text
  NameControl(*title, control::tituloCategoria);
  column->Add(title, wxSizerFlags().Expand().Border(wxBOTTOM, 2 * Gap(parent)));
  panels_ = new PanelStack(&parent, logic_);
  column->Add(panels_, wxSizerFlags(1).Expand());
  return column;
}

wxSizer* OptionsFrame::MakeButtons(wxWindow& parent) {
  accept_ = MakeButton(parent, "bGuardar", ResourceText(text_id::acceptButton));
  cancel_ = MakeButton(parent, "bCancelar", ResourceText(text_id::cancelButton));
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(accept_, wxSizerFlags().Border(wxRIGHT, Gap(parent)));
  row->Add(cancel_);
  return row;
}

void OptionsFrame::BindEvents() {
  accept_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { logic_.bGuardar_Click(); });
  cancel_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { logic_.bCancelar_Click(); });
  tree_->Bind(wxEVT_DATAVIEW_SELECTION_CHANGED, [this](wxDataViewEvent& event) {
    if (!event.GetItem().IsOk()) return;
    const auto* key = dynamic_cast<NodeKey*>(tree_->GetItemData(event.GetItem()));
    if (key != nullptr) logic_.tvOpciones_NodeClick(key->Key());
  });
  tree_->Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    // Where nothing is chosen yet, the first key down chooses the first node and not the second.
    const wxDataViewItem first = tree_->GetNthChild(wxDataViewItem(), 0);
    const bool begins = event.GetKeyCode() == WXK_DOWN && !tree_->GetSelection().IsOk() && first.IsOk();
    if (!begins) return event.Skip();
    tree_->Select(first);
    const auto* key = dynamic_cast<NodeKey*>(tree_->GetItemData(first));
    if (key != nullptr) logic_.tvOpciones_NodeClick(key->Key());
  });
  Bind(wxEVT_CLOSE_WINDOW, &OptionsFrame::OnClose, this);
  Bind(wxEVT_CHAR_HOOK, &OptionsFrame::OnKey, this);
}

void OptionsFrame::OnClose(wxCloseEvent& event) {
  if (!logic_.QueryUnload() && event.CanVeto()) {
    event.Veto();
    return;
  }
  if (closing_) return;
  closing_ = true;
  work_.WatchStandstill({});
  logic_.Unload();
  Destroy();
}

void OptionsFrame::OnKey(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  const bool enter = key == WXK_RETURN || key == WXK_NUMPAD_ENTER;
  if (event.HasAnyModifiers()) return event.Skip();
  if (key == WXK_ESCAPE) {
    logic_.bCancelar_Click();
  } else if (enter && !acceptAllowed_ && dynamic_cast<wxButton*>(FindFocus()) == nullptr) {
    // The tree and the option buttons would keep this key from the default button.
    logic_.cmdDCExportarItems_Click();
  } else {
    event.Skip();
  }
}

wxWindow& OptionsFrame::Control(std::string_view name) const {
  wxWindow* const found = FindWindowByName(ToWx(name), this);
  wxCHECK_MSG(found != nullptr, *wxConstCast(this, OptionsFrame), "no control of that name");
  return *found;
}

/// The box in which a field is typed; null when it has none.
wxTextCtrl* OptionsFrame::TextBox(std::string_view name) const {
  wxWindow& control = Control(name);
  if (const auto* const date = dynamic_cast<DateField*>(&control)) return date->GetTextCtrl();
  if (auto* const time = dynamic_cast<TimeField*>(&control)) return &time->Text();
  return dynamic_cast<wxTextCtrl*>(&control);
}

std::string OptionsFrame::Text(std::string_view controlName) const {
  const wxTextCtrl* const box = TextBox(controlName);
  return FromWx(box != nullptr ? box->GetValue() : Control(controlName).GetLabel());
}

void OptionsFrame::SetText(std::string_view controlName, std::string_view text) {
  wxWindow& control = Control(controlName);
  if (auto* const field = dynamic_cast<wxTextCtrl*>(&control)) {
    if (!field->IsEditable()) {
      ShowPath(*field, text);
    } else if (FromWx(field->GetValue()) != text) {
      field->ChangeValue(ToWx(text));
    }
  } else if (auto* const paragraph = dynamic_cast<WrappedText*>(&control)) {
    paragraph->SetWrapped(text);
  } else if (auto* const label = dynamic_cast<wxStaticText*>(&control)) {
    label->SetLabelText(ToWx(text));
  }
}

bool OptionsFrame::Checked(std::string_view controlName) const {
  const auto* box = dynamic_cast<wxCheckBox*>(&Control(controlName));
  return box != nullptr && box->GetValue();
}

void OptionsFrame::SetChecked(std::string_view controlName, bool checked) {
  if (auto* const box = dynamic_cast<wxCheckBox*>(&Control(controlName))) box->SetValue(checked);
}

void OptionsFrame::SetEnabled(std::string_view controlName, bool enabled) {
  Control(controlName).Enable(enabled);
}

Date OptionsFrame::DateOf(std::string_view controlName) const {
  const auto* field = dynamic_cast<DateField*>(&Control(controlName));
  return field == nullptr ? Date() : field->Value();
}

void OptionsFrame::SetDate(std::string_view controlName, Date date) {
  if (auto* const field = dynamic_cast<DateField*>(&Control(controlName))) field->SetDate(date);
}

TimeOfDay OptionsFrame::TimeOf(std::string_view controlName) const {
  const auto* field = dynamic_cast<TimeField*>(&Control(controlName));
  return field == nullptr ? TimeOfDay() : field->Value();
}

void OptionsFrame::SetTime(std::string_view controlName, TimeOfDay time) {
  if (auto* const field = dynamic_cast<TimeField*>(&Control(controlName))) field->SetValue(time);
}

void OptionsFrame::Focus(std::string_view controlName) {
  Control(controlName).SetFocus();
}

void OptionsFrame::ShowNodes(const std::vector<ActionNode>& nodes) {
  for (const ActionNode& node : nodes) {
    const bool isParent =
        std::any_of(nodes.begin(), nodes.end(), [&](const ActionNode& other) { return other.parentKey == node.key; });
    const wxDataViewItem parent = node.parentKey.empty() ? wxDataViewItem() : nodes_.at(node.parentKey);
    auto* const key = new NodeKey(node.key);
    nodes_[node.key] = isParent ? tree_->AppendContainer(parent, ToWx(node.caption), -1, -1, key)
                                : tree_->AppendItem(parent, ToWx(node.caption), -1, key);
  }
  for (const auto& [key, item] : nodes_) tree_->Expand(item);
}

void OptionsFrame::SelectNode(const std::string& key) {
  tree_->Select(nodes_.at(key));
}

void OptionsFrame::ShowPanel(int panel) {
  panels_->ShowPanel(panel);
}

void OptionsFrame::SetFile(int panel, std::string_view text) {
  panels_->SetFile(panel, text);
}

void OptionsFrame::SelectAll(std::string_view controlName) {
  if (auto* const field = dynamic_cast<wxTextCtrl*>(&Control(controlName))) field->SelectAll();
}

void OptionsFrame::SetBusy(bool busy) {
  if (busy) {
    work_.Begin();
    focusBeforeWork_ = FindFocus();
  }
  ShowRunning(busy);
  if (busy) {
    cancel_->SetFocus();
    return;
  }
  work_.End();
  if (focusBeforeWork_ != nullptr && IsDescendant(focusBeforeWork_)) focusBeforeWork_->SetFocus();
}

void OptionsFrame::ShowRunning(bool running) {
  tree_->Enable(!running);
  accept_->Enable(!running && acceptAllowed_);
  panels_->EnablePanels(!running);
  cancel_->SetLabel(ToWx(running ? panel_text::stop : ResourceText(text_id::cancelButton)));
  SetCursor(running ? wxCURSOR_ARROWWAIT : wxNullCursor);
}

void OptionsFrame::AllowAccept(bool allowed) {
  acceptAllowed_ = allowed;
  accept_->Enable(allowed);
  GtkWidget* const create = Control("cmdDCExportarItems").GetHandle();
  gtk_widget_set_can_default(create, TRUE);
  gtk_window_set_default(GTK_WINDOW(GetHandle()), allowed ? nullptr : create);
}

void OptionsFrame::CloseWindow() {
  wxFrame::Close();
}

ProgressContainer& OptionsFrame::pbProgreso() {
  return *progress_;
}

ProgressBar& OptionsFrame::pb01() {
  return *progress_;
}

ProgressCaption& OptionsFrame::lbProgreso() {
  return *progress_;
}

void OptionsFrame::PressTab() {
  panels_->LeaveField();
}

std::unique_ptr<StatusDisplay> OptionsFrame::OpenStatus() {
  return std::make_unique<WaitDialog>(this, work_);
}

}  // namespace tolvan
