#pragma once

#include <string>

#include "host/UserInterface.h"

namespace tolvan::test {

/// Ends every wait as soon as he is told of it.
struct ImpatientUser final : Interruption {
  bool Requested() const noexcept override { return !told.empty(); }
  void WaitBegins(std::string_view text) const noexcept override { told += text; }
  void WaitEnds() const noexcept override { told += " Ya."; }
  mutable std::string told;
};

}  // namespace tolvan::test
