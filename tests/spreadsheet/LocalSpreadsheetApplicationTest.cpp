// What reading a workbook means while something happens to it, and that what is written reads back. What is read of
// which workbook, and what others read of ours, is judged by check_workbooks.py.
#include "spreadsheet/LocalSpreadsheetApplication.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <limits>

#include "contract/TemporaryFolder.h"
#include "spreadsheet/WorkbookTables.h"
#include "spreadsheet/ZipPackage.h"
#include "support/ChildProcess.h"
#include "support/FakeHost.h"
#include "support/FileContent.h"
#include "support/ThrownBy.h"
#include "system/posix/PosixFileHelper.h"

namespace tolvan {
namespace {

using testing::HasSubstr;

constexpr int manyRows = 20'000;  // more than any buffer holds

class LocalSpreadsheetApplicationTest : public testing::Test {
 protected:
  using Cells = std::vector<std::vector<std::string>>;

  void Write(const std::string& name, int rows = manyRows) {
    const auto workbook = application.CreateFromTemplate("", 0);
    for (int row = 0; row < rows; ++row) {
      const std::string code = "COD" + std::to_string(row);
      const NewCell cells[] = {std::string_view(code), row + 0.25};
      workbook->AppendRow(cells);
    }
    workbook->SaveAs(name);
  }

  /// Of the rows from `first` on, every cell up to the last one that is filled.
  Cells Read(const std::string& name, std::uint32_t first = 1) {
    Cells cells;
    const auto reader = application.OpenFirstWorksheet(name, interruption);
    for (SheetRow row; reader->NextRow(row);) {
      if (row.number < first) continue;
      cells.resize(row.number - first + 1);
      for (std::uint32_t column = 1; column <= row.cells.back().column; ++column)
        cells.back().push_back(row.At(column).AsText());
    }
    return cells;
  }

  std::string SheetXml() {
    const WorkbookFile file(path);
    std::string xml(1 << 20, '\0');
    xml.resize(ZipPackage(file).Open("xl/worksheets/sheet1.xml", xml.size())->Read(xml));
    return xml;
  }

  HostErrorKind FailureOf(WorksheetReader& reader) {
    const HostError error = test::ThrownBy([&] {
      for (SheetRow row; reader.NextRow(row);) ++rowsRead;
    });
    EXPECT_EQ(error.Context(), path);
    return error.Kind();
  }

  HostErrorKind FailureToOpen(const std::string& name) {
    return test::KindThrownBy([&] { application.OpenFirstWorksheet(name, interruption); });
  }

