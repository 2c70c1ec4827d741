#include "store/DeferredSpreadsheetApplication.h"

#include <new>

#include "host/HostError.h"

namespace tolvan {

std::unique_ptr<WorksheetReader> DeferredSpreadsheetApplication::OpenFirstWorksheet(std::string_view path,
                                                                                    const Interruption& interruption) {
  return Loaded().OpenFirstWorksheet(path, interruption);
}

std::unique_ptr<NewWorkbook> DeferredSpreadsheetApplication::CreateFromTemplate(std::string_view templatePath,
                                                                                std::uint32_t headingRows) {
  return Loaded().CreateFromTemplate(templatePath, headingRows);
}

SpreadsheetApplication& DeferredSpreadsheetApplication::Loaded() {
  if (application_) return *application_;
  try {
    auto* const make = module_.EntryPoint<TolvanMakeSpreadsheetApplication>("tolvanMakeSpreadsheetApplication");
    application_.reset(make(clock_, files_, newWorkbookFolder_));
  } catch (const HostError& error) {
    throw HostError(HostErrorKind::Unreachable, TextForPeople(error));
  }
  if (!application_) throw std::bad_alloc();
  return *application_;
}

}  // namespace tolvan
