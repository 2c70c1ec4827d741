#include "system/posix/PosixFileHelper.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>

#include "contract/TemporaryFolder.h"
#include "support/FileContent.h"
#include "support/ThrownBy.h"

namespace tolvan {
namespace {

struct PathCase {
  const char* given;
  const char* folder;     // NormalizeFolder
  const char* displayed;  // FormatForDisplay
};

TEST(PosixFileHelper, UnderstandsPaths) {
  ::setenv("HOME", "/home/ana", 1);
  const PosixFileHelper files("/opt//tolvan/");
  const PathCase cases[] = {
      {"", "/opt/tolvan/", ""},
      {".", "/opt/tolvan/", "/opt/tolvan"},
      {"Exportar", "/opt/tolvan/Exportar/", "/opt/tolvan/Exportar"},
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
  for (const PathCase& one : cases) {
    EXPECT_EQ(files.NormalizeFolder(one.given), one.folder) << one.given;
    EXPECT_EQ(files.FormatForDisplay(one.given), one.displayed) << one.given;
  }
  EXPECT_EQ(files.Join("/x/", "PlantillasImpresion\\Excel\\F.XLT"), "/x/PlantillasImpresion/Excel/F.XLT");
  EXPECT_EQ(files.Join("", "a.txt"), "/opt/tolvan/a.txt");
  EXPECT_EQ(files.Join("C:", "a.txt"), "C:\\a.txt");
}

TEST(PosixFileHelper, CleansFileNames) {
  const PosixFileHelper files("/");
  const struct {
    const char* name;
    const char* both;
    const char* trimmed;
  } cases[] = {
      {"  ventas.txt ", "ventas.txt", "ventas.txt"},
      {"a/b\\c:d*e?f\"g<h>i|j\tk", "a_b_c_d_e_f_g_h_i_j_k", "a/b\\c:d*e?f\"g<h>i|j\tk"},
      {"niño. . .", "niño", "niño"},
      {".oculto", ".oculto", ".oculto"},
      {"..", "", ""},
      {"a\xC2\x85"
       "b\x7F",
       "a_b_",
       "a\xC2\x85"
       "b\x7F"},
      {"\xFF.txt", "\xFF.txt", "\xFF.txt"},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(files.CleanFileName(one.name, true, true), one.both);
    EXPECT_EQ(files.CleanFileName(one.name, false, true), one.trimmed);
    EXPECT_EQ(files.CleanFileName(one.name, false, false), one.name);
  }
}

// The default destination of a new installation: it must fail with its own name, and leave nothing behind.
TEST(PosixFileHelper, NeverMakesAnythingOfAWindowsPath) {
  const test::TemporaryFolder folder;
  PosixFileHelper files(folder.Path().native());
  const auto failure = files.WriteTextFile("x", files.NormalizeFolder("C:\\") + "240131.txt");
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->Kind(), HostErrorKind::Unreachable);
  EXPECT_EQ(failure->Context(), "C:\\240131.txt");
  EXPECT_THROW(files.MakeFolder("C:\\Ventas"), HostError);
  EXPECT_FALSE(files.FolderExists("C:\\"));
  EXPECT_FALSE(files.DeleteFile("C:\\240131.txt"));
  EXPECT_TRUE(test::NamesIn(folder.Path()).empty());
}

TEST(PosixFileHelper, WritesTextAndMakesFolders) {
  const test::TemporaryFolder folder;
  PosixFileHelper files(folder.Path().native());
  files.MakeFolder("a\\b/c");
  files.MakeFolder("a/b/c");
  EXPECT_FALSE(files.WriteTextFile("año 1 €", "a/b/c/ventas.txt"));
  EXPECT_EQ(files.WriteTextFile("漢", "a/b/c/ventas.txt")->Kind(), HostErrorKind::InvalidValue);
  EXPECT_EQ(test::ReadFile(folder.File("a/b/c/ventas.txt")), "a\xF1o 1 \x80");
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

TEST(PosixFileHelper, ReadsFilesInPiecesOfAnySize) {
  const test::TemporaryFolder folder;
  PosixFileHelper files(folder.Path().native());
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
    EXPECT_EQ(test::KindThrownBy([&] { files.OpenInput(unreadable); }), HostErrorKind::Unreachable) << unreadable;
  }
}

}  // namespace
}  // namespace tolvan
