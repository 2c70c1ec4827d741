#include "RegistryGenerator.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <numeric>
#include <utility>
#include <vector>

#include "cli/demo/DemoData.h"

namespace tolvan::bench {
namespace {

std::ofstream Create(const std::string& path) {
  return std::ofstream(path, std::ios::binary | std::ios::trunc);
}

std::vector<std::uint32_t> Shuffled(std::uint32_t count, DemoRandom& random) {
  std::vector<std::uint32_t> numbers(count);
  std::iota(numbers.begin(), numbers.end(), 0U);
  for (std::uint32_t left = count; left > 1; --left) std::swap(numbers[left - 1], numbers[random.Below(left)]);
  return numbers;
}

}  // namespace

void WriteRegistry(std::uint32_t lines, const std::string& registryPath, const std::string& rowsPath) {
  DemoRandom random(20'240'131);
  std::ofstream registry = Create(registryPath);
  std::ofstream rows = Create(rowsPath);
  for (const std::uint32_t number : Shuffled(lines, random)) {
    const DemoTaxpayer taxpayer = MakeDemoTaxpayer(number, random);
    registry << RegistryLineOf(taxpayer, random);
    const char personeria = taxpayer.code.size() == 9 ? '1' : '0';
    rows << taxpayer.code << '|' << taxpayer.name << '|' << taxpayer.code << "|1|" << personeria << "|0\n";
  }
  registry.close();
  rows.close();
  if (registry && rows) return;
  std::fprintf(stderr, "cannot write %s\n", registryPath.c_str());
  std::exit(2);
}

}  // namespace tolvan::bench
