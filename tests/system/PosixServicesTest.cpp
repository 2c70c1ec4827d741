#include "system/posix/PosixServices.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>

#include "contract/TemporaryFolder.h"
#include "host/HostError.h"
#include "support/FileContent.h"

namespace tolvan {
namespace {

/// Makes `script` the desktop's command while it lives.
class FakeDesktop {
 public:
  explicit FakeDesktop(const std::string& script) {
    if (!script.empty()) {
      test::WriteFile(folder.File("xdg-open"), "#!/bin/sh\n" + script + "\n");
      std::filesystem::permissions(folder.File("xdg-open"), std::filesystem::perms::owner_all);
    }
    setenv("PATH", (folder.Path().string() + ":/bin").c_str(), 1);
  }
  ~FakeDesktop() { setenv("PATH", before.c_str(), 1); }
  FakeDesktop(const FakeDesktop&) = delete;
  FakeDesktop& operator=(const FakeDesktop&) = delete;

  const test::TemporaryFolder folder;

 private:
  const std::string before = std::getenv("PATH");
};

TEST(DesktopOpener, HandsThePathOver) {
  const FakeDesktop desktop("echo \"$1\" > \"$(dirname \"$0\")/seen\"");
  OpenWithDesktop("/un camino/con 'signos' $x.xlsx");
  EXPECT_EQ(test::ReadFile(desktop.folder.File("seen")), "/un camino/con 'signos' $x.xlsx\n");
}

TEST(DesktopOpener, DoesNotWaitForTheProgram) {
  const FakeDesktop desktop("exec sleep 20");
  const auto start = std::chrono::steady_clock::now();
  OpenWithDesktop("/x.xlsx");
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST(DesktopOpener, FailsWhenNothingOpensTheFile) {
  std::signal(SIGPIPE, SIG_IGN);  // as the command and the windows do; the desktop's programs must not inherit it
  for (const char* script : {"exit 3", "kill -PIPE $$", ""}) {
    const FakeDesktop desktop(script);
    EXPECT_THROW(OpenWithDesktop("/x.xlsx"), HostError) << script;
  }
}

}  // namespace
}  // namespace tolvan
