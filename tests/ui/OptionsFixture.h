// The options window for tests: controls without a toolkit, a record of what they were told, and the window's logic on
// a host in memory that has neither a spreadsheet program nor a library for documents.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "support/FakeHost.h"
#include "ui/frmOpciones.h"

namespace tolvan::test {

struct FakeLayout : LayoutWindow {
  std::string LayoutTag() const override { return "frmOpciones"; }
  bool IsSizable() const override { return sizable; }
  WindowState State() const override { return state; }
  void SetState(WindowState now) override { state = now; }
  Rectangle Bounds() const override { return bounds; }
  void SetBounds(const Rectangle& now) override { bounds = now; }
  std::vector<Rectangle> WorkAreas() const override { return screens; }

  bool sizable = true;
  WindowState state = WindowState::Normal;
  Rectangle bounds{.left = 0, .top = 0, .width = 9000, .height = 6000};
  std::vector<Rectangle> screens = std::vector(1, Rectangle{.left = 0, .top = 0, .width = 19200, .height = 12000});
};

struct FakeOptionsView : OptionsView, ProgressContainer, ProgressBar, ProgressCaption, MessagePump {
  struct Control {
    std::string text;
    bool checked = false;
    bool enabled = true;
  };

  std::string Text(std::string_view name) const override {
    const auto found = controls.find(name);
    return found == controls.end() ? std::string() : found->second.text;
  }
  void SetText(std::string_view name, std::string_view text) override { Get(name).text = text; }
  bool Checked(std::string_view name) const override {
    return controls.contains(name) && controls.find(name)->second.checked;
  }
  void SetChecked(std::string_view name, bool checked) override { Get(name).checked = checked; }
  void SetEnabled(std::string_view name, bool enabled) override { Get(name).enabled = enabled; }
  Date DateOf(std::string_view name) const override { return ParseDateText(Text(name)).value_or(Date()); }
  void SetDate(std::string_view name, Date date) override { SetText(name, DateText(date)); }
  TimeOfDay TimeOf(std::string_view name) const override { return ParseTimeText(Text(name)).value_or(TimeOfDay()); }
  void SetTime(std::string_view name, TimeOfDay time) override { SetText(name, TimeText(time)); }
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

  LayoutWindow& StoredLayout() override { return layout; }

  Control& Get(std::string_view name) { return controls[std::string(name)]; }

  std::map<std::string, Control, std::less<>> controls{{"dC1_FechaMovimiento", {"29/02/2024"}},
                                                       {"dtC1_HoraFinJornada", {"19:00"}}};
  std::vector<ActionNode> nodes;
  int panel = -1;
  std::map<int, std::string> files;
  std::vector<std::string> said;
  bool acceptAllowed = true;
  bool progressShown = false;
  std::int32_t max = 0;
  FakeLayout layout;
};

/// An import that gets as far as reading ends there.
struct MissingSpreadsheets : SpreadsheetApplication {
  void Start() override { throw HostError(HostErrorKind::Unreachable, "no instalado"); }
  std::unique_ptr<WorksheetReader> OpenFirstWorksheet(std::string_view, const Interruption&) override { return {}; }
  std::unique_ptr<NewWorkbook> CreateFromTemplate(std::string_view, std::uint32_t) override { return {}; }
};

struct MissingHashes : HashService {
  std::string Md5(std::string_view) const override { return {}; }
};

struct OptionsFixture : ::testing::Test {
  using Box = FakeDialogs::Box;

  FakeHost host;
  FakeOptionsView view;
  MissingSpreadsheets spreadsheets;
  MissingHashes hashes;
  MissingXmlLibrary xml;
  std::map<std::string, std::string>& stored = host.application.settings.values;
  FakeDialogs& dialogs = host.services.dialogs;
  std::vector<Box>& boxes = dialogs.boxes;
  ActionTools tools{{spreadsheets, hashes, {}}, xml};
  frmOpciones form{host.context, view, tools};
};

}  // namespace tolvan::test
