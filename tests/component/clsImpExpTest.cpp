#include "component/clsImpExp.h"

#include <gtest/gtest.h>

#include "support/FakeHost.h"

namespace tolvan {
namespace {

using test::FakeApplication;
using test::FakeServices;

struct Context : HostContext {
  explicit Context(FakeApplication& owned) : application(&owned) {}
  HostApplication& Application() override { return *application; }
  FakeApplication* application;
};

/// Makes a host over one application that outlives the component, and notes the order of creation.
struct Factory : HostFactory {
  std::unique_ptr<AppServices> CreateAppServices() override {
    made += "services ";
    auto services = std::make_unique<FakeServices>();
    services->files.folders.insert("/out");
    last = services.get();
    return services;
  }
  std::unique_ptr<HostContext> CreateHostContext(AppServices&) override {
    made += "context ";
    return std::make_unique<Context>(application);
  }
  FakeApplication application;
  FakeServices* last = nullptr;
  std::string made;
};

TEST(clsImpExp, TheUnattendedModeRunsInAnyCasingAndShowsNothing) {
  for (const char* mode : {"vexlor", "VEXLOR", "VexLor"}) {
    Factory factory;
    int shown = 0;
    clsImpExp component(factory, [&](const ComponentContext&) { ++shown; });
    component.DefineSettings();
    factory.application.settings.values["6"] = "/out";
    component.VentanaImpExp(mode);
    EXPECT_EQ(factory.made, "services context ");
    EXPECT_EQ(shown, 0);
    EXPECT_TRUE(component.LastOutcome().succeeded) << component.LastOutcome().errorText;
    EXPECT_EQ(factory.last->files.contents.at("/out/240131.txt"), "codigo_local,0,\"19:00\",\"31/01/2024\",");
    EXPECT_TRUE(factory.last->dialogs.boxes.empty());
    EXPECT_EQ(factory.application.settings.saves, 0);
  }
}

TEST(clsImpExp, AnyOtherModeShowsTheWindowEachTime) {
  Factory factory;
  int shown = 0;
  clsImpExp component(factory, [&](const ComponentContext&) { ++shown; });
  component.DefineSettings();
  component.VentanaImpExp("");
  component.VentanaImpExp("vexlor ");
  EXPECT_EQ(shown, 2);
  EXPECT_FALSE(component.LastOutcome().ran);
}

}  // namespace
}  // namespace tolvan
