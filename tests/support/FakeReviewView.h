// The review window's view, which keeps what it was told to show.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "ui/StatusImportarView.h"

namespace tolvan::test {

struct FakeReviewView : StatusImportarView {
  ReviewListModel& lvStatus() override { return list; }
  void SetExplanation(std::string_view text) override { explanation = text; }
  void SetNote(std::string_view text) override { note = text; }
  void SetSummary(int index, std::string_view text) override { summary[index] = text; }
  void EnableAccept(bool enabled) override { accept = enabled; }
  void PopUpMenu(bool a, bool b, bool c) override { menu = {a, b, c}; }
  std::optional<std::string> PickItem(const SqlStatement& items, std::string_view) override {
    query = items.ParameterText();
    return search ? search(items) : picked;
  }
  void ShowModal() override {}
  void Close() override { ++closed; }
  std::unique_ptr<StatusDisplay> OpenStatus() override { return nullptr; }

  ReviewListModel list;
  std::string explanation;
  std::string note;
  std::map<int, std::string> summary;
  bool accept = true;
  std::vector<bool> menu;
  std::string query;
  std::optional<std::string> picked = "ITEM";  ///< by the user, unless `search` finds one
  std::function<std::optional<std::string>(const SqlStatement& items)> search;
  int closed = 0;
};

}  // namespace tolvan::test
