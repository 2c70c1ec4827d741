// The action of the sales upload: one exchange with the reporting server, and its settings made durable.
#pragma once

#include <string>

#include "export/clsIE_SVentas.h"

namespace tolvan {

class SalesUpload {
 public:
  /// Both must outlive this object; `progress` may be null.
  explicit SalesUpload(const ComponentContext& context, clsCallBackProgreso* progress = nullptr)
      : context_(&context), progress_(progress) {}

  /// Sends the days that the server asks for and saves how far it came, also when it stopped early. Never throws a
  /// HostError: messages are appended to `errorText`, each after a line break (CR LF). The result is not complete when
  /// the settings could not be saved.
  SalesUploadResult Run(std::string& errorText);

 private:
  const ComponentContext* context_;
  clsCallBackProgreso* progress_;
};

}  // namespace tolvan
