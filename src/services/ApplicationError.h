#pragma once

#include <cstdint>
#include <stdexcept>

namespace tolvan {

/// A refusal that the component raises itself, numbered as automation does: the object-error base plus an offset.
class ApplicationError : public std::runtime_error {
 public:
  ApplicationError(std::int32_t offset, const std::string& description)
      : std::runtime_error(description), offset_(offset) {}

  /// The automation error code, such as 0x800400FF for the offset 255.
  std::int32_t Code() const noexcept { return objectErrorBase + offset_; }

 private:
  static constexpr std::int32_t objectErrorBase = -2147221504;  // 0x80040000

  std::int32_t offset_;
};

}  // namespace tolvan
