// The importers' status on a terminal: a line with counts and the time left. Elsewhere it shows nothing.
#pragma once

#include <iosfwd>
#include <utility>

#include "cli/TerminalColumns.h"
#include "host/UserInterface.h"

namespace tolvan {

class TerminalStatus : public StatusWindow {
 public:
  /// `shown` false shows nothing. `out` must outlive this object.
  TerminalStatus(std::ostream& out, TerminalColumns columns, bool shown)
      : out_(&out), columns_(std::move(columns)), shown_(shown) {}

  std::unique_ptr<StatusDisplay> OpenStatus() override;

 private:
  std::ostream* out_;
  TerminalColumns columns_;
  bool shown_;
};

}  // namespace tolvan
