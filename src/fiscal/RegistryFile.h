// The registry as its text, whether it came as a text file or as the zip that the authority publishes. Content decides,
// never the name: the beginning of a file says whether it can be the registry at all, and its encoding.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "host/FileHelper.h"
#include "host/UserInterface.h"

namespace tolvan {

/// So much of a file is looked at.
inline constexpr std::size_t registryBeginning = std::size_t{1} << 20;

/// What a file with this beginning is instead of the registry's text, such as "una página web"; empty when it may be
/// that text. Spanish, with its article.
std::string_view KindOfOtherFile(std::string_view beginning);

/// Whether it is a zip, which may hold the registry.
bool BeginsAsZip(std::string_view beginning);

/// Valid UTF-8 with at least one character beyond ASCII. A character that the end of a full beginning cuts in two is
/// not looked at.
bool BeginsAsUtf8(std::string_view beginning);

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
