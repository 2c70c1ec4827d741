// The options window for tests: controls without a toolkit, and a record of what they were told.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "ui/HeadlessOpcionesView.h"
#include "ui/OptionsWindowView.h"

namespace tolvan::test {

struct FakeOptionsView : OptionsWindowView, ProgressContainer, ProgressBar, ProgressCaption, MessagePump {
  FakeOptionsView() {
    controls.SetDate(control::fechaMovimiento, Date::FromParts(2024, 2, 29));
    controls.SetTime(control::horaFinJornada, {.hour = 19, .minute = 0});
  }

  std::string Text(std::string_view name) const override { return controls.Text(name); }
  void SetText(std::string_view name, std::string_view text) override { controls.SetText(name, text); }
  bool Checked(std::string_view name) const override { return controls.Checked(name); }
  void SetChecked(std::string_view name, bool checked) override { controls.SetChecked(name, checked); }
  void SetEnabled(std::string_view name, bool enabled) override { controls.SetEnabled(name, enabled); }
  Date DateOf(std::string_view name) const override { return controls.DateOf(name); }
  void SetDate(std::string_view name, Date date) override { controls.SetDate(name, date); }
  TimeOfDay TimeOf(std::string_view name) const override { return controls.TimeOf(name); }
  void SetTime(std::string_view name, TimeOfDay time) override { controls.SetTime(name, time); }
  void Focus(std::string_view name) override { said.push_back("focus " + std::string(name)); }

  void ShowNodes(const std::vector<ActionNode>& shown) override { nodes = shown; }
  void SelectNode(const std::string& key) override { said.push_back("node " + key); }
  void ShowPanel(int shown) override { panel = shown; }
  void SetFile(int number, std::string_view text) override { files[number] = text; }
  void SelectAll(std::string_view name) override { said.push_back("select " + std::string(name)); }
  void SetBusy(bool now) override { said.emplace_back(now ? "busy" : "idle"); }
  void AllowAccept(bool allowed) override { acceptAllowed = allowed; }
  void RequestStop() override { said.emplace_back("stop"); }
  void CloseWindow() override { said.emplace_back("close"); }
  void PressTab() override { said.emplace_back("tab"); }
  ProgressContainer& pbProgreso() override { return *this; }
  ProgressBar& pb01() override { return *this; }
  ProgressCaption& lbProgreso() override { return *this; }
  MessagePump& Pump() override { return *this; }
  std::unique_ptr<StatusDisplay> OpenStatus() override { return nullptr; }

  void SetVisible(bool visible) override { progressShown = visible; }
  void SetMin(std::int32_t) override {}
  void SetValue(std::int32_t) override {}
  void SetMax(std::int32_t maximum) override { max = maximum; }
  std::int32_t Max() const override { return max; }
  void SetCaption(std::string_view) override {}
  void ProcessPending() override {}

  std::string LayoutTag() const override { return "frmOpciones"; }
  bool IsSizable() const override { return sizable; }
  WindowState State() const override { return state; }
  void SetState(WindowState now) override { state = now; }
  Rectangle Bounds() const override { return bounds; }
  void SetBounds(const Rectangle& now) override { bounds = now; }
  std::vector<Rectangle> WorkAreas() const override { return screens; }

  HeadlessOpcionesView controls;
  std::vector<ActionNode> nodes;
  int panel = -1;
  std::map<int, std::string> files;
  std::vector<std::string> said;
  bool acceptAllowed = true;
  bool progressShown = false;
  std::int32_t max = 0;
  bool sizable = true;
  WindowState state = WindowState::Normal;
  Rectangle bounds{.left = 0, .top = 0, .width = 9000, .height = 6000};
  std::vector<Rectangle> screens = std::vector(1, Rectangle{.left = 0, .top = 0, .width = 19200, .height = 12000});
};

}  // namespace tolvan::test
