#include "system/posix/PosixPath.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>

#include "contract/TemporaryFolder.h"
#include "support/FileContent.h"

namespace tolvan {
namespace {

TEST(SettingsLocation, IsNamedByTheConfiguration) {
  ::setenv("HOME", "/home/ana", 1);
  ::setenv("XDG_CONFIG_HOME", "/cfg/", 1);
  ::setenv("XDG_STATE_HOME", "relativa", 1);  // not absolute: counts as not set
  const SettingsLocation location = LocateSettings("/no hay/tienda+1/tolvan.ini", "");
  EXPECT_EQ(location.settingsFile, "/cfg/tolvan/+no%20hay+tienda%2B1+tolvan.ini.ajustes");
  EXPECT_EQ(location.layoutFile, "/home/ana/.local/state/tolvan/+no%20hay+tienda%2B1+tolvan.ini.ventanas");

  std::set<std::string> files;
  const std::string deep = "/" + std::string(240, 'n') + "/" + std::string(240, 'm');
  for (const std::string& path : {std::string("/a/b/t.ini"), std::string("/a+b/t.ini"), std::string("/a/b+t.ini"),
                                  std::string("/a%2Fb/t.ini"), deep + "/t.ini", "/x" + deep + "/t.ini"}) {
    files.insert(LocateSettings(path, "").settingsFile);
    files.insert(LocateSettings(path, "/a").settingsFile);
  }
  EXPECT_EQ(files.size(), 12U) << "no two configurations share a file";
  for (const std::string& file : files) EXPECT_LT(file.size() - file.rfind('/'), 220U);
}

TEST(SettingsLocation, MovesWithTheShopFolder) {
  const test::TemporaryFolder folder;
  const std::string base = std::filesystem::canonical(folder.Path()).native();
  std::filesystem::create_directories(base + "/una/tienda");
  test::WriteFile(base + "/una/tienda/tolvan.ini", "");
  std::filesystem::create_directory_symlink(base + "/una", base + "/enlace");
  const SettingsLocation direct = LocateSettings(base + "/una/tienda/tolvan.ini", base + "/una/ajustes");
  EXPECT_EQ(direct.settingsFile, base + "/una/ajustes/%2E.+tienda+tolvan.ini.ajustes");
  EXPECT_EQ(LocateSettings(base + "/enlace/tienda/tolvan.ini", base + "/enlace/ajustes").layoutFile, direct.layoutFile);
  std::filesystem::rename(base + "/una", base + "/otra");
  EXPECT_EQ(LocateSettings(base + "/otra/tienda/tolvan.ini", base + "/otra/ajustes").settingsFile,
            base + "/otra/ajustes/%2E.+tienda+tolvan.ini.ajustes");
}

}  // namespace
}  // namespace tolvan
