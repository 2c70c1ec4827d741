#include "fiscal/RegistryLineReader.h"

#include <gtest/gtest.h>

#include <random>

#include "fiscal/RegistryFakes.h"
#include "fiscal/RegistryFields.h"

namespace tolvan {
namespace {

/// The lines as a program without limits cuts them.
std::vector<std::string> PlainLines(std::string content) {
  std::vector<std::string> lines;
  if (content.starts_with("\xEF\xBB\xBF")) content.erase(0, 3);
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
    std::string content = round % 5 == 0 ? "\xEF\xBB\xBF" : "";
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
    ASSERT_EQ(reader.MarkedUtf8(), round % 5 == 0);
  }
}

TEST(RegistryLineReader, StopsWithinALineThatDoesNotEnd) {
  test::MemoryFile file(std::string(1'000, 'x'));
  const test::CountdownInterruption soon(3);
  RegistryLineReader reader(file, soon, 16);
  RegistryLine line;
  EXPECT_THROW(reader.Next(line), HostError);
}

TEST(RegistryFields, CutsNamesAtCharacters) {
  struct Case {
    std::string bytes;
    bool utf8;
    std::string text;
  };
  const std::string accents = "\xD1";  // Ñ
  const std::string marked = "Ñ";
  const auto repeated = [](const std::string& text, int count) {
    std::string all;
    for (; count > 0; --count) all += text;
    return all;
  };
  const Case cases[] = {
      {repeated("A", 200), false, repeated("A", 125)},      {repeated(accents, 126), false, repeated(marked, 125)},
      {repeated(marked, 126), true, repeated(marked, 125)}, {repeated(accents, 126), true, repeated(marked, 125)},
      {"\x81\x80\x9D", false, "\xC2\x81€\xC2\x9D"},         {"  \"A\"  \t", false, "  \"A\"  \t"},
  };
  for (const Case& one : cases) {
    std::string text;
    AppendCharacters(text, one.bytes, longestName, one.utf8);
    EXPECT_EQ(text, one.text);
  }
}

}  // namespace
}  // namespace tolvan
