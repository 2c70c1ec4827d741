// How the options window runs the taxpayer registry import (action 6): the file chosen and looked for, progress in the
// window, and the rejected lines offered for saving afterwards.
#pragma once

#include <string>

#include "fiscal/RegistryReport.h"
#include "services/ActionReport.h"
#include "services/ComponentContext.h"
#include "services/clsCallBackProgreso.h"
#include "ui/frmOpciones.h"

namespace tolvan {

class RegistryLauncher {
 public:
  /// Both must outlive this object.
  RegistryLauncher(const ComponentContext& context, clsCallBackProgreso& progress)
      : context_(&context), progress_(&progress) {}

  /// Makes the dispatcher run the import. This object must outlive its use there.
  void AttachTo(frmOpciones& form);

  /// The button beside the file's label.
  void ChooseFile();

  /// Empty when none is selected.
  const std::string& File() const { return file_; }

  /// Offers to save the lines that the last import rejected, once. For after the dispatcher has told its outcome.
  void OfferRejections();

 private:
  ActionReport Launch();
  void SaveRejections(const RejectionList& rejected) const;

  const ComponentContext* context_;
  clsCallBackProgreso* progress_;
  std::string file_;
  RejectionList rejected_;
};

}  // namespace tolvan
