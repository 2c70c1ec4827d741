#pragma once

#include <string>
#include <string_view>

#include "base/Calendar.h"
#include "host/SystemServices.h"
#include "host/UserInterface.h"

namespace tolvan {

enum class FileChoice { Open, Save };

/// The one way to a file dialog (ZelC_CDL). `filter` is description, bar, pattern, bar. An empty title is "Seleccionar
/// Archivo". `defaultName` is for saving. The chosen path; empty when the user cancels.
std::string ChooseFile(Dialogs& dialogs, FileChoice choice, std::string_view title, std::string_view filter,
                       std::string_view defaultName = {});

/// "Articulos 20261115.tolpak" for the prefix "Articulos" and 15 November 2026.
std::string TransportFileName(std::string_view prefix, Date day);

/// Asks the user where to save a transport file, proposing TransportFileName of today. Empty when the user cancels.
std::string ChooseTransportFile(std::string_view prefix, Dialogs& dialogs, const Clock& clock);

}  // namespace tolvan
