#include <cstdlib>
#include <filesystem>

#include "cli/DemoStoreFixture.h"
#include "support/FileContent.h"

namespace tolvan {
namespace {

/// A script in the place of the window program.
class OrderVentana : public test::DemoStoreFixture {
 protected:
  OrderVentana() {
    runner.windowProgram = folder.File("programa");
    ::setenv("DISPLAY", ":0", 1);
  }

  void Write(const std::string& script) const {
    test::WriteFile(runner.windowProgram, "#!/bin/sh\n" + script + "\n");
    std::filesystem::permissions(runner.windowProgram, std::filesystem::perms::owner_all);
  }
};

TEST_F(OrderVentana, StartsTheProgramOnTheSameHostAndWaits) {
  Write("echo \"$@\" > " + folder.File("dicho"));
  EXPECT_EQ(runner.Run({"ventana"}).code, 0);
  EXPECT_EQ(test::ReadFile(folder.File("dicho")), "--host " + runner.host + "\n");
  runner.host = folder.File("no-hay.ini");
  EXPECT_EQ(runner.Run({"ventana"}).code, 4) << "named, and not there";
  runner.host.clear();
  EXPECT_EQ(runner.Run({"ventana"}).code, 0) << "none yet: the program asks for one";
  EXPECT_EQ(test::ReadFile(folder.File("dicho")), "\n");
}

TEST_F(OrderVentana, TellsWhyThereIsNoWindow) {
  EXPECT_NE(runner.Run({"ventana"}).messages.find("no está instalado"), std::string::npos);
  Write("exit 4");
  EXPECT_EQ(runner.Run({"ventana"}).code, 4);
  Write("kill -KILL $$");
  EXPECT_EQ(runner.Run({"ventana"}).code, 1);
  ::unsetenv("DISPLAY");
  ::unsetenv("WAYLAND_DISPLAY");
  const auto blind = runner.Run({"--json", "ventana"});
  EXPECT_EQ(blind.code, 1);
  EXPECT_NE(blind.output.find("No hay pantalla"), std::string::npos);
  std::filesystem::remove(places.database);
  EXPECT_EQ(runner.Run({"ventana"}).code, 4);
}

}  // namespace
}  // namespace tolvan
