#include "component/clsImpExp.h"

#include <gtest/gtest.h>

#include "export/DailySalesExport.h"
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

TEST(clsImpExp, TheUnattendedModeInAnyCasingShowsNothingAndAnyOtherShowsTheWindow) {
  const std::pair<const char*, bool> cases[] = {
      {"vexlor", true}, {"VEXLOR", true}, {"VexLor", true}, {"", false}, {"vexlor ", false}};
  for (const auto& [mode, unattended] : cases) {
    SCOPED_TRACE(mode);
    Factory factory;
    int shown = 0;
    clsImpExp component(factory, [&](const ComponentContext&) { ++shown; });
    EXPECT_EQ(factory.made, "services context ");
    component.DefineSettings();
    component.VentanaImpExp(mode);
    EXPECT_EQ(shown, unattended ? 0 : 1);
    EXPECT_EQ(component.LastReport().details.has_value(), unattended);
    EXPECT_TRUE(factory.last->dialogs.boxes.empty()) << "its folder is not there, and nobody is told";
    EXPECT_EQ(component.LastReport().DetailsAs<DailySalesFile>().record,
              unattended ? "codigo_local,0,\"19:00\",\"31/01/2024\"," : "");
    EXPECT_EQ(factory.application.settings.saves, 0);
    component.SaveSettings();
    EXPECT_EQ(factory.application.settings.saves, 1);
  }
}

}  // namespace
}  // namespace tolvan
