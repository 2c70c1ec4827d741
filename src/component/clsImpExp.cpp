#include "component/clsImpExp.h"

#include "base/Text.h"
#include "ui/ActionRoutines.h"

namespace tolvan {
namespace {

constexpr std::string_view unattendedMode = "vexlor";

}  // namespace

clsImpExp::clsImpExp(HostFactory& factory, OptionsWindow window)
    : services_(factory.CreateAppServices()),
      host_(factory.CreateHostContext(*services_)),
      settings_(host_->Application().Settings()),
      context_{.services = *services_, .application = host_->Application(), .settings = settings_},
      window_(std::move(window)) {}

void clsImpExp::VentanaImpExp(std::string_view mode) {
  if (ToLower(mode) != unattendedMode) {
    if (window_) window_(context_);
    return;
  }
  report_ = ExportDailySales(context_, false);
}

void clsImpExp::DefineSettings() {
  settings_.Define(services_->SystemClock().Today(), context_.application.DefaultEmailRecipient());
}

void clsImpExp::SaveSettings() {
  settings_.Save();
}

}  // namespace tolvan
