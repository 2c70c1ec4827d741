#include "export/SalesUpload.h"

#include "base/Text.h"
#include "host/HostError.h"
#include "services/ComponentContext.h"
#include "services/ResourceTexts.h"

namespace tolvan {
namespace {

/// Why the settings could not be saved; empty when they were.
std::string Keep(clsIE_SVentas& exchange, ImpExpSettings& settings) {
  try {
    exchange.WriteBack();
    settings.Save();
  } catch (const ApplicationError& error) {
    return error.what();
  } catch (const HostError& error) {
    return std::string(ResourceText(text_id::cannotSaveSettings)).append(lineBreak).append(TextForPeople(error));
  }
  return {};
}

}  // namespace

SalesUploadResult SalesUpload::Run(std::string& errorText) {
  clsIE_SVentas exchange(*context_, progress_);
  exchange.Procesar();
  SalesUploadResult result = exchange.Result();
  if (!result.complete) errorText.append(lineBreak).append(result.failure);
  const std::string unsaved = Keep(exchange, context_->settings);
  if (unsaved.empty()) return result;
  errorText.append(lineBreak).append(unsaved);
  if (result.complete) result.failure = unsaved;
  result.complete = false;
  return result;
}

}  // namespace tolvan
