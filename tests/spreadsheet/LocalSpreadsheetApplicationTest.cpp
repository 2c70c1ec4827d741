// What reading a workbook means while something happens to it. What is read of which workbook is judged by
// check_workbooks.py.
#include "spreadsheet/LocalSpreadsheetApplication.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "contract/TemporaryFolder.h"
#include "support/ChildProcess.h"
#include "support/FakeHost.h"
#include "support/ThrownBy.h"
#include "system/posix/PosixFileHelper.h"

namespace tolvan {
namespace {

constexpr int rowsWritten = 20'000;  // more than any buffer holds

class Reading : public testing::Test {
 protected:
  Reading() {
    const auto workbook = application.CreateFromTemplate("", 0);
    for (int row = 0; row < rowsWritten; ++row) {
      const std::string code = "COD" + std::to_string(row);
      const NewCell cells[] = {std::string_view(code), row + 0.25};
      workbook->AppendRow(cells);
    }
    workbook->SaveAs(path);
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
  const std::string path = folder.File("precios.xlsx");
  test::FakeClock clock;
  test::FakeInterruption interruption;
  PosixFileHelper files{folder.Path().string()};
  LocalSpreadsheetApplication application{clock, files, folder.File("nuevos")};
  int rowsRead = 0;
};

TEST_F(Reading, StopsWhenInterrupted) {
  const auto reader = application.OpenFirstWorksheet(path, interruption);
  SheetRow row;
  ASSERT_TRUE(reader->NextRow(row));
  interruption.requested = true;
  EXPECT_EQ(FailureOf(*reader), HostErrorKind::Interrupted);
  EXPECT_EQ(FailureToOpen(path), HostErrorKind::Interrupted);
}

TEST_F(Reading, GoesOnWhenTheFileIsDeletedOrReplaced) {
  const auto reader = application.OpenFirstWorksheet(path, interruption);
  std::filesystem::remove(path);
  std::ofstream(path) << "otro";
  SheetRow row;
  while (reader->NextRow(row)) {
    EXPECT_EQ(row.At(1).text, "COD" + std::to_string(rowsRead));
    EXPECT_EQ(row.At(2).number, rowsRead + 0.25);
    ++rowsRead;
  }
  EXPECT_EQ(rowsRead, rowsWritten);
}

TEST_F(Reading, FailsWhenTheFileIsChangedInPlace) {
  const auto size = std::filesystem::file_size(path);
  const auto truncated = application.OpenFirstWorksheet(path, interruption);
  std::filesystem::resize_file(path, size / 2);
  EXPECT_EQ(FailureOf(*truncated), HostErrorKind::Damaged);
  EXPECT_LT(rowsRead, rowsWritten);
}

TEST_F(Reading, RefusesWhatIsNoReadableFile) {
  EXPECT_EQ(FailureToOpen(folder.File("falta.xlsx")), HostErrorKind::Unreachable);
  EXPECT_EQ(FailureToOpen(path + "/dentro.xlsx"), HostErrorKind::Unreachable);
  EXPECT_EQ(FailureToOpen(folder.Path().string()), HostErrorKind::Damaged);
  ASSERT_EQ(mkfifo(folder.File("tubo").c_str(), 0600), 0);
  EXPECT_EQ(FailureToOpen(folder.File("tubo")), HostErrorKind::Damaged);  // at once: nobody writes into it
  std::filesystem::permissions(path, std::filesystem::perms::none);
  EXPECT_EQ(test::RunWithoutPrivileges(
                [&] { return FailureToOpen("/etc/shadow") == HostErrorKind::Access ? std::string() : "otra falla"; }),
            "");
}

}  // namespace
}  // namespace tolvan
