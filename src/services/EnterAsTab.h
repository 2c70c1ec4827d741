#pragma once

#include <cstdint>

namespace tolvan {

/// Where the key presses of a window go.
class KeyboardTarget {
 public:
  virtual ~KeyboardTarget() = default;

  /// Moves the focus to the next control, as the Tab key does.
  virtual void PressTab() = 0;
};

/// Enter (13) becomes 0, and a Tab goes to the target instead. Other keys stay as they are.
inline void EnterAsTab(std::int16_t& keyCode, KeyboardTarget& target) {
  constexpr std::int16_t enter = 13;
  if (keyCode != enter) return;
  keyCode = 0;
  target.PressTab();
}

}  // namespace tolvan
