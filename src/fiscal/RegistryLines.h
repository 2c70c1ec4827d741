// The registry file line by line, and what the import takes from a line: two fields, and the name as it is stored. The
// reader works on one buffer: nothing is copied, nothing is read twice, and memory does not grow with the file or with
// its longest line.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/FileHelper.h"
#include "host/UserInterface.h"

namespace tolvan {

/// One line without its end: LF, or CR LF. A CR elsewhere, and every other byte, is part of the line.
struct RegistryLine {
  std::string_view text;         ///< of a line longer than the buffer only its beginning; valid until the next line
  std::uint64_t length = 0;      ///< of the whole line, in bytes
  bool separatorBeyond = false;  ///< a "|" was seen after what `text` shows

  bool IsWhole() const { return length == text.size(); }
};

class RegistryLineReader {
 public:
  static constexpr std::size_t usualBuffer = 512U << 10;

  /// `file` and `interruption` must outlive the reader. `bufferSize` is at least 8.
  RegistryLineReader(InputFile& file, const Interruption& interruption, std::size_t bufferSize = usualBuffer);

  /// Reads the next line. False at the end of the file; an end of line at the very end begins no further line. Throws
  /// HostError, Interrupted too when a line does not end.
  bool Next(RegistryLine& line);

 private:
  void Refill();
  bool LastLine(RegistryLine& line);
  void LongLine(RegistryLine& line);
  std::string_view Unread() const { return {buffer_.data() + position_, filled_ - position_}; }

  InputFile& file_;
  const Interruption& interruption_;
  std::vector<char> buffer_;
  std::vector<char> other_;   // the second buffer, for lines longer than the first
  std::size_t position_ = 0;  // of the first unread byte
  std::size_t filled_ = 0;
  bool atEnd_ = false;
};

/// What a line is made of.
enum class FieldsKind {
  Two,           ///< identifier and name are there
  NoSeparator,   ///< a line without "|": skipped, not counted
  EndlessFirst,  ///< the first field is longer than the reader's buffer, and no identifier
};

struct RegistryFields {
  FieldsKind kind = FieldsKind::NoSeparator;
  std::string_view identifier;
  std::string_view name;  ///< bytes of the file; of a name longer than the buffer its beginning
};

/// The fields of a line, which must stay as it is while they are used.
RegistryFields CutRegistryLine(const RegistryLine& line);

inline constexpr std::size_t longestName = 125;  ///< characters that the customer table holds

/// Appends the first `count` characters of bytes of the file as UTF-8. `utf8`: the file as a whole is; what is not
/// UTF-8 is read as Windows-1252 even then. Blanks, quotes and control characters stay.
void AppendCharacters(std::string& text, std::string_view bytes, std::size_t count, bool utf8);

}  // namespace tolvan
