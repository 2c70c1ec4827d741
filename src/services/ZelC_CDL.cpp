#include "services/ZelC_CDL.h"

namespace tolvan {

std::string ChooseFile(Dialogs& dialogs, FileChoice choice, std::string_view title, std::string_view filter,
                       std::string_view defaultName) {
  if (title.empty()) title = "Seleccionar Archivo";
  return (choice == FileChoice::Save ? dialogs.PickFileToSave(title, filter, defaultName)
                                     : dialogs.PickFileToOpen(title, filter))
      .value_or("");
}

}  // namespace tolvan
