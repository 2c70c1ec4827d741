#include "system/SettingsAndLayouts.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <random>
#include <set>

#include "contract/TemporaryFolder.h"
#include "support/ChildProcess.h"
#include "support/FakeHost.h"
#include "support/FileContent.h"
#include "support/ThrownBy.h"
#include "system/posix/PosixFiles.h"
#include "system/posix/PosixPath.h"

namespace tolvan {
namespace {

constexpr std::string_view section = "IMPEXP";

TEST(KeyValueText, KeepsEveryValue) {
  const NamedValues values{{{"IMPEXP", "6"}, "C:\\Ventas\\"},
                           {{"IMPEXP", "9"}, ""},
                           {{"a/b=c\n", "\\x41"}, " = ; línea 1\r\nfin 2\n"},
                           {{"", "ñ"}, std::string("\0\x7F\xFF\xC3", 4)}};
  const std::string text = WriteKeyValueText(values);
  EXPECT_EQ(ParseKeyValueText(text), values);
  EXPECT_EQ(WriteKeyValueText({{{"IMPEXP", "6"}, "C:\\ñ\n"}}), "tolvan-valores 1\nIMPEXP/6=C:\\\\ñ\\x0A\nfin 1\n");
  for (std::size_t length = 0; length < text.size(); ++length) {
    EXPECT_FALSE(ParseKeyValueText(text.substr(0, length))) << "cut at " << length;
  }
}

TEST(KeyValueText, RefusesWhatIsDamaged) {
  for (const std::string text : {"", "\n", "fin 0\n", "tolvan-valores 2\nfin 0\n", "tolvan-valores 1\r\nfin 0\r\n",
                                 "\xEF\xBB\xBFtolvan-valores 1\nfin 0\n", "tolvan-valores 1\nfin 0\n\n"}) {
    EXPECT_FALSE(ParseKeyValueText(text)) << text;
  }
  for (const std::string lines :
       {"fin 1", "a/1=x\n\nfin 1", "a/1=x\na/1=x\nfin 2", "a/1=x\na/1=x\nfin 1", "a1=x\nfin 1", "a/1\nfin 1",
        "a/1=\\n\nfin 1", "a/1=\\x0\nfin 1", "a/1=\\x0g\nfin 1", "a/1=\t\nfin 1", "a/1=\xFF\nfin 1", "a/1=x\nfin 01"}) {
    EXPECT_FALSE(ParseKeyValueText("tolvan-valores 1\n" + lines + "\n")) << lines;
  }
  EXPECT_TRUE(ParseKeyValueText("tolvan-valores 1\nb/1=\na/2==/\nfin 2\n"));
}

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

class TextSettingsStoreTest : public testing::Test {
 protected:
  ValueFile File() { return {clock_, path_, nullptr, std::chrono::milliseconds(50)}; }

  /// A program of its own: its settings defined and loaded.
  TextSettingsStore Opened() {
    TextSettingsStore store(File());
    store.Define(std::string("C:\\"), "Carpeta", "6", section, 0, 0);
    store.Define(std::int16_t{19}, "Horas", "4", section, 1, 0);
    store.Define(std::int16_t{1}, "Dia", "11", section, 0, 0);
    store.Load(section);
    return store;
  }

  std::string Stored(const char* index) { return Opened().Get(section, index).value(); }

