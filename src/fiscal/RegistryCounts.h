#pragma once

#include <cstdint>

namespace tolvan {

/// The outcome of a registry import.
struct RegistryCounts {
  std::int32_t newCustomers = 0;

  /// Deliberately one more than the new customers at the time of the last line whose customer was on file already; 0
  /// when there was no such line. It is no count of lines.
  std::int32_t notRegistered = 0;

  std::int32_t errors = 0;   ///< lines whose identifier is not valid or whose statement failed
  std::int64_t lines = 0;    ///< every line read, empty ones too
  std::int64_t present = 0;  ///< lines whose customer was on file already
  std::int64_t skipped = 0;  ///< lines that are not empty and hold no "|"
};

}  // namespace tolvan
