// What a registry import reports: its counts, and the lines that it did not take. The latter become a text for people
// and scripts: number of the line, cause and the line's beginning, with tabs between, one line each. UTF-8; described
// in docs/registro-rnc.md.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "host/FileHelper.h"

namespace tolvan {

/// How far an import came; what is counted as new is in the database for good.
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

/// Why a line was not taken.
enum class RejectionKind {
  Skipped,            ///< no "|" in it; the line is counted nowhere
  InvalidIdentifier,  ///< counts as an error, as the two below
  UnusableName,       ///< a NUL in the name, which no statement can hold
  StatementFailed,
};

/// A line that was not taken. The texts are valid during the call that hands it over.
struct Rejection {
  std::int64_t line = 0;  ///< from 1, empty lines counted
  RejectionKind kind = RejectionKind::Skipped;
  std::string_view detail;   ///< the database's message for StatementFailed, else empty
  std::string_view excerpt;  ///< the beginning of the line as UTF-8
};

/// Takes the rejected lines while the import runs.
class RejectionTarget {
 public:
  virtual ~RejectionTarget() = default;

  /// Called in the order of the file. What it throws ends the import.
  virtual void LineRejected(const Rejection& rejection) = 0;
};

/// One line of the report with its LF. Control characters of the excerpt are shown as blanks.
std::string RejectionLine(const Rejection& rejection);

/// Writes the report while the import runs.
class RejectionReport final : public RejectionTarget {
 public:
  /// `file` must outlive the report.
  explicit RejectionReport(WholeFile& file) : file_(file) {}

  /// Throws what the file throws.
  void LineRejected(const Rejection& rejection) override;

  /// Writes what is left and puts the file in its place.
  void Commit();

 private:
  WholeFile& file_;
  std::string pending_;
};

/// Keeps the report in memory for a window that asks for its place only afterwards.
class RejectionList final : public RejectionTarget {
 public:
  /// Bytes of text that are kept; what comes later is counted only.
  static constexpr std::size_t limit = 32U << 20;

  void LineRejected(const Rejection& rejection) override;

  bool IsEmpty() const { return text_.empty(); }

  /// Throws HostError.
  void SaveTo(FileHelper& files, std::string_view path) const;

 private:
  std::string text_;
  std::int64_t notKept_ = 0;
};

}  // namespace tolvan
