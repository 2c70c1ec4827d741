#include "component/clsImpExp.h"

#include "base/Text.h"

namespace tolvan {
namespace {

constexpr std::string_view unattendedMode = "vexlor";

}  // namespace

clsImpExp::clsImpExp(HostFactory& factory, OpcionesWindow window)
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
  HeadlessOpciones window(context_);
  window.Form().Cargar();
  window.Form().SelectAction(action::dailySalesFile);
  window.Form().ImpExp(false);
  outcome_ = window.Form().LastOutcome();
  dailySales_ = window.Form().LastDailySales();
}

void clsImpExp::DefineSettings() {
  settings_.Define(services_->SystemClock().Today(), context_.application.DefaultEmailRecipient());
}

void clsImpExp::SaveSettings() {
  settings_.Save();
}

}  // namespace tolvan
