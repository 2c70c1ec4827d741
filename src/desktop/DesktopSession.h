// One run of the window program inside the toolkit: the host opened, the options window shown until it is closed, and
// the wish of the system to end the program carried to the windows.
#pragma once

#include <wx/timer.h>
#include <wx/weakref.h>

#include <memory>
#include <string>

#include "desktop/DesktopWork.h"
#include "desktop/WxDialogs.h"

namespace tolvan {

class Clock;

class DesktopSession {
 public:
  explicit DesktopSession(Clock& clock) : clock_(clock), dialogs_(work_) {}

  /// Opens the host and shows the window until it is closed. 0, also when the user stops the opening; 4 when the host
  /// cannot be reached, and the user has been told then.
  int Run(const std::string& configurationPath);

  /// The same where nothing names a configuration and there is none at the usual place: asks for one first, until one
  /// has been opened or the user closes.
  int RunFirst(const std::string& usualPath);

  /// Ends what runs and closes every window, asking nobody. It returns at once; the windows are gone once what was
  /// open over them has ended.
  void End();

 private:
  void CloseWindows();
  void ShowWindow(const struct ComponentContext& context);
  void TellNotice(const struct ComponentContext& context);

  Clock& clock_;
  DesktopWork work_;
  WxDialogs dialogs_;
  std::unique_ptr<wxTimer> closing_;  // nothing of the toolkit can be made before it runs
  wxWeakRef<wxWindow> frame_;
};

}  // namespace tolvan
