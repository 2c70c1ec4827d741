#include "desktop/WindowDriver.h"

#include <gtk/gtk.h>
#include <wx/app.h>
#include <wx/bookctrl.h>
#include <wx/checkbox.h>
#include <wx/dataview.h>
#include <wx/textctrl.h>
#include <wx/toplevel.h>

#include <cstdlib>
#include <filesystem>
#include <future>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <thread>

#include "base/Text.h"
#include "desktop/Controls.h"
#include "desktop/DesktopSession.h"
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

/// As xdotool takes it.
std::string Coordinates(wxPoint place) {
  return std::to_string(place.x) + " " + std::to_string(place.y);
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

/// The toolkit's own picker whose title begins so; null when none is shown.
GtkWindow* Picker(std::string_view title) {
  GtkWindow* found = nullptr;
  GList* const windows = gtk_window_list_toplevels();
  for (const GList* each = windows; each != nullptr; each = each->next) {
    if (!GTK_IS_FILE_CHOOSER(each->data) || !gtk_widget_get_mapped(GTK_WIDGET(each->data))) continue;
    const char* const text = gtk_window_get_title(GTK_WINDOW(each->data));
    if (text != nullptr && std::string_view(text).starts_with(title)) found = GTK_WINDOW(each->data);
  }
  g_list_free(windows);
  return found;
}

/// What stands in its field for a path; empty when there is no such field yet.
std::string PathInPicker(std::string_view title) {
  GtkWindow* const picker = Picker(title);
  GtkWidget* const focused = picker == nullptr ? nullptr : gtk_window_get_focus(picker);
  return GTK_IS_ENTRY(focused) ? gtk_entry_get_text(GTK_ENTRY(focused)) : std::string();
}

/// The menu that takes the keys now; null when there is none.
GtkMenuShell* OpenedMenu() {
  GtkWidget* const grabbing = gtk_grab_get_current();
  return GTK_IS_MENU(grabbing) ? GTK_MENU_SHELL(grabbing) : nullptr;
}

/// The entries of a menu in their order, without the separators.
std::vector<GtkWidget*> EntriesOf(GtkMenuShell* menu) {
  std::vector<GtkWidget*> entries;
  GList* const children = gtk_container_get_children(GTK_CONTAINER(menu));
  for (const GList* each = children; each != nullptr; each = each->next) {
    if (!GTK_IS_SEPARATOR_MENU_ITEM(each->data)) entries.push_back(GTK_WIDGET(each->data));
  }
  g_list_free(children);
  return entries;
}

const wxDataViewVirtualListModel& LinesOf(const wxDataViewCtrl& list) {
  return dynamic_cast<const wxDataViewVirtualListModel&>(*list.GetModel());
}

std::string TextInCell(const wxDataViewCtrl& list, unsigned line, unsigned column) {
  wxVariant value;
  LinesOf(list).GetValueByRow(value, line, column);
  return FromWx(value.GetString());
}

void AppendTexts(const wxWindow& window, std::vector<std::string>& texts) {
  texts.push_back(ReplaceAll(FromWx(window.GetLabel()), "\n", " "));
  if (const auto* tabs = dynamic_cast<const wxBookCtrlBase*>(&window)) {
    for (std::size_t page = 0; page < tabs->GetPageCount(); ++page) texts.push_back(FromWx(tabs->GetPageText(page)));
  }
  if (const auto* list = dynamic_cast<const wxDataViewCtrl*>(&window)) {
    for (unsigned column = 0; column < list->GetColumnCount(); ++column) {
      texts.push_back(FromWx(list->GetColumn(column)->GetTitle()));
    }
  }
  for (const wxWindow* const child : window.GetChildren()) {
    if (child->IsShown() && !child->IsTopLevel()) AppendTexts(*child, texts);
  }
}

wxWindow* FindShown(wxWindow& window, const wxString& name) {
  if (!window.IsShown()) return nullptr;
  if (window.GetName() == name) return &window;
  for (wxWindow* const child : window.GetChildren()) {
    wxWindow* const found = child->IsTopLevel() ? nullptr : FindShown(*child, name);
    if (found != nullptr) return found;
  }
  return nullptr;
}

/// The window shown last is active, or the picker or the menu over it.
bool KeysAreTaken() {
  if (OpenedMenu() != nullptr) return true;
  if (GtkWindow* const picker = Picker({})) return gtk_window_has_toplevel_focus(picker) != FALSE;
  for (auto node = wxTopLevelWindows.GetLast(); node != nullptr; node = node->GetPrevious()) {
    auto* const top = dynamic_cast<wxTopLevelWindow*>(node->GetData());
    if (top != nullptr && top->IsShown()) return top->IsActive();
  }
  return true;
}

}  // namespace

