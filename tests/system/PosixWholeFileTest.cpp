#include "system/posix/PosixFiles.h"

#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>

#include "contract/TemporaryFolder.h"
#include "support/ChildProcess.h"
#include "support/FileContent.h"
#include "support/ThrownBy.h"

namespace tolvan {
namespace {

using test::NamesIn;
using test::ReadFile;
using Names = std::vector<std::string>;

void Put(const std::string& path, const std::string& content) {
  PosixWholeFile file(path);
  file.Write(content);
  file.Commit();
}

TEST(PosixWholeFile, IsWholeOrAbsent) {
  const test::TemporaryFolder folder;
  const std::string path = folder.File("ventas.txt");
  {
    PosixWholeFile file(path);
    file.Write(std::string(1'000'000, 'x'));
    EXPECT_FALSE(std::filesystem::exists(path));
  }
  EXPECT_TRUE(NamesIn(folder.Path()).empty());
  Put(path, "viejo");
  {
    PosixWholeFile file(path);
    file.Write("nuevo");
  }
  EXPECT_EQ(ReadFile(path), "viejo");
  Put(path, std::string(600'000, 'n'));
  EXPECT_EQ(ReadFile(path), std::string(600'000, 'n'));
  EXPECT_EQ(NamesIn(folder.Path()), Names{"ventas.txt"});
}

TEST(PosixWholeFile, KeepsRightsAndLinksOfWhatItReplaces) {
  const test::TemporaryFolder folder;
  std::filesystem::create_directory(folder.Path() / "real");
  Put(folder.File("real/ventas.txt"), "viejo");
  ::chmod(folder.File("real/ventas.txt").c_str(), 0640);
  std::filesystem::create_symlink("real/ventas.txt", folder.File("enlace"));
  Put(folder.File("enlace"), "nuevo");
  EXPECT_TRUE(std::filesystem::is_symlink(folder.File("enlace")));
  EXPECT_EQ(ReadFile(folder.File("real/ventas.txt")), "nuevo");
  struct stat status {};
  ASSERT_EQ(::stat(folder.File("real/ventas.txt").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0640U);
  EXPECT_EQ(NamesIn(folder.Path() / "real"), Names{"ventas.txt"});

  EXPECT_THROW(Put(folder.File("real"), "x"), HostError);
  EXPECT_THROW(Put("/dev/null", "x"), HostError);
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST(PosixWholeFile, TakesOverWhatAKilledProgramLeft) {
  const test::TemporaryFolder folder;
  int ready[2];
  ASSERT_EQ(::pipe(ready), 0);
  const pid_t child = test::StartChild([&] {
    PosixWholeFile file(folder.File("a.txt"));
    file.Write(std::string(1'000'000, 'x'));
    [[maybe_unused]] const ssize_t told = ::write(ready[1], "x", 1);
    ::pause();
  });
  char byte = 0;
  ASSERT_EQ(::read(ready[0], &byte, 1), 1);
  Put(folder.File("b.txt"), "mientras");  // the other program still lives: its file is not touched
  EXPECT_EQ(NamesIn(folder.Path()), (Names{".tolvan-1.tmp", "b.txt"}));
  test::KillChild(child);
  Put(folder.File("b.txt"), "corto");
  EXPECT_EQ(ReadFile(folder.File("b.txt")), "corto");
  EXPECT_EQ(NamesIn(folder.Path()), Names{"b.txt"});
}

// A disk of 64 KB where the system lets us have one, otherwise a limit on the size of files.
void LimitSpace(const std::string& folder) {
  if (::unshare(CLONE_NEWNS) == 0 && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
      ::mount("tmpfs", folder.c_str(), "tmpfs", 0, "size=64k") == 0) {
    return;
  }
  test::LimitFileSizes(65'536);
}

TEST(PosixWholeFile, LeavesTheOldFileWhenTheDiskIsFull) {
  const test::TemporaryFolder folder;
  const std::string outcome = test::RunInChild([&]() -> std::string {
    LimitSpace(folder.Path().native());
    Put(folder.File("ventas.txt"), "viejo");
    std::string seen;
    for (const std::size_t size : {300'000U, 100'000U}) {  // one fails while writing, the other only at Commit
      const auto put = [&] { Put(folder.File("ventas.txt"), std::string(size, 'x')); };
      seen += test::KindThrownBy(put) == HostErrorKind::Full ? "full " : "other ";
    }
    seen += ReadFile(folder.File("ventas.txt"));
    return seen + " " + std::to_string(NamesIn(folder.Path()).size());
  });
  EXPECT_EQ(outcome, "full full viejo 1");
}

// From here on the system refuses this process to look at an open file.
void RefuseFstat() {
  sock_filter program[] = {{BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, nr)},
                           {BPF_JMP | BPF_JEQ | BPF_K, 1, 0, __NR_fstat},
                           {BPF_JMP | BPF_JEQ | BPF_K, 0, 1, __NR_newfstatat},
                           {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ERRNO | EIO},
                           {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW}};
  const sock_fprog filter{std::size(program), program};
  ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
  ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter);
}

TEST(TemporaryFile, IsGoneWhenItCannotBeLookedAt) {
  const test::TemporaryFolder folder;
  const std::string outcome = test::RunInChild([&]() -> std::string {
    RefuseFstat();
    return test::KindThrownBy([&] { const TemporaryFile file(folder.Path()); }) == HostErrorKind::Failed ? "failed"
                                                                                                         : "";
  });
  EXPECT_EQ(outcome, "failed");
  EXPECT_TRUE(NamesIn(folder.Path()).empty());
}

TEST(PosixWholeFile, RespectsWhatMayNotBeWritten) {
  const test::TemporaryFolder folder;
  ::chmod(folder.Path().c_str(), 0777);
  Put(folder.File("protegido.txt"), "viejo");
  ::chmod(folder.File("protegido.txt").c_str(), 0444);
  std::filesystem::create_directory(folder.Path() / "solo lectura");
  ::chmod(folder.File("solo lectura").c_str(), 0555);
  const std::string outcome = test::RunWithoutPrivileges([&]() -> std::string {
    std::string seen;
    for (const char* name : {"protegido.txt", "solo lectura/a.txt"}) {
      const auto put = [&] { Put(folder.File(name), "nuevo"); };
      seen += test::KindThrownBy(put) == HostErrorKind::Access ? "access " : "other ";
    }
    return seen;
  });
  EXPECT_EQ(outcome, "access access ");
  EXPECT_EQ(ReadFile(folder.File("protegido.txt")), "viejo");
  EXPECT_EQ(NamesIn(folder.Path()), (Names{"protegido.txt", "solo lectura"}));
}

}  // namespace
}  // namespace tolvan
