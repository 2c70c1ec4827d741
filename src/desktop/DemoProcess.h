#pragma once

#include <string>

namespace tolvan {

class DesktopWork;

/// Makes a demo store in a folder by the command that lies beside this program, showing that it runs; the user can stop
/// it, and it has two minutes. A text for people when it failed, empty otherwise.
std::string MakeDemoByCommand(const std::string& folder, DesktopWork& work);

}  // namespace tolvan
