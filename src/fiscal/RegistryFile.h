// The registry as its text, whether it came as a text file or as the zip that the authority publishes. Content decides,
// never the name.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "host/FileHelper.h"
#include "host/UserInterface.h"

namespace tolvan {

/// The file is something else; what() says so to the user.
class NotTheRegistry : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class RegistryFile final : public InputFile {
 public:
  /// Opens the file at `path`. The text inside a zip is unpacked to its end first, so that a fault or a limit shows
  /// before anything is made of its lines. Throws NotTheRegistry, HostError as the services do, and Interrupted.
  RegistryFile(FileHelper& files, ArchiveReader& archives, const std::string& path, const Interruption& interruption);

  /// Of the text.
  std::uint64_t Size() const override { return size_; }

  /// Reads the text without the UTF-8 mark.
  std::size_t Read(std::span<char> buffer) override;

  /// Whether the text is UTF-8, by its mark or its first megabyte; else it is Windows-1252.
  bool IsUtf8() const { return utf8_; }

 private:
  void Begin(std::unique_ptr<InputFile> file);
  void OpenPacked(std::size_t place, const Interruption& interruption);
  std::string_view Beginning() const { return beginning_; }

  std::unique_ptr<Archive> archive_;
  std::unique_ptr<InputFile> file_;
  std::uint64_t size_ = 0;
  std::string beginning_;
  std::size_t position_ = 0;  // of what is unread of the beginning
  bool utf8_ = false;
};

}  // namespace tolvan
