// The texts that cells refer to by number, kept in few large blocks: no allocation for each text, and a view of one
// stays valid as long as the table.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tolvan {

class SharedStrings {
 public:
  /// Appends a text; it gets the next number, from 0. Throws HostError Damaged past the limits.
  void Add(std::string_view text);

  std::size_t Count() const { return entries_.size(); }

  /// `index` is below Count.
  std::string_view At(std::size_t index) const {
    const Entry entry = entries_[index];
    return std::string_view(blocks_[entry.block]).substr(entry.offset, entry.length);
  }

 private:
  struct Entry {
    std::uint32_t offset : 20;
    std::uint32_t block : 12;
    std::uint32_t length;
  };

  std::vector<std::string> blocks_;  // with room from the start, so that their text never moves
  std::vector<Entry> entries_;
};

}  // namespace tolvan