WindowDriver::WindowDriver(std::string pictureFolder) : pictureFolder_(std::move(pictureFolder)) {}

int WindowDriver::Run(const std::string& hostPath, const Script& script, const std::string& first) {
  SystemClock clock;
  DesktopSession session(clock);
  session_ = &session;
  failure_.clear();
  ended_ = false;
  std::thread other([&] { RunScript(script, first); });
  const int code = session.Run(hostPath);
  ended_ = true;
  other.join();
  session_ = nullptr;
  return failure_.empty() ? code : -1;
}

void WindowDriver::RunScript(const Script& script, const std::string& first) {
  try {
    UntilShown(first);
    Until(first + " is active", [&] { return dynamic_cast<wxTopLevelWindow&>(Get(first)).IsActive(); });
    Settle();
    script(*this);
  } catch (const std::exception& error) {
    failure_ = error.what();
    PictureOfScreen("fallo");
  }
  try {
    if (Shown("frmOpciones") || Shown("mensaje")) EndSession();
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
    // After the last window nobody takes calls any more, and nobody is in the way.
    if (ended_) begin();
  }
  finished.get();
}

void WindowDriver::EndSession() {
  OnWindows([this] { session_->End(); });
}

/// The window shown last that has the name, so that a dialog hides what it stands over.
wxWindow* WindowDriver::Find(const std::string& name) {
  for (auto node = wxTopLevelWindows.GetLast(); node != nullptr; node = node->GetPrevious()) {
    wxWindow* const found = FindShown(*node->GetData(), ToWx(name));
    if (found != nullptr) return found;
  }
  return nullptr;
}

