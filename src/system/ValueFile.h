// A store of named values in one file that several programs read and change: settings, window layouts. Readers need no
// lock, because a change puts a whole new file in the place of the old one; writers take turns.
//
// Its text is made so that a file that is not whole can be recognised:
//
//   tolvan-valores 1
//   IMPEXP/0=0001
//   IMPEXP/6=C:\\Ventas
//   fin 2
//
// One entry a line, sorted by name; the last line counts them and ends with a line feed like every other. In a value
// "\" is written "\\", and control characters and bytes that are not UTF-8 "\x" with two upper-case hexadecimal digits.
// The two halves of a name have the same done to "/" and "=" as well. The parser takes exactly what the writer writes,
// in any order of lines.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "host/SystemServices.h"
#include "host/UserInterface.h"
#include "system/posix/PosixFileHelper.h"

namespace tolvan {

/// Section and key.
using ValueName = std::pair<std::string, std::string>;

using NamedValues = std::map<ValueName, std::string>;

std::string WriteKeyValueText(const NamedValues& values);

/// Nothing when the text is not a whole, undamaged store.
std::optional<NamedValues> ParseKeyValueText(std::string_view text);

/// The file. A damaged one is never overwritten: it is put aside as NAME.danado-AAAAMMDD-HHMMSS, for people to look at.
class ValueFile {
 public:
  /// `path` is absolute. Its folder is made when something is written. `wait` is how long a change waits for another
  /// program, unless the user stops the wait (null: he cannot). What is referred to must outlive the object.
  ValueFile(Clock& clock, std::string path, const Interruption* interruption = nullptr,
            std::chrono::milliseconds wait = std::chrono::milliseconds(5000));

  struct Content {
    NamedValues values;
    bool damaged = false;       ///< then there are no values
    std::string putAsideUnder;  ///< the new path of the damaged file; empty when it could not be moved
  };

  /// What is stored, nothing when there is no file. A damaged file is put aside. Throws HostError when there is a file
  /// and it cannot be read.
  Content Read();

  /// Reads, lets `change` alter the values, and stores them when it did. `fallback` stands for the content of a file
  /// that turns out damaged. The result is what is stored now. Throws HostError; then nothing was written.
  NamedValues Change(const std::function<void(NamedValues&)>& change, const NamedValues& fallback = {});

  const std::string& Path() const { return path_; }

 private:
  /// Nothing when the file is damaged; no values when there is none.
  std::optional<NamedValues> ReadOnce();

  /// The new path, empty when the file could not be moved. The lock must be held.
  std::string PutAside();

  void Write(const NamedValues& values);
  std::string LockPath() const { return path_ + ".lock"; }

  PosixFileHelper files_{"/"};  // its own and unguarded: what it writes is what others must not
  Clock& clock_;
  std::string path_;
  const Interruption* interruption_;
  std::chrono::milliseconds wait_;
};

}  // namespace tolvan
