#pragma once

#include <string_view>

class wxButton;
class wxDialog;
class wxSizer;

namespace tolvan {

/// Adds a row with "&Aceptar", the default button, and "&Cancelar" below what the sizer holds already. They end the
/// dialog with wxID_OK and wxID_CANCEL. The result is the first.
wxButton* AddDialogButtons(wxDialog& dialog, wxSizer& content, std::string_view acceptName,
                           std::string_view cancelName);

}  // namespace tolvan
