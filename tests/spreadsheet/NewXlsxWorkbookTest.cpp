#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <vector>

#include "contract/TemporaryFolder.h"
#include "spreadsheet/LocalSpreadsheetApplication.h"
#include "support/ChildProcess.h"
#include "support/FakeHost.h"
#include "support/FileContent.h"
#include "system/posix/PosixFileHelper.h"

namespace tolvan {
namespace {

class NewXlsxWorkbookTest : public testing::Test {
 protected:
  using Cells = std::vector<std::vector<std::string>>;

  /// Of the rows from `first` on, every cell up to the last one that is filled.
  Cells Read(const std::string& name, std::uint32_t first = 1) {
    Cells cells;
    const auto reader = application.OpenFirstWorksheet(name, never);
    for (SheetRow row; reader->NextRow(row);) {
      if (row.number < first) continue;
      cells.resize(row.number - first + 1);
      for (std::uint32_t column = 1; column <= row.cells.back().column; ++column)
        cells.back().push_back(row.At(column).AsText());
    }
    return cells;
  }

  void Write(const std::string& name, int rows) {
    const auto workbook = application.CreateFromTemplate("", 0);
    const NewCell cells[] = {"un texto", 1.5};
    for (int row = 0; row < rows; ++row) workbook->AppendRow(cells);
    workbook->SaveAs(name);
  }

  const test::TemporaryFolder folder;
  const std::string path = folder.File("libro.xlsx");
  const std::string templatePath = TOLVAN_TEMPLATES "/FormatoMigracion001.XLT";
  test::FakeClock clock;
  test::FakeInterruption never;
  PosixFileHelper files{folder.Path().string()};
  LocalSpreadsheetApplication application{clock, files, folder.File("nuevos")};
};

TEST_F(NewXlsxWorkbookTest, EveryValueReadsBack) {
  std::setlocale(LC_ALL, "es_VE.UTF-8");  // a decimal comma, where the machine has that language
  const Cells rows = {{"00123", "Ñandú <&> \"x\"", "_x0041_", "línea\nsegunda", "\x01 control", "_x005F_"},
                      {" blancos ", "", "😀", "_x", "a\tb", "#N/A"}};
  const auto workbook = application.CreateFromTemplate("", 0);
  for (const auto& row : rows) {
    const std::vector<NewCell> cells(row.begin(), row.end());
    workbook->AppendRow(cells);
  }
  const NewCell numbers[] = {10.5, -0.0001, std::monostate(), 1e15, 0.1 + 0.2};
  workbook->AppendRow(numbers);
  std::vector<NewCell> broken(27);  // to the column AA
  broken.back() = std::string_view("\xFF\0z", 3);
  workbook->AppendRow(broken);
  workbook->SaveAs(path);
  std::setlocale(LC_ALL, "C");
  Cells expected = rows;
  expected.push_back({"10.5", "-0.0001", "", "1000000000000000", "0.3"});
  expected.emplace_back(27).back() = "\xEF\xBF\xBDz";
  EXPECT_EQ(Read(path), expected);
}

TEST_F(NewXlsxWorkbookTest, DataBeginsBelowTheHeadingsOfTheTemplate) {
  const auto workbook = application.CreateFromTemplate(templatePath, 4);
  const NewCell cells[] = {"AB12", 2.5};
  workbook->AppendRow(cells);
  workbook->SaveAs(path);
  EXPECT_EQ(Read(path, 5), (Cells{{"AB12", "2.5"}}));
  Cells headings = Read(path);
  headings.pop_back();
  EXPECT_EQ(headings, Read(templatePath));
}

TEST_F(NewXlsxWorkbookTest, TheSameContentOnTheSameDayIsTheSameFile) {
  Write(path, 10);
  Write(folder.File("otro.xlsx"), 10);
  EXPECT_TRUE(test::ReadFile(path) == test::ReadFile(folder.File("otro.xlsx")));
}

TEST_F(NewXlsxWorkbookTest, RefusesWhatNoCellHolds) {
  const auto workbook = application.CreateFromTemplate("", 0);
  const std::string tooLong(32'768, 'x');
  const NewCell refused[] = {std::numeric_limits<double>::infinity(), std::string_view(tooLong)};
  for (const NewCell& cell : refused) EXPECT_THROW(workbook->AppendRow({&cell, 1}), HostError);
  EXPECT_THROW(workbook->SaveAs(folder.File("libro.xls")), HostError);
  EXPECT_THROW(application.CreateFromTemplate(folder.File("falta.XLT"), 4), HostError);
}

TEST_F(NewXlsxWorkbookTest, LeavesTheOldFileWhenTheDeviceIsFull) {
  Write(path, 3);
  const std::string before = test::ReadFile(path);
  ::setenv("TMPDIR", "/no/such/folder", 1);  // no other place takes part
  for (const std::size_t bytes : {2'000U, 20'000U, 100'000U}) {
    const std::string result = test::RunInChild([&]() -> std::string {
      test::LimitFileSizes(bytes);
      try {
        Write(path, 20'000);
      } catch (const HostError&) {
        return "";
      }
      return "no failure";
    });
    EXPECT_EQ(result, "") << bytes;
    EXPECT_TRUE(test::ReadFile(path) == before) << bytes;
  }
  EXPECT_EQ(test::NamesIn(folder.Path()), std::vector<std::string>{"libro.xlsx"});
}

}  // namespace
}  // namespace tolvan
