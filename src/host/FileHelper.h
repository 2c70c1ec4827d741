// Files and their names, and the archives that pack several files into one. Paths are UTF-8 in the platform's own form.
// A relative path starts at the application folder; those of archives are absolute.
//
// The store's own files are its database with what the engine keeps beside it, its configuration, its settings and its
// window layouts, whether they exist yet or not. No operation deletes, replaces or truncates one of them, under
// whatever name it is reached: by a link of either kind, by another spelling, or in another case where the system knows
// none.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/HostError.h"

namespace tolvan {

/// A file that is whole or absent: what was there before stays until Commit, and an object destroyed without Commit
/// leaves no trace.
class WholeFile {
 public:
  virtual ~WholeFile() = default;

  /// Appends bytes. Throws HostError Full, Access or Failed.
  virtual void Write(std::string_view bytes) = 0;

  /// Puts the file in its place. Throws HostError; then the earlier file is untouched. Nothing may be written after it.
  virtual void Commit() = 0;
};

/// A file read from its beginning to its end.
class InputFile {
 public:
  virtual ~InputFile() = default;

  /// In bytes, when it was opened.
  virtual std::uint64_t Size() const = 0;

  /// Fills the buffer as far as there are bytes left; fewer than asked for means that the end was reached. Throws
  /// HostError.
  virtual std::size_t Read(std::span<char> buffer) = 0;
};

class FileHelper {
 public:
  virtual ~FileHelper() = default;

  /// The folder as an absolute path with one separator at its end. An empty text is the application folder.
  virtual std::string NormalizeFolder(std::string_view folder) const = 0;

  /// The path joined from a folder and names below it.
  virtual std::string Join(std::string_view folder, std::string_view name) const = 0;

  /// For a label: without a separator at the end, the user's home folder written "~".
  virtual std::string FormatForDisplay(std::string_view path) const = 0;

  /// A file name made of what the user typed. `replaceForbidden`: characters that no common file system takes
  /// (\ / : * ? " < > | and controls) become "_". `trim`: blanks at both ends and points at the end are removed.
  virtual std::string CleanFileName(std::string_view name, bool replaceForbidden, bool trim) const = 0;

  virtual bool FileExists(std::string_view path) const = 0;
  virtual bool FolderExists(std::string_view path) const = 0;

  /// Whether both are there and are one file, be it by another spelling or a link. Throws HostError when the system
  /// cannot tell.
  virtual bool IsSameFile(std::string_view path, std::string_view other) const = 0;

  /// Makes the folder and those above it. Throws HostError.
  virtual void MakeFolder(std::string_view path) = 0;

  /// False when the file is still there or never was. One of the store's own stays.
  virtual bool DeleteFile(std::string_view path) noexcept = 0;

  /// Writes a new text file: whole or not at all, in Windows-1252, with nothing added. The failure, or nothing when
  /// the file was written; a character that the code page does not hold is InvalidValue.
  virtual std::optional<HostError> WriteTextFile(std::string_view text, std::string_view path) noexcept = 0;

  /// Begins a file that replaces `path` on Commit. Throws HostError; Access for one of the store's own.
  virtual std::unique_ptr<WholeFile> CreateWhole(std::string_view path) = 0;

  /// Throws HostError Unreachable when there is no such file, Access when it may not be read.
  virtual std::unique_ptr<InputFile> OpenInput(std::string_view path) = 0;
};

/// Files that are packed into one, as a zip packs them.
class Archive {
 public:
  virtual ~Archive() = default;

  /// The names of the files, without folders, in the archive's order. UTF-8, as the archive has them.
  virtual const std::vector<std::string>& Names() const = 0;

  /// Unpacks the file of that place among the names while it is read; its size is what the archive says. The archive
  /// must outlive the result. Throws HostError Damaged: for a password or a packing that is not known at once, while
  /// reading for a fault, for a size or a ratio past the limits, and at the end for a wrong checksum; its text is a
  /// Spanish cause that begins in lower case.
  virtual std::unique_ptr<InputFile> Open(std::size_t place) = 0;
};

class ArchiveReader {
 public:
  virtual ~ArchiveReader() = default;

  /// Throws HostError Unreachable or Access as FileHelper::OpenInput does, Damaged when it is no whole archive or its
  /// table of contents is past the limits, Configuration where no archive can be read.
  virtual std::unique_ptr<Archive> OpenArchive(std::string_view path) = 0;
};

}  // namespace tolvan
