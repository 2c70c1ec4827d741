// Files on a real file system: their names, reading, files that are whole or absent, and what is left after a full
// disk, a failing device or a killed program.
#include "system/posix/PosixFiles.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdlib>

#include "contract/TemporaryFolder.h"
#include "support/ChildProcess.h"
#include "support/FileContent.h"
#include "support/ThrownBy.h"
#include "system/posix/PosixFileHelper.h"

namespace tolvan {
namespace {

using test::KindThrownBy;
using test::NamesIn;
using test::ReadFile;
using Names = std::vector<std::string>;

class PosixFiles : public testing::Test {
 protected:
  static void Put(const std::string& path, const std::string& content) {
    const auto file = CreateWholeFile(path);
    file->Write(content);
    file->Commit();
  }

  const test::TemporaryFolder folder;
  PosixFileHelper files{folder.Path().native()};
};

TEST(PosixFileHelper, UnderstandsPaths) {
  ::setenv("HOME", "/home/ana", 1);
  const PosixFileHelper files("/opt//tolvan/");
  const struct {
    const char* given;
    const char* folder;     // NormalizeFolder
    const char* displayed;  // FormatForDisplay
  } cases[] = {
      {"", "/opt/tolvan/", ""},
      {".", "/opt/tolvan/", "/opt/tolvan"},
      {"Plantillas\\Excel", "/opt/tolvan/Plantillas/Excel/", "/opt/tolvan/Plantillas/Excel"},
      {"../otra", "/opt/tolvan/../otra/", "/opt/tolvan/../otra"},
      {"/var/ventas///", "/var/ventas/", "/var/ventas"},
      {"/var/a\\b", "/var/a\\b/", "/var/a\\b"},  // a native name may hold a backslash
      {"/", "/", "/"},
      {"/home/ana/ventas/", "/home/ana/ventas/", "~/ventas"},
      {"/home/ana", "/home/ana/", "~"},
      {"/home/anabel", "/home/anabel/", "/home/anabel"},
      {"C:\\", "C:\\", "C:\\"},
      {"d:/Ventas", "d:/Ventas\\", "d:/Ventas"},
      {"\\\\servidor\\ventas", "\\\\servidor\\ventas\\", "\\\\servidor\\ventas"},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(files.NormalizeFolder(one.given), one.folder) << one.given;
    EXPECT_EQ(files.FormatForDisplay(one.given), one.displayed) << one.given;
  }
  EXPECT_EQ(files.Join("/x/", "PlantillasImpresion\\Excel\\F.XLT"), "/x/PlantillasImpresion/Excel/F.XLT");
  EXPECT_EQ(files.Join("", "a.txt"), "/opt/tolvan/a.txt");
  EXPECT_EQ(files.Join("C:", "a.txt"), "C:\\a.txt");
}

TEST(PosixFileHelper, CleansFileNames) {
  const PosixFileHelper files("/");
  const std::pair<std::string, std::string> cases[] = {
      {"  ventas.txt ", "ventas.txt"},
      {"a/b\\c:d*e?f\"g<h>i|j\tk", "a_b_c_d_e_f_g_h_i_j_k"},
      {"niño. . .", "niño"},
      {".oculto", ".oculto"},
      {"..", ""},
      {"a\u0085b\x7F", "a_b_"},
      {"\xFF.txt", "\xFF.txt"},
  };
  for (const auto& [name, clean] : cases) EXPECT_EQ(files.CleanFileName(name, true, true), clean);
  EXPECT_EQ(files.CleanFileName(" a/b. ", false, true), "a/b");
  EXPECT_EQ(files.CleanFileName(" a/b. ", true, false), " a_b. ");
}

// The default destination of a new installation: it must fail with its own name, and leave nothing.
TEST_F(PosixFiles, NeverMakeAnythingOfAWindowsPath) {
  const auto failure = files.WriteTextFile("x", files.NormalizeFolder("C:\\") + "240131.txt");
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->Kind(), HostErrorKind::Unreachable);
  EXPECT_EQ(failure->Context(), "C:\\240131.txt");
  EXPECT_THROW(files.MakeFolder("C:\\Ventas"), HostError);
  EXPECT_FALSE(files.FolderExists("C:\\"));
  EXPECT_FALSE(files.DeleteFile("C:\\240131.txt"));
  EXPECT_TRUE(NamesIn(folder.Path()).empty());
}

TEST_F(PosixFiles, HoldTextsInFolders) {
  files.MakeFolder("a\\b/c");
  files.MakeFolder("a/b/c");
  EXPECT_FALSE(files.WriteTextFile("año 1 €", "a/b/c/ventas.txt"));
  EXPECT_EQ(files.WriteTextFile("漢", "a/b/c/ventas.txt")->Kind(), HostErrorKind::InvalidValue);
  EXPECT_EQ(ReadFile(folder.File("a/b/c/ventas.txt")), "a\xF1o 1 \x80");
  EXPECT_TRUE(files.FileExists("a\\b\\c\\ventas.txt"));
  EXPECT_FALSE(files.FileExists("a/b"));
  std::filesystem::create_symlink("a/b/c/ventas.txt", folder.File("enlace"));
  EXPECT_TRUE(files.IsSameFile("enlace", "a/b/../b/c/ventas.txt"));
  EXPECT_FALSE(files.IsSameFile("enlace", "a/b"));
  EXPECT_FALSE(files.IsSameFile("no está", "no está"));
  EXPECT_THROW(files.MakeFolder("a/b/c/ventas.txt/d"), HostError);
  EXPECT_TRUE(files.WriteTextFile("x", "a/b/c/"));
  EXPECT_TRUE(files.WriteTextFile("x", "missing/x.txt"));
  EXPECT_TRUE(files.DeleteFile("a/b/c/ventas.txt"));
  EXPECT_FALSE(files.DeleteFile("a/b/c/ventas.txt"));
}

TEST_F(PosixFiles, AreReadInPiecesOfAnySize) {
  std::string content;
  for (int index = 0; index < 200'000; ++index) content += std::to_string(index);
  test::WriteFile(folder.File("large"), content);
  const auto file = files.OpenInput("large");
  EXPECT_EQ(file->Size(), content.size());
  std::string read;
  std::size_t size = 1;
  for (std::size_t count = size; count == size;) {
    size = size * 7 % 600'011;
    std::string piece(size, '\0');
    count = file->Read(piece);
    read.append(piece, 0, count);
  }
  EXPECT_TRUE(read == content);

  ASSERT_EQ(::mkfifo(folder.File("pipe").c_str(), 0600), 0);
  for (const char* unreadable : {"pipe", ".", "missing", "large/x", "", "/dev/zero"}) {
    EXPECT_EQ(KindThrownBy([&] { files.OpenInput(unreadable); }), HostErrorKind::Unreachable) << unreadable;
  }
}

TEST_F(PosixFiles, AreWholeOrAbsent) {
  const std::string path = folder.File("ventas.txt");
  {
    const auto file = CreateWholeFile(path);
    file->Write(std::string(1'000'000, 'x'));
    EXPECT_FALSE(std::filesystem::exists(path));
  }
  EXPECT_TRUE(NamesIn(folder.Path()).empty());
  Put(path, "viejo");
  CreateWholeFile(path)->Write("nuevo");
  EXPECT_EQ(ReadFile(path), "viejo");
  Put(path, std::string(600'000, 'n'));
  EXPECT_EQ(ReadFile(path), std::string(600'000, 'n'));
  EXPECT_EQ(NamesIn(folder.Path()), Names{"ventas.txt"});
}

TEST_F(PosixFiles, KeepRightsAndLinksOfWhatTheyReplace) {
  std::filesystem::create_directory(folder.Path() / "real");
  Put(folder.File("real/ventas.txt"), "viejo");
  ::chmod(folder.File("real/ventas.txt").c_str(), 0640);
  std::filesystem::create_symlink("real/ventas.txt", folder.File("enlace"));
  Put(folder.File("enlace"), "nuevo");
  EXPECT_TRUE(std::filesystem::is_symlink(folder.File("enlace")));
  EXPECT_EQ(ReadFile(folder.File("real/ventas.txt")), "nuevo");
  EXPECT_EQ(std::filesystem::status(folder.File("real/ventas.txt")).permissions(), std::filesystem::perms(0640));
  EXPECT_EQ(NamesIn(folder.Path() / "real"), Names{"ventas.txt"});
  EXPECT_THROW(Put(folder.File("real"), "x"), HostError);
  EXPECT_THROW(Put("/dev/null", "x"), HostError);
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST_F(PosixFiles, TakeOverWhatAKilledProgramLeft) {
  {
    const auto alive = CreateWholeFile(folder.File("a.txt"));
    Put(folder.File("b.txt"), "mientras");  // what somebody is still writing is not touched
    EXPECT_EQ(NamesIn(folder.Path()), (Names{".tolvan-1.tmp", "b.txt"}));
  }
  test::RunInChild([&] {
    const auto file = CreateWholeFile(folder.File("a.txt"));
    file->Write(std::string(1'000'000, 'x'));
    ::_exit(0);  // without a destructor, as by a kill
    return std::string();
  });
  EXPECT_EQ(NamesIn(folder.Path()), (Names{".tolvan-1.tmp", "b.txt"}));
  Put(folder.File("b.txt"), "corto");
  EXPECT_EQ(ReadFile(folder.File("b.txt")), "corto");
  EXPECT_EQ(NamesIn(folder.Path()), Names{"b.txt"});
}

TEST_F(PosixFiles, StayAsTheyWereWhenTheDiskIsFull) {
  const std::string outcome = test::RunInChild([&]() -> std::string {
    test::LimitFileSizes(65'536);
    Put(folder.File("ventas.txt"), "viejo");
    std::string seen;
    for (const std::size_t size : {300'000U, 100'000U}) {  // one fails while writing, the other only at Commit
      const auto put = [&] { Put(folder.File("ventas.txt"), std::string(size, 'x')); };
      seen += KindThrownBy(put) == HostErrorKind::Full ? "full " : "other ";
    }
    seen += ReadFile(folder.File("ventas.txt"));
    return seen + " " + std::to_string(NamesIn(folder.Path()).size());
  });
  EXPECT_EQ(outcome, "full full viejo 1");
}

// From here on the system refuses this process to look at a file that it has open; by name it still may.
void RefuseFstat() {
  constexpr auto byName = static_cast<std::uint32_t>(AT_FDCWD);
  sock_filter program[] = {{BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, nr)},
                           {BPF_JMP | BPF_JEQ | BPF_K, 3, 0, __NR_fstat},
                           {BPF_JMP | BPF_JEQ | BPF_K, 0, 3, __NR_newfstatat},
                           {BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, args)},
                           {BPF_JMP | BPF_JEQ | BPF_K, 1, 0, byName},
                           {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ERRNO | EIO},
                           {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW}};
  const sock_fprog filter{std::size(program), program};
  ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
  ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter);
}

TEST_F(PosixFiles, LeaveNothingWhenTheyCannotBeLookedAt) {
  const std::string outcome = test::RunInChild([&]() -> std::string {
    RefuseFstat();
    return KindThrownBy([&] { CreateWholeFile(folder.File("a.txt")); }) == HostErrorKind::Failed ? "failed" : "";
  });
  EXPECT_EQ(outcome, "failed");
  EXPECT_TRUE(NamesIn(folder.Path()).empty());
}

TEST_F(PosixFiles, AreNotReplacedWhenNobodyKnowsWhetherTheyAreGuarded) {
  std::filesystem::create_symlink("tienda.db", folder.File("tienda.db"));  // leads to itself: cannot be looked at
  FileGuard byName;
  byName.AddFile(folder.File("tienda.db"));
  FileGuard byMark;
  byMark.AddFilesNamed(".ajustes", folder.File("tienda.db"));
  for (const FileGuard& guard : {byName, byMark}) {
    PosixFileHelper guarded(folder.Path().native(), guard);
    const HostError error = test::ThrownBy([&] { guarded.CreateWhole("ventas.txt"); });
    EXPECT_EQ(error.what(), "no se pudo comprobar que no sea un archivo propio de la tienda («" +
                                folder.File("tienda.db") + "»: la ruta da vueltas por enlaces simbólicos)");
    EXPECT_EQ(error.Context(), folder.File("ventas.txt"));
  }
  EXPECT_THROW(files.IsSameFile("tienda.db", "."), HostError);
}

TEST_F(PosixFiles, RespectWhatMayNotBeWritten) {
  ::chmod(folder.Path().c_str(), 0777);
  Put(folder.File("protegido.txt"), "viejo");
  ::chmod(folder.File("protegido.txt").c_str(), 0444);
  std::filesystem::create_directory(folder.Path() / "solo lectura");
  ::chmod(folder.File("solo lectura").c_str(), 0555);
  const std::string outcome = test::RunWithoutPrivileges([&]() -> std::string {
    std::string seen;
    for (const char* name : {"protegido.txt", "solo lectura/a.txt"}) {
      const auto put = [&] { Put(folder.File(name), "nuevo"); };
      seen += KindThrownBy(put) == HostErrorKind::Access ? "access " : "other ";
    }
    return seen;
  });
  EXPECT_EQ(outcome, "access access ");
  EXPECT_EQ(ReadFile(folder.File("protegido.txt")), "viejo");
  EXPECT_EQ(NamesIn(folder.Path()), (Names{"protegido.txt", "solo lectura"}));
}

}  // namespace
}  // namespace tolvan
