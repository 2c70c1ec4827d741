// Times a job beside its reference in the same run, because machines are noisy: both alternate, round after round, and
// the medians are compared. What a round needs done before is done outside the time.
#pragma once

#include <functional>
#include <string>

namespace tolvan::bench {

struct Work {
  std::function<void()> run;
  std::function<void()> prepare = [] {};
};

/// One round of each is run first and not counted, so that both find a warm cache. Prints
/// "name: X ms, reference: Y ms, ratio R (aim A)" and returns whether the ratio is at most `aim`. `rounds` is odd.
bool Compare(const std::string& name, const Work& job, const Work& reference, double aim, int rounds = 5);

}  // namespace tolvan::bench
