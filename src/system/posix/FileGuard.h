// Which files nothing replaces, truncates or deletes: what a shop cannot afford to lose to a path chosen by mistake.
//
// A file is known by what it is and not by how it is spelled: one that is there by its device and number, so that
// links of either kind are no way around; one that is not there yet by its folder and name.
#pragma once

#include <string>
#include <vector>

namespace tolvan {

class FileGuard {
 public:
  /// A file, be it there or not. Paths here and below are absolute.
  void AddFile(std::string path) { files_.push_back(std::move(path)); }

  /// The files directly in `folder` whose names hold `mark`.
  void AddFilesNamed(std::string mark, std::string folder) { marks_.push_back({std::move(mark), std::move(folder)}); }

  bool Holds(const std::string& path) const;

 private:
  struct Mark {
    std::string text;
    std::string folder;
  };

  static bool IsMarked(const std::string& path, const Mark& mark);

  std::vector<std::string> files_;
  std::vector<Mark> marks_;
};

}  // namespace tolvan
