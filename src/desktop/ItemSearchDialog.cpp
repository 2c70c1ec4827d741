#include "desktop/ItemSearchDialog.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "desktop/Controls.h"
#include "desktop/ListColumns.h"
#include "desktop/WindowParts.h"

namespace tolvan {
namespace {

constexpr unsigned descriptionColumn = 1;
constexpr unsigned priceColumn = 2;

}  // namespace

class FoundLines : public wxDataViewVirtualListModel {
 public:
  FoundLines(const ItemSearch& search, std::function<std::string(Currency)> priceText)
      : search_(search), priceText_(std::move(priceText)) {}

  void GetValueByRow(wxVariant& value, unsigned line, unsigned column) const override {
    if (line >= search_.Count()) {
      value = wxString();
      return;
    }
    const FoundItem& item = search_.At(line);
    if (column == priceColumn) {
      value = item.price ? ToWx(priceText_(*item.price)) : wxString();
    } else {
      value = ToWx(column == 0 ? item.code : item.description);
    }
  }
  bool SetValueByRow(const wxVariant&, unsigned, unsigned) override { return false; }

 private:
  const ItemSearch& search_;
  std::function<std::string(Currency)> priceText_;
};

ItemSearchDialog::ItemSearchDialog(wxWindow* parent, ItemSearch& search, std::string_view subject,
                                   std::function<std::string(Currency)> priceText)
    : wxDialog(parent, wxID_ANY, "Buscar Item", wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      search_(search),
      filter_(new wxTextCtrl(this, wxID_ANY)),
      list_(new wxDataViewCtrl(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxDV_SINGLE | wxDV_ROW_LINES)),
      lines_(new FoundLines(search, std::move(priceText))) {
  constexpr const char* filterLabel = "Código o descripción del Item:";
  NameControl(*this, "buscarItem");
  NameControl(*filter_, "txtBuscar", filterLabel);
  NameControl(*list_, "lvItems", "Items");
  FitHeight(*filter_);
  list_->AssociateModel(lines_.get());
  AppendTexts(*list_, wxString::FromUTF8("Código"), 0, WidthScaledToText(*this, 140));
  TakeSpareWidth(
      AppendTexts(*list_, wxString::FromUTF8("Descripción"), descriptionColumn, WidthScaledToText(*this, 300)));
  AppendTexts(*list_, "PVP", priceColumn, WidthScaledToText(*this, 100), wxALIGN_RIGHT);
  ShowWholeTexts(*list_, descriptionColumn);
  list_->SetMinSize(ScaledToText(*this, wxSize(580, 300)));
  auto* const all = new wxBoxSizer(wxVERTICAL);
  auto* const row = MakeLabel(*this, subject);
  row->SetMaxSize(wxSize(WidthScaledToText(*this, 580), -1));
  row->SetToolTip(ToWx(subject));
  NameControl(*row, "lbRenglon");
  all->Add(row, wxSizerFlags().Border(wxLEFT | wxRIGHT | wxTOP, Gap(*this)));
  all->Add(MakeLabel(*this, filterLabel), wxSizerFlags().Border(wxALL, Gap(*this)));
  all->Add(filter_, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, Gap(*this)));
  all->Add(list_, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT, Gap(*this)));
  accept_ = AddDialogButtons(*this, *all, "bBuscarAceptar", "bBuscarCancelar");
  SetSizer(all);
  FitToScreen(*this, {{list_, ScaledToText(*this, wxSize(300, 120))}});
  CentreOnParent();
  BindEvents();
  Filter();
  filter_->SetFocus();
}

ItemSearchDialog::~ItemSearchDialog() = default;

void ItemSearchDialog::BindEvents() {
  filter_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { Filter(); });
  filter_->Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
    if (event.GetKeyCode() == WXK_DOWN) return MoveSelection(1);
    if (event.GetKeyCode() == WXK_UP) return MoveSelection(-1);
    event.Skip();
  });
  list_->Bind(wxEVT_DATAVIEW_ITEM_ACTIVATED, [this](wxDataViewEvent&) { EndModal(wxID_OK); });
  list_->Bind(wxEVT_DATAVIEW_SELECTION_CHANGED, [this](wxDataViewEvent&) { accept_->Enable(Chosen().has_value()); });
}

std::optional<std::string> ItemSearchDialog::Chosen() const {
  const wxDataViewItem item = list_->GetSelection();
  if (!item.IsOk() || lines_->GetRow(item) >= search_.Count()) return std::nullopt;
  return search_.At(lines_->GetRow(item)).code;
}

void ItemSearchDialog::Filter() {
  search_.Filter(FromWx(filter_->GetValue()));
  lines_->Reset(static_cast<unsigned>(search_.Count()));
  if (search_.Count() > 0) {
    list_->Select(lines_->GetItem(0));
    list_->EnsureVisible(lines_->GetItem(0));
  }
  accept_->Enable(search_.Count() > 0);
}

/// The arrow keys move in the list while the typing goes on.
void ItemSearchDialog::MoveSelection(int lines) {
  if (search_.Count() == 0) return;
  const wxDataViewItem item = list_->GetSelection();
  const int line = item.IsOk() ? static_cast<int>(lines_->GetRow(item)) + lines : 0;
  const auto target = static_cast<unsigned>(wxClip(line, 0, static_cast<int>(search_.Count()) - 1));
  list_->Select(lines_->GetItem(target));
  list_->EnsureVisible(lines_->GetItem(target));
}

}  // namespace tolvan
