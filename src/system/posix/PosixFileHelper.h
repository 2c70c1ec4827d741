// Files and their names on Linux, and the guard of those that nothing may change; see PosixPath.h for how paths are
// understood.
#pragma once

#include <string>
#include <vector>

#include "host/FileHelper.h"

namespace tolvan {

/// Which files nothing replaces, truncates or deletes: what a shop cannot afford to lose to a path chosen by mistake.
///
/// A file is known by what it is and not by how it is spelled: one that is there by its device and number, so that
/// links of either kind are no way around; one that is not there yet by its folder and name.
class FileGuard {
 public:
  /// A file, whether it is there or not. Paths here and below are absolute.
  void AddFile(std::string path) { files_.push_back(std::move(path)); }

  /// The files directly in `folder` whose names hold `mark`.
  void AddFilesNamed(std::string mark, std::string folder) { marks_.push_back({std::move(mark), std::move(folder)}); }

  /// Throws HostError when the system cannot tell whether the file is one of them, as on a failing device.
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

class PosixFileHelper final : public FileHelper {
 public:
  /// `applicationFolder` is absolute. `guard` holds the store's own files; without one there are none.
  explicit PosixFileHelper(std::string_view applicationFolder, FileGuard guard = {});

  /// A Windows path comes back as it is with one separator at its end, so that messages show what is configured.
  std::string NormalizeFolder(std::string_view folder) const override;
  std::string Join(std::string_view folder, std::string_view name) const override;
  std::string FormatForDisplay(std::string_view path) const override;
  std::string CleanFileName(std::string_view name, bool replaceForbidden, bool trim) const override;
  bool FileExists(std::string_view path) const override;
  bool FolderExists(std::string_view path) const override;
  bool IsSameFile(std::string_view path, std::string_view other) const override;
  void MakeFolder(std::string_view path) override;
  bool DeleteFile(std::string_view path) noexcept override;
  std::optional<HostError> WriteTextFile(std::string_view text, std::string_view path) noexcept override;
  std::unique_ptr<WholeFile> CreateWhole(std::string_view path) override;
  std::unique_ptr<InputFile> OpenInput(std::string_view path) override;

 private:
  std::string Resolve(std::string_view path) const;

  /// Every operation that deletes, replaces or truncates a file begins here: the guard is asked nowhere else.
  std::string ResolveForChange(std::string_view path) const;
  bool IsGuarded(const std::string& resolved) const;

  std::string applicationFolder_;
  FileGuard guard_;
};

}  // namespace tolvan
