#include "fiscal/RegistryLines.h"

#include <gtest/gtest.h>

#include <random>

#include "support/RegistryRun.h"

namespace tolvan {
namespace {

/// The lines as a program without limits cuts them.
std::vector<std::string> PlainLines(std::string content) {
  std::vector<std::string> lines;
  while (!content.empty()) {
    const std::size_t end = content.find('\n');
    std::string line = content.substr(0, end);
    content.erase(0, end == std::string::npos ? end : end + 1);
    if (line.ends_with('\r')) line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

TEST(RegistryLineReader, GivesTheSameLinesWhateverItsBuffer) {
  std::mt19937 random(11);
  const std::string letters = "ab|\r\n\n";
  for (int round = 0; round < 3'000; ++round) {
    std::string content;
    for (std::size_t left = random() % 60; left > 0; --left) content += letters[random() % letters.size()];
    const std::vector<std::string> expected = PlainLines(content);
    const std::size_t bufferSize = 8 + random() % 20;
    test::MemoryFile file(content);
    RegistryLineReader reader(file, test::nobodyInterrupts, bufferSize);
    RegistryLine line;
    for (const std::string& one : expected) {
      ASSERT_TRUE(reader.Next(line)) << content;
      ASSERT_EQ(line.length, one.size()) << content;
      ASSERT_EQ(line.text, one.substr(0, line.text.size())) << content;
      ASSERT_GE(line.text.size() + 1, std::min(one.size(), bufferSize)) << content;
      ASSERT_EQ(line.separatorBeyond, one.find('|', line.text.size()) != std::string::npos) << content;
    }
    ASSERT_FALSE(reader.Next(line)) << content;
  }
}

TEST(RegistryLineReader, StopsWithinALineThatDoesNotEnd) {
  test::MemoryFile file(std::string(1'000, 'x'));
  const test::FakeInterruption soon = test::StopsAt(3);
  RegistryLineReader reader(file, soon, 16);
  RegistryLine line;
  EXPECT_THROW(reader.Next(line), HostError);
}

}  // namespace
}  // namespace tolvan
