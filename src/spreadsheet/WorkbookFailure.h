// How the readers tell that a workbook or another zip is not what it should be.
#pragma once

#include <new>
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

/// Runs a step of reading; what it throws comes out with the path as its context.
template <class Step>
auto WithPath(const std::string& path, Step step) {
  try {
    return step();
  } catch (const HostError& error) {
    throw HostError(error.Kind(), error.what(), path, error.NativeCode());
  } catch (const std::bad_alloc&) {
    throw HostError(HostErrorKind::Failed, "no hay memoria suficiente", path);
  }
}

}  // namespace tolvan
