// A folder for the files of one benchmark, gone at its end.
#pragma once

#include <filesystem>
#include <random>
#include <string>
#include <system_error>

namespace tolvan::bench {

class BenchFolder {
 public:
  BenchFolder() {
    std::random_device random;
    do {
      path_ = std::filesystem::temp_directory_path() / ("tolvan-bench-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(path_));
  }
  ~BenchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  BenchFolder(const BenchFolder&) = delete;
  BenchFolder& operator=(const BenchFolder&) = delete;

  std::string File(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

}  // namespace tolvan::bench
