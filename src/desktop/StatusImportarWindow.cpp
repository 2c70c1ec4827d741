#include "desktop/StatusImportarWindow.h"

#include "base/NumberText.h"
#include "desktop/ItemSearchDialog.h"
#include "desktop/StatusDialog.h"
#include "import/PriceImporter.h"

namespace tolvan {

std::optional<std::string> StatusImportarDialogView::PickItem(const SqlStatement& items, std::string_view subject) {
  try {
    const HostApplication& application = context_.application;
    ItemSearch search(context_.application.Database(), items, application.InventoryFlag());
    ItemSearchDialog dialog(&dialog_, search, subject, [&](Currency price) {
      return FormatMoney(price, application.MoneyFormat(), application.SeparatorText());
    });
    if (dialog.ShowModal() == wxID_OK) return dialog.Chosen();
  } catch (const HostError& error) {
    context_.UserDialogs().ShowMessage(MessageIcon::Exclamation, context_.application.ProductName(),
                                       TextForPeople(error));
  }
  return std::nullopt;
}

void StatusImportarDialogView::ShowModal() {
  if (work_.SessionEnds()) return;
  // Grey behind the review: the button there that stops work would else look as if it could be pressed.
  wxWindow* const owner = dialog_.GetParent();
  owner->Disable();
  dialog_.ShowModal();
  owner->Enable();
  dialog_.SaveState();
}

void StatusImportarDialogView::Close() {
  if (dialog_.IsModal()) dialog_.EndModal(wxID_CLOSE);
}

std::unique_ptr<StatusDisplay> StatusImportarDialogView::OpenStatus() {
  return std::make_unique<StatusDialog>(&dialog_, work_);
}

void StatusImportarWindow::SetClase(IClaseImportar& importer) {
  logic_.SetClase(importer);
  const auto* const prices = dynamic_cast<const PriceImporter*>(&importer);
  if (prices == nullptr) return;
  logic_.SetUntold([prices] {
    const ImportOutcome& outcome = prices->Outcome();
    return outcome.shown ? std::string() : FailureText(outcome);
  });
}

}  // namespace tolvan
