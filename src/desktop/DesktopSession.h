// One run of the window program inside the toolkit: the host opened, the options window shown until it is closed, and
// the wish of the system to end the program carried to the windows.
#pragma once

#include <string>

#include "desktop/DesktopWork.h"
#include "desktop/WxDialogs.h"

class wxWindow;

namespace tolvan {

class Clock;

class DesktopSession {
 public:
  explicit DesktopSession(Clock& clock) : clock_(clock), dialogs_(work_) {}

  /// Opens the host and shows the window until it is closed. 0, or 4 when the host cannot be reached; the user has
  /// been told then.
  int Run(const std::string& configurationPath);

  /// Ends what runs and closes every window, asking nobody.
  void End();

 private:
  void ShowWindow(const struct ComponentContext& context);
  void TellNotice(const struct ComponentContext& context);

  Clock& clock_;
  DesktopWork work_;
  WxDialogs dialogs_;
};

}  // namespace tolvan
