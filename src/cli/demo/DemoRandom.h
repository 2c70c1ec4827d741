#pragma once

#include <cstdint>

namespace tolvan {

/// A small generator whose sequence is the same on every machine, for content that must be the same for the same day.
/// The algorithm is splitmix64.
class DemoRandom {
 public:
  explicit DemoRandom(std::uint64_t seed) : state_(seed) {}

  /// Evenly from 0 to `bound` - 1; `bound` is above 0. The bias of the remainder does not matter here.
  std::uint32_t Below(std::uint32_t bound) { return static_cast<std::uint32_t>(Next() % bound); }

  /// True `percent` times out of a hundred.
  bool Chance(std::uint32_t percent) { return Below(100) < percent; }

 private:
  std::uint64_t Next() {
    std::uint64_t value = state_ += 0x9E3779B97F4A7C15;
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EB;
    return value ^ (value >> 31);
  }

  std::uint64_t state_;
};

}  // namespace tolvan
