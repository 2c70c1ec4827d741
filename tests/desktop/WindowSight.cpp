// What a person sees in the windows that a WindowDriver drives.
#include <wx/bookctrl.h>
#include <wx/clipbrd.h>
#include <wx/dataview.h>
#include <wx/textctrl.h>
#include <wx/toplevel.h>

#include "base/Text.h"
#include "desktop/GtkWindows.h"
#include "desktop/WindowDriver.h"
#include "desktop/WxText.h"

namespace tolvan::test {
namespace {

const wxDataViewVirtualListModel& LinesOf(const wxDataViewCtrl& list) {
  return dynamic_cast<const wxDataViewVirtualListModel&>(*list.GetModel());
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

}  // namespace

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
  Until(text + " in line " + std::to_string(line) + " of " + list, [&] {
    wxVariant value;
    LinesOf(dynamic_cast<wxDataViewCtrl&>(Get(list))).GetValueByRow(value, line, 0);
    return FromWx(value.GetString()) == text;
  });
}

}  // namespace tolvan::test
