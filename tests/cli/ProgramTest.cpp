// The program as a process: its exit code and where its words go, the signals that stop it, and the program of the
// windows, which it starts.
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <iostream>

#include "cli/DemoStoreFixture.h"
#include "cli/Process.h"
#include "support/ChildProcess.h"
#include "system/posix/FileDescriptor.h"

namespace tolvan {
namespace {

using testing::HasSubstr;

TEST(Program, WrongUsageLeavesStandardOutputEmptyUnlessJsonIsWanted) {
  test::CommandRunner runner;
  const auto plain = runner.Run({"nada"});
  EXPECT_EQ(plain.code, 2);
  EXPECT_EQ(plain.output, "");
  EXPECT_EQ(plain.messages, "No existe la orden \"nada\"\nLa ayuda: tolvan-impexp --ayuda\n");
  const auto json = runner.Run({"--json", "nada"});
  EXPECT_EQ(json.output, "{\n  \"error\": \"No existe la orden \\\"nada\\\"\"\n}\n");
}

TEST(Program, AResultThatCannotBeWrittenIsAFailureUnlessNobodyWantsIt) {
  const FileDescriptor full(::open("/dev/full", O_WRONLY));
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  ::close(ends[0]);
  const FileDescriptor closed(ends[1]);
  std::signal(SIGPIPE, SIG_IGN);
  test::CommandRunner runner;
  const std::vector<std::pair<std::vector<std::string>, int>> cases = {
      {{"--ayuda"}, 0},       {{"--help"}, 0}, {{"--version"}, 0}, {{"rnc", "1"}, 0}, {{"--json", "rnc", "1"}, 0},
      {{"--json", "nada"}, 2}};
  for (const auto& [words, code] : cases) {
    DescriptorBuffer lost(full.Number());
    runner.outputBuffer = &lost;
    const auto failed = runner.Run(words);
    EXPECT_EQ(failed.code, std::max(code, 1)) << words.back();
    EXPECT_NE(failed.messages.find("no se pudo escribir el resultado"), code == 0 ? std::string::npos : 0U);
    EXPECT_EQ(lost.ErrorNumber(), ENOSPC);
    DescriptorBuffer unread(closed.Number());
    runner.outputBuffer = &unread;
    EXPECT_EQ(runner.Run(words).code, code);
  }
}

std::string AfterSignals(int signal, int times, void (*before)(int)) {
  return test::RunInChild([&]() -> std::string {
    std::signal(signal, before);
    const SignalInterruption interruption(std::cerr, false);
    for (int time = 0; time < times; ++time) std::raise(signal);
    return interruption.Requested() ? "stop" : "go on";
  });
}

TEST(SignalInterruption, IsAskedForBySignalsThatWereNotIgnoredBefore) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    EXPECT_EQ(AfterSignals(signal, 1, SIG_DFL), "stop") << signal;
    EXPECT_EQ(AfterSignals(signal, 1, SIG_IGN), "go on") << signal;
  }
  EXPECT_EQ(AfterSignals(SIGHUP, 2, SIG_DFL), "stop");
  EXPECT_NE(AfterSignals(SIGINT, 2, SIG_DFL), "stop") << "the second one does not wait";
}

/// A script in the place of the program of the windows.
class Ventana : public test::DemoStoreFixture {
 protected:
  Ventana() {
    runner.windowProgram = folder.File("programa");
    ::setenv("DISPLAY", ":0", 1);
  }

  void Write(const std::string& script) const {
    test::WriteFile(runner.windowProgram, "#!/bin/sh\n" + script + "\n");
    std::filesystem::permissions(runner.windowProgram, std::filesystem::perms::owner_all);
  }
};

TEST_F(Ventana, StartsTheProgramOnTheSameHostAndWaits) {
  Write("echo \"$@\" > " + folder.File("dicho"));
  Expect({{{"ventana"}, 0}});
  EXPECT_EQ(test::ReadFile(folder.File("dicho")), "--host " + runner.host + "\n");
  runner.host = folder.File("no-hay.ini");
  Expect({{{"ventana"}, 4, "Indique la configuración de su tienda"}});
  runner.host.clear();
  Expect({{{"ventana"}, 0}});
  EXPECT_EQ(test::ReadFile(folder.File("dicho")), "\n") << "none yet: the program asks for one";
}

TEST_F(Ventana, SaysWhyThereIsNone) {
  Expect({{{"ventana"}, 1, "no está instalado"}});
  Write("exit 4");
  Expect({{{"ventana"}, 4}});
  Write("kill -KILL $$");
  Expect({{{"ventana"}, 1, "terminó con un error"}});
  ::unsetenv("DISPLAY");
  ::unsetenv("WAYLAND_DISPLAY");
  EXPECT_THAT(Json({"ventana"}, 1)["error"].get<std::string>(), HasSubstr("No hay pantalla"));
  std::filesystem::remove(places.database);
  Expect({{{"ventana"}, 4}});
}

}  // namespace
}  // namespace tolvan
