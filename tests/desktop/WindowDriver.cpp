#include "desktop/WindowDriver.h"

#include <wx/app.h>
#include <wx/checkbox.h>
#include <wx/dataview.h>
#include <wx/textctrl.h>
#include <wx/toplevel.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <thread>

#include "base/Text.h"
#include "desktop/DesktopSession.h"
#include "desktop/GtkWindows.h"
#include "desktop/WxText.h"
#include "system/posix/PosixServices.h"

namespace tolvan::test {
namespace {

using namespace std::chrono_literals;
constexpr auto patience = 40s;
constexpr auto again = 4s;  // what has had no effect by then was lost
constexpr auto glance = 20ms;

std::string Quoted(std::string_view text) {
  return "'" + ReplaceAll(text, "'", "'\\''") + "'";
}

void Call(const std::string& command) {
  if (std::system(command.c_str()) != 0) throw std::runtime_error("failed: " + command);
}

wxDataViewItem ItemOf(const wxDataViewCtrl& list, unsigned line) {
  if (const auto* lines = dynamic_cast<const wxDataViewVirtualListModel*>(list.GetModel())) return lines->GetItem(line);
  wxDataViewItemArray items;
  list.GetModel()->GetChildren(wxDataViewItem(), items);
  return items[line];
}

/// Looks again and again whether it holds; false when it does not in time.
bool HoldsWithin(std::chrono::milliseconds time, const std::function<bool()>& holds) {
  const auto end = std::chrono::steady_clock::now() + time;
  while (!holds()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(glance);
  }
  return true;
}

void Wait(const std::string& what, const std::function<bool()>& holds) {
  if (!HoldsWithin(patience, holds)) throw std::runtime_error("waited in vain: " + what);
}

}  // namespace

WindowDriver::WindowDriver(std::string pictureFolder) : pictureFolder_(std::move(pictureFolder)) {}

int WindowDriver::Run(const std::string& hostPath, const Script& script) {
  SystemClock clock;
  DesktopSession session(clock);
  session_ = &session;
  failure_.clear();
  ended_ = false;
  std::thread other([&] { RunScript(script); });
  const int code = session.Run(hostPath);
  ended_ = true;
  other.join();
  session_ = nullptr;
  return failure_.empty() ? code : -1;
}

void WindowDriver::RunScript(const Script& script) {
  try {
    UntilShown("frmOpciones");
    Until("the window is active", [this] { return dynamic_cast<wxTopLevelWindow&>(Get("frmOpciones")).IsActive(); });
    Settle();
    script(*this);
  } catch (const std::exception& error) {
    failure_ = error.what();
    try {
      PictureOfScreen("fallo");
    } catch (const std::exception& second) {
      std::cerr << second.what() << '\n';
    }
  }
  try {
    if (Shown("frmOpciones")) EndSession();
  } catch (const std::exception& error) {
    // The windows do not answer: without this the test would never end.
    std::cerr << failure_ << '\n' << error.what() << '\n';
    std::_Exit(1);
  }
}

void WindowDriver::OnWindows(const std::function<void()>& work) {
  auto task = std::make_shared<std::packaged_task<void()>>(work);
  auto begun = std::make_shared<std::atomic_flag>();
  std::future<void> finished = task->get_future();
  const auto begin = [task, begun] {
    if (!begun->test_and_set()) (*task)();
  };
  wxTheApp->CallAfter(begin);
  const auto end = std::chrono::steady_clock::now() + patience;
  while (finished.wait_for(glance) != std::future_status::ready) {
    if (std::chrono::steady_clock::now() > end) throw std::runtime_error("the windows do not answer");
    // Behind the last window nobody takes calls any more, and nobody is in the way.
    if (ended_) begin();
  }
  finished.get();
}

void WindowDriver::EndSession() {
  OnWindows([this] { session_->End(); });
}

/// The window shown last that has the name, so that a dialog hides what it stands over.
wxWindow* WindowDriver::Find(const std::string& name) const {
  for (auto node = wxTopLevelWindows.GetLast(); node != nullptr; node = node->GetPrevious()) {
    wxWindow* const top = node->GetData();
    if (!top->IsShown()) continue;
    std::vector<wxWindow*> waiting{top};
    while (!waiting.empty()) {
      wxWindow* const each = waiting.back();
      waiting.pop_back();
      if (!each->IsShownOnScreen()) continue;
      if (FromWx(each->GetName()) == name) return each;
      for (wxWindow* const child : each->GetChildren()) {
        if (!child->IsTopLevel()) waiting.push_back(child);
      }
    }
  }
  return nullptr;
}

wxWindow& WindowDriver::Get(const std::string& name) const {
  wxWindow* const found = Find(name);
  if (found == nullptr) throw std::runtime_error("no control is shown that is named " + name);
  return *found;
}

void WindowDriver::Until(const std::string& what, const std::function<bool()>& holds) {
  Wait(what, [&] { return Ask(holds); });
}

/// The X server hands events on in order; what they post is done when the loop has come round a few times.
void WindowDriver::Settle() {
  for (int round = 0; round < 3; ++round) {
    std::this_thread::sleep_for(2 * glance);
    OnWindows([] {});
  }
}

void WindowDriver::UntilShown(const std::string& name) {
  Until(name + " is shown", [&] { return Find(name) != nullptr; });
}

void WindowDriver::UntilGone(const std::string& name) {
  Until(name + " is gone", [&] { return Find(name) == nullptr; });
}

/// Shown, enabled, and in the same place at two looks: a window that has just come up is still being laid out.
void WindowDriver::UntilReady(const std::string& name) {
  wxRect before;
  Until(name + " is ready", [&] {
    const wxWindow* const found = Find(name);
    const wxRect now = found == nullptr ? wxRect() : found->GetScreenRect();
    const bool stays = !now.IsEmpty() && now == before;
    before = now;
    return stays && found->IsEnabled();
  });
}

/// The X server's pixel at a point of a control.
WindowDriver::Place WindowDriver::OnScreen(const std::string& name, int x, int y) const {
  const wxWindow& control = Get(name);
  const wxPoint point = control.GetScreenPosition() + wxPoint(x, y);
  const int scale = static_cast<int>(control.GetContentScaleFactor());
  return {point.x * scale, point.y * scale};
}

void WindowDriver::MouseTo(Place place, int button) {
  Call("xdotool mousemove " + std::to_string(place.x) + " " + std::to_string(place.y) + " click " +
       std::to_string(button));
}

void WindowDriver::ActUntil(const std::string& what, const std::function<void()>& act,
                            const std::function<bool()>& holds) {
  Wait(what, [&] {
    act();
    return HoldsWithin(again, [&] { return Ask(holds); });
  });
}

/// Does nothing while the control is not there or not enabled: then what was pressed before has its effect already.
void WindowDriver::Press(const std::string& name) {
  const std::optional<Place> place = Ask([&]() -> std::optional<Place> {
    const wxWindow* const control = Find(name);
    if (control == nullptr || !control->IsEnabled()) return std::nullopt;
    const wxSize size = control->GetSize();
    // Not the middle: a check box answers at its left end only where its label is short.
    return OnScreen(name, wxMin(size.x / 2, 12), size.y / 2);
  });
  if (place) MouseTo(*place, 1);
}

void WindowDriver::ClickUntil(const std::string& name, const std::string& what, const std::function<bool()>& holds) {
  UntilReady(name);
  ActUntil(
      what, [&] { Press(name); }, holds);
}

void WindowDriver::Click(const std::string& name) {
  UntilReady(name);
  const auto tick = [&]() -> std::optional<bool> {
    const auto* box = dynamic_cast<const wxCheckBox*>(Find(name));
    return box == nullptr ? std::nullopt : std::optional(box->GetValue());
  };
  const std::optional<bool> before = Ask(tick);
  ActUntil(
      name + " is clicked", [&] { Press(name); }, [&] { return !before || tick() != before; });
}

void WindowDriver::ClickUntilShown(const std::string& name, const std::string& shown) {
  ClickUntil(name, shown + " is shown", [&] { return Find(shown) != nullptr; });
}

void WindowDriver::ClickUntilPicker(const std::string& name, const std::string& title) {
  ClickUntil(name, "the picker " + title, [&] { return PickerIsShown(title); });
  UntilPicker(title);
}

WindowDriver::Place WindowDriver::PlaceOfLine(const std::string& list, unsigned line) {
  UntilReady(list);
  return Ask([&] {
    const auto& control = dynamic_cast<wxDataViewCtrl&>(Get(list));
    const wxRect rect = control.GetItemRect(ItemOf(control, line));
    const wxPoint point = control.ClientToScreen(rect.GetTopLeft() + wxPoint(25, rect.height / 2));
    return OnScreen(list, point.x - control.GetScreenPosition().x, point.y - control.GetScreenPosition().y);
  });
}

void WindowDriver::ClickLine(const std::string& list, unsigned line) {
  ActUntil(
      "a line is selected", [&] { MouseTo(PlaceOfLine(list, line), 1); },
      [&] {
        const auto& control = dynamic_cast<wxDataViewCtrl&>(Get(list));
        return control.IsSelected(ItemOf(control, line));
      });
}

void WindowDriver::OpenMenu(const std::string& list, unsigned line, const std::string& keys) {
  if (!keys.empty()) ClickLine(list, line);
  const auto open = [&] { keys.empty() ? MouseTo(PlaceOfLine(list, line), 3) : Key(keys); };
  ActUntil("a menu is open", open, [] { return OpenedMenu() != nullptr; });
}

void WindowDriver::ChooseEntry(unsigned entry) {
  ActUntil(
      "an entry is chosen", [this] { Key("Down"); },
      [entry] {
        GtkMenuShell* const menu = OpenedMenu();
        return menu == nullptr || gtk_menu_shell_get_selected_item(menu) == EntriesOf(menu).at(entry);
      });
  ActUntil(
      "the menu is gone", [this] { Key("Return"); }, [] { return OpenedMenu() == nullptr; });
}

void WindowDriver::ClickHeader(const std::string& list, unsigned place) {
  UntilReady(list);
  const Place at = Ask([&] {
    const auto& control = dynamic_cast<wxDataViewCtrl&>(Get(list));
    int x = 15;
    for (unsigned number = 0; number < control.GetColumnCount(); ++number) {
      const wxDataViewColumn* const column = control.GetColumn(number);
      if (control.GetColumnPosition(column) < static_cast<int>(place)) x += column->GetWidth();
    }
    return OnScreen(list, x, 12);
  });
  MouseTo(at, 1);
}

void WindowDriver::Drag(const std::string& control, int fromX, int fromY, int toX, int toY) {
  UntilReady(control);
  const Place from = Ask([&] { return OnScreen(control, fromX, fromY); });
  const Place to = Ask([&] { return OnScreen(control, toX, toY); });
  const auto move = [](Place place) {
    return " mousemove --sync " + std::to_string(place.x) + " " + std::to_string(place.y);
  };
  // A few steps on the way: from one jump no drag is recognised.
  std::string steps = "xdotool" + move(from) + " mousedown 1";
  for (int step = 1; step <= 4; ++step) {
    steps += move({from.x + (to.x - from.x) * step / 4, from.y + (to.y - from.y) * step / 4}) + " sleep 0.05";
  }
  Call(steps + " mouseup 1");
  Settle();
}

/// The window on top has the focus. Not insisted on: some never get it.
void WindowDriver::UntilKeysAreTaken() {
  HoldsWithin(again, [this] {
    return Ask([] {
      bool picker = false;
      bool taken = OpenedMenu() != nullptr;
      ForEachGtkWindow([&](GtkWindow* window) {
        if (!GTK_IS_FILE_CHOOSER(window)) return;
        picker = true;
        taken = taken || gtk_window_has_toplevel_focus(window);
      });
      if (picker || taken) return taken;
      for (auto node = wxTopLevelWindows.GetLast(); node != nullptr; node = node->GetPrevious()) {
        const auto* const top = dynamic_cast<const wxTopLevelWindow*>(node->GetData());
        if (top != nullptr && top->IsShown()) return const_cast<wxTopLevelWindow*>(top)->IsActive();
      }
      return true;
    });
  });
}

void WindowDriver::KeyUntilShown(const std::string& keys, const std::string& name) {
  ActUntil(
      name + " is shown", [&] { Key(keys); }, [&] { return Find(name) != nullptr; });
}

void WindowDriver::KeyUntilGone(const std::string& keys, const std::string& name) {
  ActUntil(
      name + " is gone", [&] { Key(keys); }, [&] { return Find(name) == nullptr; });
}

void WindowDriver::KeyUntilFocused(const std::string& keys, const std::string& name) {
  ActUntil(
      name + " has the focus", [&] { Key(keys); },
      [&] {
        const wxWindow* const focused = wxWindow::FindFocus();
        return focused != nullptr && FromWx(focused->GetName()) == name;
      });
}

void WindowDriver::Key(const std::string& keys) {
  UntilKeysAreTaken();
  Call("xdotool key --clearmodifiers " + keys);
}

void WindowDriver::Type(const std::string& text) {
  UntilKeysAreTaken();
  Call("xdotool type --clearmodifiers --delay 2 -- " + Quoted(text));
}

void WindowDriver::Fill(const std::string& field, const std::string& text) {
  ActUntil(
      field + " has the focus", [&] { Click(field); }, [&] { return Get(field).IsDescendant(wxWindow::FindFocus()); });
  const auto type = [&] {
    Key("ctrl+a");
    if (text.empty()) return Key("Delete");
    Type(text);
  };
  ActUntil(field + " holds " + text, type, [&] {
    const auto* box = dynamic_cast<wxTextCtrl*>(&Get(field));
    return box == nullptr || FromWx(box->GetValue()) == text;
  });
}

void WindowDriver::UntilPicker(const std::string& title) {
  Call("timeout 20 xdotool search --sync --onlyvisible --name " + Quoted(title) + " windowactivate --sync >/dev/null");
}

void WindowDriver::AnswerPicker(const std::string& title, const std::string& path) {
  UntilPicker(title);
  // A slash makes it ask for a path, once it has read its folder; before that it takes no keys.
  Wait("a path can be typed into " + title, [&] {
    Type("/");
    for (int glances = 0; glances < 25 && Ask(&PathInPicker).empty(); ++glances) std::this_thread::sleep_for(glance);
    return !Ask(&PathInPicker).empty();
  });
  Key("ctrl+a");
  Type(path);
  Wait("the path appears in " + title, [&] { return Ask(&PathInPicker).starts_with(path); });
  Key("Return");
  Call("timeout 20 sh -c " +
       Quoted("while xdotool search --onlyvisible --name " + Quoted(title) + " >/dev/null 2>&1; do sleep 0.05; done"));
}

std::string WindowDriver::Dismiss() {
  UntilShown("mensaje");
  const std::string text = Text("textoMensaje");
  const wxWindow* const box = Ask([this] { return Find("mensaje"); });
  const std::string button = Shown("bMensajeSi") ? "bMensajeSi" : "bMensajeAceptar";
  ActUntil(
      "the box is gone", [&] { Click(button); }, [&] { return Find("mensaje") != box; });
  return text;
}

void WindowDriver::PictureOfScreen(const std::string& name) {
  std::filesystem::create_directories(pictureFolder_);
  Call("import -window root " + Quoted(pictureFolder_ + "/" + name + ".png"));
}

}  // namespace tolvan::test
