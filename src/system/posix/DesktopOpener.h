#pragma once

#include <string>

namespace tolvan {

/// Shows a file in the program that the user's desktop has for it, and does not wait for that program. Throws HostError
/// Unreachable, with the path as its context, when there is no desktop or it has no such program.
void OpenWithDesktop(const std::string& path);

}  // namespace tolvan
