#include "services/clsCallBackProgreso.h"

namespace tolvan {
namespace {

/// A control that fails must not stop the work that reports to it, nor the steps that follow.
template <class Step>
void Quietly(Step step) noexcept {
  try {
    step();
  } catch (...) {
    return;
  }
}

}  // namespace

clsCallBackProgreso::~clsCallBackProgreso() {
  if (active_) SetVisible(false);
}

void clsCallBackProgreso::NotificarProgreso(bool active, std::int32_t maximum, std::int32_t value,
                                            std::string_view text) noexcept {
  if (text != lastText_) ShowText(text);
  if (active == active_) {
    if (value == current_) return;
    current_ = value;
    SetBarValue(value);
    return;
  }
  active_ = active;
  maximum_ = maximum;
  current_ = value;
  if (active) {
    ShowBar();
  } else {
    SetVisible(false);
  }
}

void clsCallBackProgreso::EstablecerControles(ProgressContainer* container, ProgressBar* bar, ProgressCaption* caption,
                                              LogTarget* logTarget, LogContext* logContext) noexcept {
  container_ = container;
  bar_ = bar;
  caption_ = caption;
  logTarget_ = logTarget;
  logContext_ = logContext;
  SetVisible(false);
}

void clsCallBackProgreso::ApagarProgreso() noexcept {
  NotificarProgreso(false, 0, 0, "");
}

void clsCallBackProgreso::AgregarLog(std::string_view text, bool flag) noexcept {
  if (logTarget_ == nullptr) return;
  Quietly([&] { logTarget_->AppendLog(text, flag, logContext_); });
}

bool clsCallBackProgreso::LogOK(bool ok) noexcept {
  AgregarLog(ok ? " ...OK" : " ...ERROR", false);
  return ok;
}

void clsCallBackProgreso::ShowText(std::string_view text) noexcept {
  Quietly([&] { lastText_ = text; });
  if (caption_ != nullptr) Quietly([&] { caption_->SetCaption(text); });
}

void clsCallBackProgreso::ShowBar() noexcept {
  SetVisible(true);
  if (bar_ != nullptr) {
    Quietly([&] { bar_->SetMin(0); });
    Quietly([&] { bar_->SetValue(0); });
    Quietly([&] { bar_->SetMax(maximum_); });
  }
  SetBarValue(current_);
}

void clsCallBackProgreso::SetVisible(bool visible) noexcept {
  if (container_ != nullptr) Quietly([&] { container_->SetVisible(visible); });
}

void clsCallBackProgreso::SetBarValue(std::int32_t value) noexcept {
  if (bar_ != nullptr) {
    Quietly([&] {
      const std::int32_t end = bar_->Max();
      bar_->SetValue(value <= end ? value : end);
    });
  }
  if (pump_ != nullptr) Quietly([&] { pump_->ProcessPending(); });
}

}  // namespace tolvan
