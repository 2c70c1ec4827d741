// Who wants to know what became of the registry's lines while they are imported.
#pragma once

#include <cstdint>
#include <string_view>

namespace tolvan {

struct RegistryCounts;

enum class RejectionKind {
  Skipped,            ///< no "|" in it; the line is counted nowhere
  InvalidIdentifier,  ///< counts as an error, as the two below
  UnusableName,       ///< a NUL in the name, which no statement can hold
  StatementFailed,
};

struct Rejection {
  std::int64_t line = 0;  ///< from 1, empty lines counted
  RejectionKind kind = RejectionKind::Skipped;
  std::string_view detail;   ///< the database's message for StatementFailed, else empty
  std::string_view excerpt;  ///< the beginning of the line as UTF-8
};

class RegistryObserver {
 public:
  virtual ~RegistryObserver() = default;

  /// A line that was not taken. They come in the order of the file. What it throws ends the import.
  virtual void LineRejected(const Rejection& rejection) = 0;

  /// What the counts say is in the database for good.
  virtual void BatchKept(const RegistryCounts& counts) = 0;
};

}  // namespace tolvan
