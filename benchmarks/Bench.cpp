#include "Bench.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace tolvan::bench {
namespace {

double Milliseconds(const Work& work) {
  work.prepare();
  const auto start = std::chrono::steady_clock::now();
  work.run();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

}  // namespace

bool Compare(const std::string& name, const Work& job, const Work& reference, double aim, int rounds) {
  std::vector<double> jobTimes;
  std::vector<double> referenceTimes;
  for (int round = 0; round <= rounds; ++round) {
    const double jobTime = Milliseconds(job);
    const double referenceTime = Milliseconds(reference);
    if (round == 0) continue;
    jobTimes.push_back(jobTime);
    referenceTimes.push_back(referenceTime);
  }
  const double jobTime = Median(jobTimes);
  const double referenceTime = Median(referenceTimes);
  const double ratio = jobTime / referenceTime;
  std::printf("%s: %.3f ms, reference: %.3f ms, ratio %.4f (aim %.4g)\n", name.c_str(), jobTime, referenceTime, ratio,
              aim);
  return ratio <= aim;
}

}  // namespace tolvan::bench
