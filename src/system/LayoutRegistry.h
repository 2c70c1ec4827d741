// The machine-wide registry of AppServices as a ValueFile: where windows were left. Nothing in it is worth a message,
// so failures of any kind end in the default and in nothing written.
#pragma once

#include <cstdint>
#include <string_view>

#include "system/ValueFile.h"

namespace tolvan {

class LayoutRegistry {
 public:
  explicit LayoutRegistry(ValueFile file) : file_(std::move(file)) {}

  std::int32_t Read(std::string_view section, std::string_view key, std::int32_t defaultValue) noexcept;
  void Write(std::string_view section, std::string_view key, std::int32_t value) noexcept;

 private:
  ValueFile file_;
};

}  // namespace tolvan
