// The review window for tests: no toolkit, and a record of what it was told.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "ui/frmStatusImportar.h"

namespace tolvan::test {

struct FakeReviewView : ReviewView {
  ReviewListModel& lvStatus() override { return list; }
  void SetExplanation(std::string_view text) override { explanation = text; }
  void SetNote(std::string_view text) override { note = text; }
  void SetSummary(int index, std::string_view text) override { summary[index] = text; }
  void EnableAccept(bool enabled) override { accept = enabled; }
  void PopUpMenu(bool associate, bool dissociate, bool setCode) override { menu = {associate, dissociate, setCode}; }
  std::optional<std::string> PickItem(const SqlStatement& items, std::string_view) override {
    query = items.ParameterText();
    return search ? search(items) : picked;
  }
  void ShowUntilClosed() override {}
  void CloseWindow() override { ++closed; }
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

/// The review's logic over such a view.
struct FakeReviewWindow {
  explicit FakeReviewWindow(const ComponentContext& context)
      : form(context, [this](frmStatusImportar&) { return std::exchange(made, nullptr); }) {}

  std::unique_ptr<FakeReviewView> made = std::make_unique<FakeReviewView>();
  FakeReviewView& view = *made;
  frmStatusImportar form;
};

}  // namespace tolvan::test
