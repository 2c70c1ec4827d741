#include "ui/FirstRun.h"

#include <gtest/gtest.h>

#include "support/FakeHost.h"

namespace tolvan {
namespace {

struct FirstRunTest : ::testing::Test {
  test::FakeHost host;
  std::vector<std::string> did;
  std::map<std::string, std::string> failures;
  std::vector<test::FakeDialogs::Box>& boxes = host.services.dialogs.boxes;

  std::function<std::string(const std::string&)> Step(const std::string& name) {
    return [this, name](const std::string& path) {
      did.push_back(name + " " + path);
      return failures[name];
    };
  }

  FirstRun logic{host.services.dialogs,
                 host.services.files,
                 {.usual = "/home/ana/.config/tolvan/tolvan.ini", .home = "/home/ana", .manual = "/manual.md"},
                 {.makeDemo = Step("demo"), .check = Step("check"), .remember = Step("remember")}};
};

TEST_F(FirstRunTest, WhatIsChosenIsCheckedAndRemembered) {
  EXPECT_EQ(logic.bDemostracion_Click(true), std::nullopt) << "cancelled";
  host.services.dialogs.answer = "/datos";
  EXPECT_EQ(logic.bDemostracion_Click(true), "/datos/tienda-demo/tolvan.ini");
  EXPECT_EQ(logic.bElegir_Click(false), "/datos");
  EXPECT_EQ(did, (std::vector<std::string>{"demo /datos/tienda-demo", "check /datos/tienda-demo/tolvan.ini",
                                           "remember /datos/tienda-demo/tolvan.ini", "check /datos"}));
  EXPECT_TRUE(boxes.empty());
}

TEST_F(FirstRunTest, WhatFailsIsToldAndOnlyRememberingMayFail) {
  host.services.dialogs.answer = "/datos";
  failures["remember"] = "no se puede escribir";
  EXPECT_EQ(logic.bElegir_Click(true), "/datos");
  failures["check"] = "no se entiende";
  EXPECT_EQ(logic.bElegir_Click(true), std::nullopt);
  failures["demo"] = "la carpeta tiene datos";
  EXPECT_EQ(logic.bDemostracion_Click(true), std::nullopt);
  ASSERT_EQ(boxes.size(), 3U);
  EXPECT_NE(boxes[0].text.find("no se puede escribir"), std::string::npos);
  EXPECT_EQ(boxes[1].text, "no se entiende");
  EXPECT_NE(boxes[2].text.find("la carpeta tiene datos"), std::string::npos);
}

}  // namespace
}  // namespace tolvan
