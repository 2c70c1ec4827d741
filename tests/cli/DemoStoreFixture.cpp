#include "cli/DemoStoreFixture.h"

#include <cstdio>

#include "spreadsheet/LocalSpreadsheetApplication.h"
#include "system/posix/PosixFileHelper.h"

namespace tolvan::test {

std::string FilesIn(const std::string& folder) {
  return OutputOf("cd '" + folder + "' && find . | sort && find . -type f -exec sha256sum {} + | sort");
}

std::string OutputOf(const std::string& commandLine) {
  FILE* const pipe = ::popen(commandLine.c_str(), "r");
  std::string output;
  for (int byte = 0; (byte = std::fgetc(pipe)) != EOF;) output += static_cast<char>(byte);
  ::pclose(pipe);
  return output;
}

DemoStoreFixture::DemoStoreFixture() {
  runner.Run({"demo", places.folder});
  runner.host = places.host;
}

void DemoStoreFixture::Expect(const std::vector<std::string>& words, int code, const std::string& message,
                              const std::optional<std::string>& output) {
  SCOPED_TRACE(::testing::PrintToString(words));
  const CommandResult result = runner.Run(words);
  EXPECT_EQ(result.code, code) << result.messages;
  EXPECT_THAT(result.messages, ::testing::HasSubstr(message));
  EXPECT_EQ(result.output, output.value_or(result.output));
}

nlohmann::ordered_json DemoStoreFixture::Json(std::vector<std::string> words, int code) {
  words.insert(words.begin(), "--json");
  const CommandResult result = runner.Run(words);
  EXPECT_EQ(result.code, code) << result.messages;
  return nlohmann::ordered_json::parse(result.output);
}

std::string DemoStoreFixture::Workbook(const std::string& name, std::size_t headings,
                                       const std::vector<std::vector<NewCell>>& rows) {
  PosixFileHelper files(folder.File(""));
  LocalSpreadsheetApplication application(runner.clock, files, folder.File("nuevos"));
  const auto workbook = application.CreateFromTemplate({}, 0);
  for (std::size_t row = 0; row < headings; ++row)
    workbook->AppendRow(std::vector<NewCell>{std::string_view("titulo")});
  for (const std::vector<NewCell>& row : rows) workbook->AppendRow(row);
  std::string path = folder.File(name);
  workbook->SaveAs(path);
  return path;
}

}  // namespace tolvan::test
