// What the collector panel of the options window decides: the purpose and the button that makes a new file.
#pragma once

#include <string>

#include "host/XmlDocument.h"
#include "services/ComponentContext.h"
#include "transport/ItemDefinitionFile.h"

namespace tolvan {

class CollectorPanel {
 public:
  /// Elements of the option-button array opProposito.
  enum Purpose : int {
    Receiving = 0,  ///< "Tomas para recepción de mercancía."
    Count = 1,      ///< "Conteo físico de inventario por áreas."
  };

  /// Context and library outlive the panel. The purpose is Count, the first option that the panel shows. `progress` may
  /// let the window's events through.
  CollectorPanel(const ComponentContext& context, XmlLibrary& library, CollectorProgress progress = {});

  Purpose opProposito() const { return purpose_; }

  /// Sets one option button, which clears the other.
  void opProposito_Click(Purpose purpose) { purpose_ = purpose; }

  /// Asks for a file and writes it. A failure is told in the window's box for failures. Nothing is told when the user
  /// cancelled, and when a query could not be opened.
  void cmdDCExportarItems_Click();

 private:
  /// Why it failed, for people; empty otherwise.
  std::string Write(const std::string& path);

  const ComponentContext& context_;
  XmlLibrary& library_;
  CollectorProgress progress_;
  Purpose purpose_ = Count;
};

}  // namespace tolvan
