// A store of named values in one file that several programs read and change. Readers need no lock, because a change
// puts a whole new file in the place of the old one; writers take turns.
//
// A damaged file is never overwritten: it is put aside as NAME.danado-AAAAMMDD-HHMMSS, for people to look at.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "host/SystemServices.h"
#include "host/UserInterface.h"
#include "system/KeyValueText.h"
#include "system/posix/PosixFileHelper.h"

namespace tolvan {

class ValueFile {
 public:
  /// `path` is absolute. Its folder is made when something is written. `wait` is how long a change waits for another
  /// program, unless the user does not want to (null: he is not asked). What is referred to must outlive the object.
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
