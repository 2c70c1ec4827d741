// How the readers tell that a workbook is not what it should be.
#pragma once

#include <string>

#include "host/HostError.h"

namespace tolvan {

/// Throws HostError Damaged. `cause` is Spanish, begins in lower case and has no point at its end.
[[noreturn]] inline void FailDamaged(const std::string& cause) {
  throw HostError(HostErrorKind::Damaged, cause);
}

/// The cause of a value past one of WorkbookLimits.h: `what` as in "el texto de una celda".
[[noreturn]] inline void FailTooBig(const std::string& what) {
  FailDamaged(what + " supera el límite admitido");
}

}  // namespace tolvan