wxWindow& WindowDriver::Get(const std::string& name) {
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
wxPoint WindowDriver::OnScreen(const std::string& name, wxPoint point) {
  const wxWindow& control = Get(name);
  return (control.GetScreenPosition() + point) * static_cast<int>(control.GetContentScaleFactor());
}

void WindowDriver::ClickAt(wxPoint place, int button) {
  Call("xdotool mousemove " + Coordinates(place) + " click " + std::to_string(button));
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
  const std::optional<wxPoint> place = Ask([&]() -> std::optional<wxPoint> {
    const wxWindow* const control = Find(name);
    if (control == nullptr || !control->IsEnabled()) return std::nullopt;
    const wxSize size = control->GetSize();
    // Not the middle: a check box answers at its left end only where its label is short.
    return OnScreen(name, wxPoint(wxMin(size.x / 2, 12), size.y / 2));
  });
  if (place) ClickAt(*place, 1);
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
  ClickUntil(name, "the picker " + title, [&] { return Picker(title) != nullptr; });
  UntilPicker(title);
}

wxPoint WindowDriver::PlaceOfLine(const std::string& list, unsigned line) {
  UntilReady(list);
  return Ask([&] {
    const auto& control = dynamic_cast<wxDataViewCtrl&>(Get(list));
    const wxRect rect = control.GetItemRect(ItemOf(control, line));
    const wxPoint point = control.ClientToScreen(rect.GetTopLeft() + wxPoint(25, rect.height / 2));
    return OnScreen(list, point - control.GetScreenPosition());
  });
}

void WindowDriver::ClickLine(const std::string& list, unsigned line) {
  ActUntil(
      "a line is selected", [&] { ClickAt(PlaceOfLine(list, line), 1); },
      [&] {
        const auto& control = dynamic_cast<wxDataViewCtrl&>(Get(list));
        return control.IsSelected(ItemOf(control, line));
      });
}

void WindowDriver::OpenMenu(const std::string& list, unsigned line, const std::string& keys) {
  if (!keys.empty()) ClickLine(list, line);
  const auto open = [&] { keys.empty() ? ClickAt(PlaceOfLine(list, line), 3) : Key(keys); };
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
  const wxPoint at = Ask([&] {
    const auto& control = dynamic_cast<wxDataViewCtrl&>(Get(list));
    int x = 15;
    for (unsigned number = 0; number < control.GetColumnCount(); ++number) {
      const wxDataViewColumn* const column = control.GetColumn(number);
      if (control.GetColumnPosition(column) < static_cast<int>(place)) x += column->GetWidth();
    }
    return OnScreen(list, wxPoint(x, 12));
  });
  ClickAt(at, 1);
}

void WindowDriver::Drag(const std::string& control, wxPoint from, wxPoint to) {
  UntilReady(control);
  const wxPoint begin = Ask([&] { return OnScreen(control, from); });
  const wxPoint way = Ask([&] { return OnScreen(control, to); }) - begin;
  // A few steps on the way: from one jump no drag is recognised.
  const std::string move = " mousemove --sync ";
  std::string steps = "xdotool" + move + Coordinates(begin) + " mousedown 1";
  for (int step = 1; step <= 4; ++step) steps += move + Coordinates(begin + way * step / 4) + " sleep 0.05";
  Call(steps + " mouseup 1");
  Settle();
}

/// Not insisted on: some windows never get the focus.
void WindowDriver::UntilKeysAreTaken() {
  HoldsWithin(again, [this] { return Ask(&KeysAreTaken); });
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

void WindowDriver::UntilPicker(const std::string& title) {
  Call("timeout 20 xdotool search --sync --onlyvisible --name " + Quoted(title) + " windowactivate --sync >/dev/null");
}

void WindowDriver::AnswerPicker(const std::string& title, const std::string& path) {
  UntilPicker(title);
  const auto typed = [&] { return PathInPicker(title); };
  // A slash makes it ask for a path, once it has read its folder; before that it takes no keys.
  Wait("a path can be typed into " + title, [&] {
    Type("/");
    return HoldsWithin(25 * glance, [&] { return !Ask(typed).empty(); });
  });
  Key("ctrl+a");
  Type(path);
  Until("the path appears in " + title, [&] { return typed().starts_with(path); });
  Key("Return");
  Until(title + " is gone", [&] { return Picker(title) == nullptr; });
}

std::string WindowDriver::Dismiss() {
  UntilShown("mensaje");
  const std::string text = Text("textoMensaje");
  const wxWindow* const box = Ask([] { return Find("mensaje"); });
  const std::string button = Shown("bMensajeSi") ? "bMensajeSi" : "bMensajeAceptar";
  ActUntil(
      "the box is gone", [&] { Click(button); }, [&] { return Find("mensaje") != box; });
  return text;
}

void WindowDriver::PictureOfScreen(const std::string& name) const {
  std::error_code ignored;
  std::filesystem::create_directories(pictureFolder_, ignored);
  const std::string command = "import -window root " + Quoted(pictureFolder_ + "/" + name + ".png");
  if (std::system(command.c_str()) != 0) std::cerr << "failed: " << command << '\n';
}

std::string WindowDriver::Text(const std::string& name) {
  Settle();
  return Ask([&] {
    const wxWindow& control = Get(name);
    const auto* box = dynamic_cast<const wxTextCtrl*>(&control);
    return FromWx(box != nullptr ? box->GetValue() : control.GetLabel());
  });
}

std::vector<std::string> WindowDriver::Texts(const std::string& name) {
  Settle();
  return Ask([&] {
    std::vector<std::string> texts;
    AppendTexts(Get(name), texts);
    if (GtkMenuShell* const menu = OpenedMenu()) {
      for (GtkWidget* const entry : EntriesOf(menu)) texts.emplace_back(gtk_menu_item_get_label(GTK_MENU_ITEM(entry)));
    }
    return texts;
  });
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
      texts.push_back(TextInCell(control, line, column));
    }
    return texts;
  });
}

unsigned WindowDriver::Lines(const std::string& list) {
  return Ask([&] { return LinesOf(dynamic_cast<wxDataViewCtrl&>(Get(list))).GetCount(); });
}

void WindowDriver::UntilLine(const std::string& list, unsigned line, const std::string& text) {
  Until(text + " in line " + std::to_string(line) + " of " + list,
        [&] { return TextInCell(dynamic_cast<wxDataViewCtrl&>(Get(list)), line, 0) == text; });
}

}  // namespace tolvan::test
