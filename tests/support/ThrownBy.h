// What a call fails with, for tests.
#pragma once

#include <gtest/gtest.h>

#include "host/HostError.h"

namespace tolvan::test {

/// Runs `work` and returns the HostError it throws. When it throws none the test fails, and the result says so.
template <class Work>
HostError ThrownBy(const Work& work) {
  try {
    work();
  } catch (const HostError& error) {
    return error;
  }
  ADD_FAILURE() << "nothing was thrown";
  return {HostErrorKind::Failed, "nothing was thrown"};
}

template <class Work>
HostErrorKind KindThrownBy(const Work& work) {
  return ThrownBy(work).Kind();
}

}  // namespace tolvan::test
