// The lines of the registry that were not taken, as a text for people and scripts: number of the line, cause and the
// line's beginning, with tabs between, one line each. UTF-8; described in docs/registro-rnc.md.
#pragma once

#include <string>

#include "fiscal/RegistryObserver.h"
#include "host/FileHelper.h"

namespace tolvan {

/// One line of the report with its LF. Control characters of the excerpt are shown as blanks.
std::string RejectionLine(const Rejection& rejection);

/// Writes the report while the import runs.
class RejectionReport final : public RegistryObserver {
 public:
  /// `file` must outlive the report.
  explicit RejectionReport(WholeFile& file) : file_(file) {}

  /// Throws what the file throws.
  void LineRejected(const Rejection& rejection) override;
  void BatchKept(const RegistryCounts&) override {}

  /// Writes what is left and puts the file in its place.
  void Commit();

 private:
  WholeFile& file_;
  std::string pending_;
};

/// Keeps the report in memory for a window that asks for its place only afterwards.
class RejectionList final : public RegistryObserver {
 public:
  /// Bytes of text that are kept; what comes later is counted only.
  static constexpr std::size_t limit = 32U << 20;

  void LineRejected(const Rejection& rejection) override;
  void BatchKept(const RegistryCounts&) override {}

  bool IsEmpty() const { return text_.empty(); }

  /// Throws HostError.
  void SaveTo(FileHelper& files, std::string_view path) const;

 private:
  std::string text_;
  std::int64_t notKept_ = 0;
};

}  // namespace tolvan
