// What the collector panel of the options window decides: the purpose and the button that makes a new file.
#pragma once

#include <string>

#include "host/XmlDocument.h"
#include "services/ComponentContext.h"
#include "transport/ItemDefinitionFile.h"

namespace tolvan {

class CollectorPanel {
 public:
  /// All of it outlives the panel. The purpose is Count, the first option that the panel shows.
  CollectorPanel(const ComponentContext& context, XmlLibrary& library, clsCallBackProgreso* progress = nullptr);

  CollectorPurpose opProposito() const { return purpose_; }

  /// Sets one option button, which clears the other.
  void opProposito_Click(CollectorPurpose purpose) { purpose_ = purpose; }

  /// Asks for a file and writes it. A failure is told in the window's box for failures. Nothing is told when the user
  /// cancelled, and when a query could not be opened.
  void cmdDCExportarItems_Click();

 private:
  ActionReport Write(const std::string& path);

  const ComponentContext& context_;
  XmlLibrary& library_;
  clsCallBackProgreso* progress_;
  CollectorPurpose purpose_ = CollectorPurpose::Count;
};

}  // namespace tolvan
