// The controls of the host's customer form that a fiscal identity fills. Every call may throw.
#pragma once

#include <cstdint>
#include <string_view>

namespace tolvan {

class TextBoxControl {
 public:
  virtual ~TextBoxControl() = default;
  virtual void SetText(std::string_view text) = 0;
};

class ListControl {
 public:
  virtual ~ListControl() = default;

  /// Selects the entry at `index`, from 0.
  virtual void SetListIndex(std::int32_t index) = 0;
};

}  // namespace tolvan
