#include "ui/CollectorPanel.h"

#include <utility>

#include "base/Text.h"
#include "services/ResourceTexts.h"
#include "transport/TransportDocument.h"

namespace tolvan {

CollectorPanel::CollectorPanel(const ComponentContext& context, XmlLibrary& library, clsCallBackProgreso* progress)
    : context_(context), library_(library), progress_(progress) {}

void CollectorPanel::cmdDCExportarItems_Click() {
  const std::string path = ChooseTransportFile("Articulos", context_.UserDialogs(), context_.services.SystemClock());
  if (path.empty()) return;
  const ActionReport report = Write(path);
  if (report.done || report.told) return;
  const std::string text = std::string(ResourceText(text_id::errorsHappened)) + report.text;
  context_.UserDialogs().ShowMessage(MessageIcon::Exclamation, ResourceText(text_id::windowCaption), text);
}

ActionReport CollectorPanel::Write(const std::string& path) {
  const HostApplication& application = context_.application;
  basComponenteXML xml(library_, context_.UserDialogs(), application.ProductName(), application.XmlLibraryDownload());
  try {
    ItemDefinitionServices services = CollectorServices(context_, xml);
    services.progress = progress_;
    return ItemDefinitionFile(std::move(services)).Write(path, purpose_);
  } catch (const HostError& error) {  // the database cannot be opened
    return {.text = std::string(lineBreak) + TextForPeople(error)};
  }
}

}  // namespace tolvan
