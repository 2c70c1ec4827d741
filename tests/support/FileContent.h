// Whole files in one call, for tests.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace tolvan::test {

inline std::string ReadFile(const std::filesystem::path& path) {
  std::ostringstream content;
  content << std::ifstream(path, std::ios::binary).rdbuf();
  return content.str();
}

inline void WriteFile(const std::filesystem::path& path, const std::string& content) {
  std::ofstream(path, std::ios::binary | std::ios::trunc) << content;
}

/// The names in a folder, sorted.
inline std::vector<std::string> NamesIn(const std::filesystem::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) names.push_back(entry.path().filename());
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace tolvan::test
