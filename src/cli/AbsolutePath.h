// Paths as a user types them in a terminal.
#pragma once

#include <string>

namespace tolvan {

/// The path as it is meant from where the user stands, without "." and "..". Empty stays empty.
std::string AbsolutePath(const std::string& path);

}  // namespace tolvan
