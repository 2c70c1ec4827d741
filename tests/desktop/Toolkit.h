// The window toolkit for a program that is no window program: tests, and the taking of pictures.
#pragma once

#include <wx/app.h>
#include <wx/init.h>

#include <functional>
#include <iostream>

#include "desktop/Program.h"

namespace tolvan::test {

/// Starts it and runs `work` on its thread. The result of `work`, or 1 when there is no display.
inline int RunWithToolkit(int count, char** arguments, const std::function<int()>& work) {
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
