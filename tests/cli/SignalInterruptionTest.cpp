#include "cli/SignalInterruption.h"

#include <gtest/gtest.h>

#include <csignal>
#include <iostream>

#include "support/ChildProcess.h"

namespace tolvan {
namespace {

std::string AfterSignals(int signal, int times, void (*before)(int)) {
  return test::RunInChild([&]() -> std::string {
    std::signal(signal, before);
    const SignalInterruption interruption(std::cerr, false);
    for (int time = 0; time < times; ++time) std::raise(signal);
    return interruption.Requested() ? "stop" : "go on";
  });
}

TEST(SignalInterruption, IsAskedForBySignalsThatWereNotIgnoredBefore) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    EXPECT_EQ(AfterSignals(signal, 1, SIG_DFL), "stop") << signal;
    EXPECT_EQ(AfterSignals(signal, 1, SIG_IGN), "go on") << signal;
  }
  EXPECT_EQ(AfterSignals(SIGHUP, 2, SIG_DFL), "stop");
  EXPECT_NE(AfterSignals(SIGINT, 2, SIG_DFL), "stop") << "the second one does not wait";
}

}  // namespace
}  // namespace tolvan