  test::TemporaryFolder folder_;
  test::FakeClock clock_;
  std::string path_ = folder_.File("ajustes/tienda.ajustes");
};

TEST_F(TextSettingsStoreTest, KeepsWhatWasSetAndAccepted) {
  TextSettingsStore store = Opened();
  EXPECT_EQ(store.Get(section, "4"), "19");
  store.Save(section);
  EXPECT_FALSE(std::filesystem::exists(path_)) << "nothing was set";
  EXPECT_TRUE(store.Set(section, "6", "D:\\Año\n"));
  EXPECT_TRUE(store.Set(section, "4", "+07"));
  for (const char* refused : {"", "7.5", "siete", "99999999999"}) EXPECT_FALSE(store.Set(section, "4", refused));
  EXPECT_TRUE(store.Set(section, "11", "texto"));
  EXPECT_FALSE(store.Set(section, "12", "1"));
  EXPECT_FALSE(store.Get("OTRA", "4"));
  EXPECT_EQ(Stored("6"), "C:\\") << "not saved yet";
  store.Save(section);
  EXPECT_EQ(Stored("6"), "D:\\Año\n");
  EXPECT_EQ(Stored("4"), "7");
  EXPECT_EQ(Stored("11"), "texto");
}

TEST_F(TextSettingsStoreTest, LosesNothingOfTwoPrograms) {
  TextSettingsStore one = Opened();
  TextSettingsStore other = Opened();
  one.Set(section, "6", "/uno");
  one.Set(section, "4", "19");  // confirmed, not changed
  other.Set(section, "4", "20");
  other.Save(section);
  one.Save(section);
  EXPECT_EQ(Stored("6"), "/uno");
  EXPECT_EQ(Stored("4"), "20");
  EXPECT_EQ(one.Get(section, "4"), "20");

  // An entry that neither of them knows stays as well.
  File().Change([](NamedValues& values) { values[{"IMPEXP", "99"}] = "futuro"; });
  one.Set(section, "4", "21");
  one.Save(section);
  EXPECT_EQ(File().Read().values.at({"IMPEXP", "99"}), "futuro");

  const auto setMany = [this](const char* index) {
    for (int round = 1; round <= 200; ++round) {
      TextSettingsStore store(ValueFile(clock_, path_));
      store.Define(std::int16_t{0}, "n", index, "CUENTA", 1, 0);
      store.Load("CUENTA");
      store.Set("CUENTA", index, std::to_string(std::stoi(*store.Get("CUENTA", index)) + 1));
      store.Save("CUENTA");
    }
  };
  const pid_t child = test::StartChild([&] { setMany("1"); });
  setMany("2");
  ASSERT_EQ(::waitpid(child, nullptr, 0), child);
  const NamedValues values = File().Read().values;
  EXPECT_EQ(values.at({"CUENTA", "1"}), "200");
  EXPECT_EQ(values.at({"CUENTA", "2"}), "200");
}

TEST_F(TextSettingsStoreTest, PutsADamagedFileAside) {
  TextSettingsStore before = Opened();
  before.Set(section, "6", "/ventas");
  before.Save(section);
  const std::string whole = test::ReadFile(path_);
  for (int time = 1; time <= 2; ++time) {
    test::WriteFile(path_, whole.substr(0, whole.size() - 2));
    const TextSettingsStore store = Opened();
    EXPECT_EQ(store.Get(section, "6"), "C:\\");
    EXPECT_NE(store.Notice().find(path_ + ".danado-20240201-090000"), std::string::npos) << store.Notice();
    EXPECT_FALSE(std::filesystem::exists(path_));
  }
  EXPECT_EQ(test::ReadFile(path_ + ".danado-20240201-090000"), whole.substr(0, whole.size() - 2));
  EXPECT_TRUE(std::filesystem::exists(path_ + ".danado-20240201-090000-2"));
  EXPECT_EQ(Opened().Notice(), "");

  // Damaged between Load and Save: what this program read stands in for what is lost.
  test::WriteFile(path_, "?");
  before.Set(section, "4", "8");
  before.Save(section);
  EXPECT_EQ(Stored("6"), "/ventas");
  EXPECT_EQ(Stored("4"), "8");

  File().Change([](NamedValues& values) { values[{"IMPEXP", "4"}] = "ocho"; });
  TextSettingsStore wrongKind = Opened();
  EXPECT_EQ(wrongKind.Get(section, "4"), "19");
  EXPECT_NE(wrongKind.Notice().find("Horas"), std::string::npos);
}

TEST_F(TextSettingsStoreTest, TellsWhyNothingWasSaved) {
  TextSettingsStore store = Opened();
  store.Set(section, "4", "8");
  std::filesystem::create_directory(folder_.File("ajustes"));
  {
    const FileLock other(path_ + ".lock", std::chrono::milliseconds(0));
    EXPECT_EQ(test::KindThrownBy([&] { store.Save(section); }), HostErrorKind::Busy);
    const test::ImpatientUser user;
    const auto change = [&] { ValueFile(clock_, path_, &user).Change([](NamedValues&) {}); };
    EXPECT_EQ(test::KindThrownBy(change), HostErrorKind::Interrupted);
    EXPECT_EQ(user.told, "Otro programa está guardando las opciones; esperando… Ya.");
  }
  ::chmod(folder_.Path().c_str(), 0755);
  ::chmod(folder_.File("ajustes").c_str(), 0555);
  const std::string outcome = test::RunWithoutPrivileges([&]() -> std::string {
    LayoutStore(File()).Write("Ventanas", "IMPEXP_L", 5);
    const HostError error = test::ThrownBy([&] { store.Save(section); });
    return error.Kind() == HostErrorKind::Access ? "access" : error.what();
  });
  EXPECT_EQ(outcome, "access");
  EXPECT_FALSE(std::filesystem::exists(path_));
  store.Save(section);
  EXPECT_EQ(Stored("4"), "8") << "the change was not lost with the failures";

  ::chmod(path_.c_str(), 0000);
  EXPECT_EQ(test::RunWithoutPrivileges([&]() -> std::string {
              const HostError error = test::ThrownBy([&] { store.Load(section); });
              return error.Kind() == HostErrorKind::Access ? "access" : error.what();
            }),
            "access");
}

TEST_F(TextSettingsStoreTest, SurvivesAThousandKills) {
  // In memory where there is such a folder: a kill is no power failure, and two thousand syncs of a disk take long.
  if (std::filesystem::is_directory("/dev/shm")) ::setenv("TMPDIR", "/dev/shm", 1);
  const test::TemporaryFolder folder;
  path_ = folder.File("ajustes/tienda.ajustes");
  std::mt19937 random(20240131);
  std::uniform_int_distribution<useconds_t> moments(0, 1500);
  long last = 0;
  for (int kill = 0; kill < 1000; ++kill) {
    int started[2];
    ASSERT_EQ(::pipe(started), 0);
    const pid_t child = test::StartChild([&] {
      TextSettingsStore store = Opened();
      for (long number = last + 1;; ++number) {
        store.Set(section, "6", std::to_string(number) + std::string(static_cast<std::size_t>(number % 5000), 'x'));
        store.Set(section, "11", std::to_string(number));
        store.Save(section);
        // From here on the child does nothing but save, so that every moment is one inside a save.
        [[maybe_unused]] const ssize_t told = number == last + 1 ? ::write(started[1], "x", 1) : 0;
      }
    });
    char byte = 0;
    ASSERT_EQ(::read(started[0], &byte, 1), 1);
    ::usleep(moments(random));
    test::KillChild(child);
    ::close(started[0]);
    ::close(started[1]);
    const ValueFile::Content content = File().Read();
    ASSERT_FALSE(content.damaged) << "kill " << kill;
    const long number = std::stol(content.values.at({"IMPEXP", "11"}));
    ASSERT_EQ(content.values.at({"IMPEXP", "6"}),
              std::to_string(number) + std::string(static_cast<std::size_t>(number % 5000), 'x'));
    ASSERT_GT(number, last);
    last = number;
  }
  TextSettingsStore store = Opened();
  store.Set(section, "4", "3");
  store.Save(section);
  EXPECT_EQ(test::NamesIn(folder.Path() / "ajustes"),
            (std::vector<std::string>{"tienda.ajustes", "tienda.ajustes.lock"}));
}

TEST_F(TextSettingsStoreTest, KeepsWindowLayouts) {
  LayoutStore layouts(File());
  layouts.Write("Ventanas", "IMPEXPfrm_L", -240);
  EXPECT_EQ(LayoutStore(File()).Read("Ventanas", "IMPEXPfrm_L", -1), -240);
  EXPECT_EQ(layouts.Read("Listas", "IMPEXPfrm_L", 7), 7);
  test::WriteFile(path_, "basura");
  EXPECT_EQ(layouts.Read("Ventanas", "IMPEXPfrm_L", -1), -1);
  layouts.Write("Ventanas", "IMPEXPfrm_L", 12);
  EXPECT_EQ(layouts.Read("Ventanas", "IMPEXPfrm_L", -1), 12);
}

}  // namespace
}  // namespace tolvan
