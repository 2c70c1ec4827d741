// The one way to a file dialog, shared by every choice of a file.
#pragma once

#include <string>
#include <string_view>

#include "host/UserInterface.h"

namespace tolvan {

enum class FileChoice { Open, Save };

/// `filter` is description, bar, pattern, bar. An empty title is "Seleccionar Archivo". `defaultName` is for saving.
/// The chosen path; empty when the user cancels.
std::string ChooseFile(Dialogs& dialogs, FileChoice choice, std::string_view title, std::string_view filter,
                       std::string_view defaultName = {});

}  // namespace tolvan