  const test::TemporaryFolder folder;
  const std::string path = folder.File("libro.xlsx");
  const std::string templatePath = TOLVAN_TEMPLATES "/FormatoMigracion001.XLT";
  test::FakeClock clock;
  test::FakeInterruption interruption;
  PosixFileHelper files{folder.Path().string()};
  LocalSpreadsheetApplication application{clock, files, folder.File("nuevos")};
  int rowsRead = 0;
};

TEST_F(LocalSpreadsheetApplicationTest, StopsReadingWhenInterrupted) {
  Write(path);
  const auto reader = application.OpenFirstWorksheet(path, interruption);
  SheetRow row;
  ASSERT_TRUE(reader->NextRow(row));
  interruption.requested = true;
  EXPECT_EQ(FailureOf(*reader), HostErrorKind::Interrupted);
  EXPECT_EQ(FailureToOpen(path), HostErrorKind::Interrupted);
}

TEST_F(LocalSpreadsheetApplicationTest, ReadsOnWhenTheFileIsReplacedAndFailsWhenItIsChanged) {
  Write(path);
  const auto reader = application.OpenFirstWorksheet(path, interruption);
  std::filesystem::remove(path);
  Write(path);
  const auto truncated = application.OpenFirstWorksheet(path, interruption);
  for (SheetRow row; reader->NextRow(row); ++rowsRead) {
    EXPECT_EQ(row.At(1).text, "COD" + std::to_string(rowsRead));
    EXPECT_EQ(row.At(2).number, rowsRead + 0.25);
  }
  EXPECT_EQ(std::exchange(rowsRead, 0), manyRows);
  std::filesystem::resize_file(path, std::filesystem::file_size(path) / 2);
  EXPECT_EQ(FailureOf(*truncated), HostErrorKind::Damaged);
  EXPECT_LT(rowsRead, manyRows);
}

TEST_F(LocalSpreadsheetApplicationTest, RefusesWhatIsNoReadableFile) {
  Write(path, 1);
  EXPECT_EQ(FailureToOpen(folder.File("falta.xlsx")), HostErrorKind::Unreachable);
  EXPECT_EQ(FailureToOpen(path + "/dentro.xlsx"), HostErrorKind::Unreachable);
  EXPECT_EQ(FailureToOpen(folder.Path().string()), HostErrorKind::Damaged);
  ASSERT_EQ(mkfifo(folder.File("tubo").c_str(), 0600), 0);
  EXPECT_EQ(FailureToOpen(folder.File("tubo")), HostErrorKind::Damaged);  // at once: nobody writes into it
  EXPECT_EQ(test::RunWithoutPrivileges(
                [&] { return FailureToOpen("/etc/shadow") == HostErrorKind::Access ? std::string() : "otra falla"; }),
            "");
}

TEST_F(LocalSpreadsheetApplicationTest, EveryValueReadsBack) {
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

TEST_F(LocalSpreadsheetApplicationTest, DataBeginsBelowTheHeadingsWhichStayInSight) {
  const NewCell cells[] = {"AB12", 2.5};
  const auto workbook = application.CreateFromTemplate(templatePath, 4);
  workbook->AppendRow(cells);
  workbook->SaveAs(path);
  EXPECT_EQ(Read(path, 5), (Cells{{"AB12", "2.5"}}));
  Cells headings = Read(path);
  headings.pop_back();
  EXPECT_EQ(headings, Read(templatePath));
  EXPECT_THAT(SheetXml(),
              HasSubstr("<pane ySplit=\"4\" topLeftCell=\"A5\" activePane=\"bottomLeft\" state=\"frozen\"/>"));

  const NewCell names[] = {"Código", "ñandúñandúñandúñandú"};  // a column is as wide as its characters, not its bytes
  const auto list = application.CreateFromTemplate("", 0);
  list->AppendRow(names, NewRowStyle::Heading);
  list->AppendRow(cells);
  list->SaveAs(path);
  EXPECT_THAT(SheetXml(), HasSubstr("<pane ySplit=\"1\" topLeftCell=\"A2\""));
  EXPECT_THAT(SheetXml(), HasSubstr("<col min=\"2\" max=\"2\" width=\"22.7109375\" customWidth=\"1\"/>"));
  Write(path, 1);
  EXPECT_THAT(SheetXml(), testing::Not(HasSubstr("<pane")));
}

TEST_F(LocalSpreadsheetApplicationTest, TheSameContentOnTheSameDayIsTheSameFile) {
  Write(path, 10);
  Write(folder.File("otro.xlsx"), 10);
  EXPECT_TRUE(test::ReadFile(path) == test::ReadFile(folder.File("otro.xlsx")));
}

TEST_F(LocalSpreadsheetApplicationTest, RefusesWhatNoCellHolds) {
  const auto workbook = application.CreateFromTemplate("", 0);
  std::string longest(32'767, 'x');
  std::string emoji(65'532, 'x');  // 16,383 characters of four bytes and two UTF-16 units
  for (std::size_t at = 0; at < emoji.size(); at += 4) emoji.replace(at, 4, "😀");
  for (const std::string* text : {&longest, &emoji}) {
    const NewCell held = std::string_view(*text);
    workbook->AppendRow({&held, 1});
  }
  longest += "ñ";
  emoji += "😀";
  const NewCell refused[] = {std::numeric_limits<double>::infinity(), std::string_view(longest),
                             std::string_view(emoji)};
  for (const NewCell& cell : refused) EXPECT_THROW(workbook->AppendRow({&cell, 1}), HostError);
  for (int row = 3; row <= 1'048'576; ++row) workbook->AppendRow({});
  EXPECT_THROW(workbook->AppendRow({}), HostError);
  EXPECT_THROW(workbook->AppendRow(std::vector<NewCell>(16'385)), HostError);
  EXPECT_THROW(workbook->SaveAs(folder.File("libro.xls")), HostError);
  EXPECT_THROW(application.CreateFromTemplate(folder.File("falta.XLT"), 4), HostError);
}

TEST_F(LocalSpreadsheetApplicationTest, LeavesTheOldFileWhenTheDeviceIsFull) {
  Write(path, 3);
  const std::string before = test::ReadFile(path);
  ::setenv("TMPDIR", "/no/such/folder", 1);  // no other place takes part
  for (const std::size_t bytes : {2'000U, 20'000U, 100'000U}) {
    const std::string result = test::RunInChild([&]() -> std::string {
      test::LimitFileSizes(bytes);
      return test::KindThrownBy([&] { Write(path); }) == HostErrorKind::Full ? "full" : "other";
    });
    EXPECT_EQ(result, "full") << bytes;
    EXPECT_TRUE(test::ReadFile(path) == before) << bytes;
  }
  EXPECT_EQ(test::NamesIn(folder.Path()), std::vector<std::string>{"libro.xlsx"});
}

TEST(ShowsDate, KnowsDatesFromNumbers) {
  for (const char* number :
       {"General", "GENERAL", "#,##0.00", "0.00E+00", "@", "", "\"días\" 0", "0\\d", "0_d*s", "[Red]0.00;[Blue]-0.00",
        "[$Bs.-200A] #,##0.00", "[>=100]0;0", "0;dd/mm/yyyy", "\"sin fin", "[sin fin", "0\\"}) {
    EXPECT_FALSE(ShowsDate(number)) << number;
  }
  for (const char* date :
       {"dd/mm/yyyy", "D-MMM", "[$-409]h:mm AM/PM;@", "[hh]:mm", "[ss].00", "mm:ss.0", "General\" a las \"hh"}) {
    EXPECT_TRUE(ShowsDate(date)) << date;
  }
}

}  // namespace
}  // namespace tolvan
