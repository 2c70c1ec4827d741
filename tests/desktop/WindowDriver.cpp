#include "desktop/WindowDriver.h"

#include <gtk/gtk.h>
#include <wx/app.h>
#include <wx/clipbrd.h>
#include <wx/dataview.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/toplevel.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <iostream>
#include <stdexcept>
#include <thread>

#include "base/Text.h"
#include "desktop/DesktopSession.h"
#include "desktop/WxText.h"
#include "platform/clock/SystemClock.h"

namespace tolvan::test {
namespace {

using namespace std::chrono_literals;
constexpr auto patience = 20s;
constexpr auto glance = 20ms;

std::string Quoted(std::string_view text) {
  return "'" + ReplaceAll(text, "'", "'\\''") + "'";
}

void Call(const std::string& command) {
  if (std::system(command.c_str()) != 0) throw std::runtime_error("failed: " + command);
}

/// Those that are on the screen, of which wxWidgets knows only its own.
void ForEachToolkitWindow(const std::function<void(GtkWindow*)>& take) {
  GList* const windows = gtk_window_list_toplevels();
  for (const GList* each = windows; each != nullptr; each = each->next) {
    if (gtk_widget_get_mapped(GTK_WIDGET(each->data))) take(GTK_WINDOW(each->data));
  }
  g_list_free(windows);
}

const wxDataViewVirtualListModel& LinesOf(const wxDataViewCtrl& list) {
  return dynamic_cast<const wxDataViewVirtualListModel&>(*list.GetModel());
}

wxDataViewItem ItemOf(const wxDataViewCtrl& list, unsigned line) {
  if (const auto* lines = dynamic_cast<const wxDataViewVirtualListModel*>(list.GetModel())) return lines->GetItem(line);
  wxDataViewItemArray items;
  list.GetModel()->GetChildren(wxDataViewItem(), items);
  return items[line];
}

/// Looks again and again until it holds; throws when it does not in time.
void Wait(const std::string& what, const std::function<bool()>& holds) {
  const auto end = std::chrono::steady_clock::now() + patience;
  while (!holds()) {
    if (std::chrono::steady_clock::now() > end) throw std::runtime_error("waited in vain: " + what);
    std::this_thread::sleep_for(glance);
  }
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

void WindowDriver::Click(const std::string& name) {
  UntilReady(name);
  const Place place = Ask([&] {
    const wxSize size = Get(name).GetSize();
    // Not the middle: a check box answers at its left end only where its label is short.
    return OnScreen(name, wxMin(size.x / 2, 12), size.y / 2);
  });
  MouseTo(place, 1);
}

void WindowDriver::ClickLine(const std::string& list, unsigned line, int button) {
  UntilReady(list);
  const Place place = Ask([&] {
    const auto& control = dynamic_cast<wxDataViewCtrl&>(Get(list));
    const wxRect rect = control.GetItemRect(ItemOf(control, line));
    const wxPoint point = control.ClientToScreen(rect.GetTopLeft() + wxPoint(25, rect.height / 2));
    return OnScreen(list, point.x - control.GetScreenPosition().x, point.y - control.GetScreenPosition().y);
  });
  MouseTo(place, button);
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

void WindowDriver::Key(const std::string& keys) {
  Call("xdotool key --clearmodifiers " + keys);
}

void WindowDriver::Type(const std::string& text) {
  Call("xdotool type --clearmodifiers --delay 2 -- " + Quoted(text));
}

void WindowDriver::Fill(const std::string& field, const std::string& text) {
  Click(field);
  Until(field + " has the focus", [&] { return Get(field).IsDescendant(wxWindow::FindFocus()); });
  Key("ctrl+a");
  if (text.empty()) {
    Key("Delete");
  } else {
    Type(text);
  }
  Until(field + " holds " + text, [&] {
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
    for (int glances = 0; glances < 25 && PathInPicker().empty(); ++glances) std::this_thread::sleep_for(glance);
    return !PathInPicker().empty();
  });
  Key("ctrl+a");
  Type(path);
  Wait("the path appears in " + title, [&] { return PathInPicker().starts_with(path); });
  Key("Return");
  Call("timeout 20 sh -c " +
       Quoted("while xdotool search --onlyvisible --name " + Quoted(title) + " >/dev/null 2>&1; do sleep 0.05; done"));
}

/// What stands in the field for a path of the toolkit's picker; empty when there is no such field yet.
std::string WindowDriver::PathInPicker() {
  return Ask([] {
    std::string path;
    ForEachToolkitWindow([&](GtkWindow* window) {
      GtkWidget* const focused = gtk_window_get_focus(window);
      if (GTK_IS_FILE_CHOOSER(window) && GTK_IS_ENTRY(focused)) path = gtk_entry_get_text(GTK_ENTRY(focused));
    });
    return path;
  });
}

void WindowDriver::UntilMenu() {
  Until("a menu is shown", [] {
    bool shown = false;
    ForEachToolkitWindow([&](GtkWindow* window) {
      if (GTK_IS_MENU(gtk_bin_get_child(GTK_BIN(window)))) shown = gtk_grab_get_current() != nullptr;
    });
    return shown;
  });
}

std::string WindowDriver::Dismiss() {
  UntilShown("mensaje");
  const std::string text = Text("textoMensaje");
  const wxWindow* const box = Ask([this] { return Find("mensaje"); });
  Click(Shown("bMensajeSi") ? "bMensajeSi" : "bMensajeAceptar");
  Until("the box is gone", [&] { return Find("mensaje") != box; });
  return text;
}

std::string WindowDriver::Text(const std::string& name) {
  Settle();
  return Ask([&] {
    const wxWindow& control = Get(name);
    const auto* box = dynamic_cast<const wxTextCtrl*>(&control);
    return FromWx(box != nullptr ? box->GetValue() : control.GetLabel());
  });
}

std::string WindowDriver::Clipboard() {
  Settle();
  return Ask([] {
    const wxClipboardLocker lock;
    wxTextDataObject copied;
    return wxTheClipboard->GetData(copied) ? FromWx(copied.GetText()) : std::string();
  });
}

std::string WindowDriver::Title(const std::string& name) {
  return Ask([&] { return FromWx(dynamic_cast<wxTopLevelWindow&>(Get(name)).GetTitle()); });
}

std::string WindowDriver::Focused() {
  Settle();
  return Ask([] {
    const wxWindow* const focused = wxWindow::FindFocus();
    return focused == nullptr ? std::string() : FromWx(focused->GetName());
  });
}

bool WindowDriver::Enabled(const std::string& name) {
  Settle();
  return Ask([&] { return Get(name).IsEnabled(); });
}

bool WindowDriver::Shown(const std::string& name) {
  return Ask([&] { return Find(name) != nullptr; });
}

std::vector<std::string> WindowDriver::Line(const std::string& list, unsigned line) {
  return Ask([&] {
    std::vector<std::string> texts;
    const auto& control = dynamic_cast<wxDataViewCtrl&>(Get(list));
    for (unsigned column = 0; column < control.GetColumnCount(); ++column) {
      wxVariant value;
      LinesOf(control).GetValueByRow(value, line, column);
      texts.push_back(FromWx(value.GetString()));
    }
    return texts;
  });
}

unsigned WindowDriver::Lines(const std::string& list) {
  return Ask([&] { return LinesOf(dynamic_cast<wxDataViewCtrl&>(Get(list))).GetCount(); });
}

void WindowDriver::UntilLine(const std::string& list, unsigned line, const std::string& text) {
  Wait(text + " in line " + std::to_string(line) + " of " + list, [&] { return Line(list, line).front() == text; });
}

void WindowDriver::PictureOfScreen(const std::string& name) {
  std::filesystem::create_directories(pictureFolder_);
  Call("import -window root " + Quoted(pictureFolder_ + "/" + name + ".png"));
}

void WindowDriver::PictureOfWindow(const std::string& control, const std::string& name) {
  UntilShown(control);
  OnWindows([] {});
  std::this_thread::sleep_for(250ms);  // until what was asked to be drawn is on the screen
  const std::string crop = Ask([&] {
    const wxWindow* const top = wxGetTopLevelParent(&Get(control));
    const wxRect rect = top->GetScreenRect();
    const int scale = static_cast<int>(top->GetContentScaleFactor());
    return std::to_string(rect.width * scale) + "x" + std::to_string(rect.height * scale) + "+" +
           std::to_string(rect.x * scale) + "+" + std::to_string(rect.y * scale);
  });
  std::filesystem::create_directories(pictureFolder_);
  Call("import -window root -crop " + crop + " +repage " + Quoted(pictureFolder_ + "/" + name + ".png"));
}

}  // namespace tolvan::test
