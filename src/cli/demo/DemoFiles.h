#pragma once

#include <string>
#include <string_view>

namespace tolvan {

/// Writes a whole file over one that is there. `path` is absolute. Throws HostError.
void WriteDemoFile(const std::string& path, std::string_view content);

}  // namespace tolvan
