// Whole files in one call, for tests.
#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace tolvan::test {

inline std::string ReadFile(const std::filesystem::path& path) {
  std::ostringstream content;
  content << std::ifstream(path, std::ios::binary).rdbuf();
  return content.str();
}

inline void WriteFile(const std::filesystem::path& path, const std::string& content) {
  std::ofstream(path, std::ios::binary | std::ios::trunc) << content;
}

}  // namespace tolvan::test
