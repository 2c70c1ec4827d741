#include "desktop/DialogParent.h"

#include <wx/app.h>
#include <wx/dialog.h>

namespace tolvan {

wxWindow* DialogParent() {
  for (auto node = wxTopLevelWindows.GetLast(); node != nullptr; node = node->GetPrevious()) {
    const auto* dialog = dynamic_cast<wxDialog*>(node->GetData());
    if (dialog != nullptr && dialog->IsModal()) return node->GetData();
  }
  return wxTheApp->GetTopWindow();
}

}  // namespace tolvan
