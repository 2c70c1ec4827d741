#include "transport/TransportFileChoice.h"

#include "base/NumberText.h"

namespace tolvan {

std::string ChooseFile(Dialogs& dialogs, FileChoice choice, std::string_view title, std::string_view filter,
                       std::string_view defaultName) {
  if (title.empty()) title = "Seleccionar Archivo";
  return (choice == FileChoice::Save ? dialogs.PickFileToSave(title, filter, defaultName)
                                     : dialogs.PickFileToOpen(title, filter))
      .value_or("");
}

std::string TransportFileName(std::string_view prefix, Date day) {
  std::string name(prefix);
  name.append(" ").append(PaddedNumber(day.Year(), 4)).append(PaddedNumber(day.Month(), 2));
  return name.append(PaddedNumber(day.Day(), 2)).append(".tolpak");
}

std::string ChooseTransportFile(std::string_view prefix, Dialogs& dialogs, const Clock& clock) {
  return ChooseFile(dialogs, FileChoice::Save, "Guardar Archivo de Transporte",
                    "Archivo de Transporte (*.tolpak)|*.tolpak|", TransportFileName(prefix, clock.Today()));
}

}  // namespace tolvan
