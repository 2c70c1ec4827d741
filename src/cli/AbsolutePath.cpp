#include "cli/AbsolutePath.h"

#include <filesystem>

namespace tolvan {

std::string AbsolutePath(const std::string& path) {
  if (path.empty()) return {};
  return std::filesystem::absolute(path).lexically_normal();
}

}  // namespace tolvan
