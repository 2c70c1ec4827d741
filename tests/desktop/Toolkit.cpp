#include "desktop/Toolkit.h"

#include <wx/app.h>
#include <wx/init.h>

#include <iostream>

#include "desktop/UserLanguage.h"

namespace tolvan::test {

int RunWithToolkit(int count, char** arguments, const std::function<int()>& work) {
  SpeakSpanish();
  wxApp::SetInstance(new wxApp);
  if (!wxEntryStart(count, arguments) || !wxTheApp->CallOnInit()) {
    std::cerr << "there is no display: run this by tests/desktop/with_display\n";
    return 1;
  }
  const int code = work();
  wxEntryCleanup();
  return code;
}

}  // namespace tolvan::test
