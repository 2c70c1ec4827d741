#pragma once

#include <string>
#include <string_view>

#include "base/Calendar.h"
#include "host/SystemServices.h"
#include "host/UserInterface.h"

namespace tolvan {

/// "Articulos 20261115.tolpak" for the prefix "Articulos" and 15 November 2026.
std::string TransportFileName(std::string_view prefix, Date day);

/// Asks the user where to save a transport file, proposing TransportFileName of today. Empty when the user cancels.
std::string ChooseTransportFile(std::string_view prefix, Dialogs& dialogs, const Clock& clock);

}  // namespace tolvan
