#include "cli/DemoStoreFixture.h"

#include "database/sql/SqlScript.h"
#include "database/sqlite/SqliteDatabaseServices.h"
#include "spreadsheet/LocalSpreadsheetApplication.h"
#include "system/posix/PosixFileHelper.h"

namespace tolvan::test {

DemoStoreFixture::DemoStoreFixture() {
  runner.Run({"demo", places.folder});
  runner.host = places.host;
}

void DemoStoreFixture::Expect(const std::vector<ExpectedEnd>& calls) {
  for (const auto& [words, code, message] : calls) {
    SCOPED_TRACE(::testing::PrintToString(words));
    const CommandResult result = runner.Run(words);
    EXPECT_EQ(result.code, code) << result.messages;
    EXPECT_THAT(result.messages, ::testing::HasSubstr(message));
  }
}

nlohmann::ordered_json DemoStoreFixture::Json(std::vector<std::string> words, int code) {
  words.insert(words.begin(), "--json");
  const CommandResult result = runner.Run(words);
  EXPECT_EQ(result.code, code) << result.messages;
  return nlohmann::ordered_json::parse(result.output);
}

void DemoStoreFixture::Execute(const std::string& script) const {
  SqliteDatabaseServices database({.path = places.database});
  RunSqlScript(database, script);
}

std::string DemoStoreFixture::Query(const std::string& sql) const {
  SqliteDatabaseServices database({.path = places.database});
  std::string values;
  for (const auto rows = database.OpenRecordset(SqlStatement(sql)); !rows->AtEnd(); rows->MoveNext()) {
    for (std::size_t index = 0; index < rows->FieldCount(); ++index) values += TextOf(rows->Value(index)) + ",";
  }
  return values;
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
