// Files and their names on Linux; see PosixPath.h for how paths are understood.
#pragma once

#include <string>

#include "host/FileHelper.h"
#include "system/posix/FileGuard.h"

namespace tolvan {

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

  std::string applicationFolder_;
  FileGuard guard_;
};

}  // namespace tolvan
