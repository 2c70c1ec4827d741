#include "ui/CollectorPanel.h"

#include <utility>

#include "services/ResourceTexts.h"
#include "transport/TransportFileChoice.h"
#include "transport/basComponenteXML.h"

namespace tolvan {

CollectorPanel::CollectorPanel(const ComponentContext& context, XmlLibrary& library, CollectorProgress progress)
    : context_(context), library_(library), progress_(std::move(progress)) {}

void CollectorPanel::cmdDCExportarItems_Click() {
  const std::string path = ChooseTransportFile("Articulos", context_.UserDialogs(), context_.services.SystemClock());
  if (path.empty()) return;
  const std::string failure = Write(path);
  if (failure.empty()) return;
  const std::string text = std::string(ResourceText(text_id::errorsHappened)) + "\r\n" + failure;
  context_.UserDialogs().ShowMessage(MessageIcon::Exclamation, ResourceText(text_id::windowCaption), text);
}

std::string CollectorPanel::Write(const std::string& path) {
  const HostApplication& application = context_.application;
  basComponenteXML xml(library_, context_.UserDialogs(), application.ProductName(), application.XmlLibraryDownload());
  try {
    ItemDefinitionServices services = CollectorServices(context_, xml);
    services.progress = progress_;
    const ItemDefinitionResult result =
        ItemDefinitionFile(std::move(services)).Write(path, purpose_ == Count, purpose_ == Receiving);
    return result.outcome == ItemDefinitionOutcome::Failed ? result.error : std::string();
  } catch (const HostError& error) {  // the database cannot be opened
    return TextForPeople(error);
  }
}

}  // namespace tolvan
