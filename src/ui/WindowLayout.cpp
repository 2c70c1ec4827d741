#include "ui/WindowLayout.h"

#include <algorithm>

#include "services/ImpExpSettings.h"

namespace tolvan {
namespace {

constexpr std::string_view windowSection = "Ventanas";
constexpr std::string_view listSection = "Listas";
constexpr std::int32_t neverStored = -1;

std::string KeyOf(std::string_view tag, std::string_view suffix) {
  return std::string(ImpExpSettings::section).append(tag).append(suffix);
}

std::int64_t Overlap(const Rectangle& window, const Rectangle& area) {
  const auto shared = [](std::int64_t from, std::int64_t to, std::int64_t otherFrom, std::int64_t otherTo) {
    return std::max<std::int64_t>(0, std::min(to, otherTo) - std::max(from, otherFrom));
  };
  return shared(window.left, window.left + window.width, area.left, area.left + area.width) *
         shared(window.top, window.top + window.height, area.top, area.top + area.height);
}

bool IsOrderOf(std::vector<std::int32_t> order) {
  std::sort(order.begin(), order.end());
  for (std::size_t place = 0; place < order.size(); ++place) {
    if (order[place] != static_cast<std::int32_t>(place)) return false;
  }
  return true;
}

}  // namespace

void SaveLayout(AppServices& services, const LayoutWindow& window) {
  const auto write = [&](std::string_view suffix, std::int32_t value) {
    services.WriteLayout(windowSection, KeyOf(window.LayoutTag(), suffix), value);
  };
  const WindowState state = window.State();
  write("_WS", static_cast<std::int32_t>(state));
  if (state != WindowState::Normal) return;
  const Rectangle bounds = window.Bounds();
  if (window.IsSizable()) {
    write("_H", bounds.height);
    write("_W", bounds.width);
  }
  write("_T", bounds.top);
  write("_L", bounds.left);
}

void RestoreLayout(AppServices& services, LayoutWindow& window) {
  const auto read = [&](std::string_view suffix) {
    return services.ReadLayout(windowSection, KeyOf(window.LayoutTag(), suffix), neverStored);
  };
  Rectangle bounds = window.Bounds();
  if (window.IsSizable()) {
    if (const std::int32_t height = read("_H"); height > 0) bounds.height = height;
    if (const std::int32_t width = read("_W"); width > 0) bounds.width = width;
  }
  const std::int32_t left = read("_L");
  const std::int32_t top = read("_T");
  const std::vector<Rectangle> areas = window.WorkAreas();
  if (left > neverStored && top > neverStored) {
    bounds.left = left;
    bounds.top = top;
  } else if (!areas.empty()) {
    const Rectangle& screen = areas.front();
    bounds.left = screen.left + (screen.width - bounds.width) / 2;
    bounds.top = screen.top + (screen.height - bounds.height) / 2;
  }
  window.SetBounds(BroughtOnScreen(bounds, areas));
  const std::int32_t state = read("_WS");
  // A window that was left minimised would open out of sight.
  const bool maximised = state == static_cast<std::int32_t>(WindowState::Maximised);
  window.SetState(maximised ? WindowState::Maximised : WindowState::Normal);
}

Rectangle BroughtOnScreen(Rectangle bounds, const std::vector<Rectangle>& workAreas) {
  if (workAreas.empty()) return bounds;
  const Rectangle area = *std::max_element(
      workAreas.begin(), workAreas.end(),
      [&](const Rectangle& one, const Rectangle& other) { return Overlap(bounds, one) < Overlap(bounds, other); });
  bounds.width = std::min(bounds.width, area.width);
  bounds.height = std::min(bounds.height, area.height);
  bounds.left = std::clamp(bounds.left, area.left, area.left + area.width - bounds.width);
  bounds.top = std::clamp(bounds.top, area.top, area.top + area.height - bounds.height);
  return bounds;
}

void SaveListLayout(AppServices& services, std::string_view tag, const ListLayout& layout) {
  const auto write = [&](const std::string& suffix, std::int32_t value) {
    services.WriteLayout(listSection, KeyOf(tag, suffix), value);
  };
  for (std::size_t column = 0; column < layout.widths.size(); ++column) {
    write("_C" + std::to_string(column), layout.widths[column]);
  }
  for (std::size_t place = 0; place < layout.order.size(); ++place) {
    write("_V" + std::to_string(place), layout.order[place]);
  }
  write("_SK", layout.sortColumn);
  write("_OA", layout.ascending ? 1 : 0);
}

ListLayout LoadListLayout(AppServices& services, std::string_view tag, std::size_t columns) {
  const auto read = [&](const std::string& suffix, std::int32_t otherwise) {
    return services.ReadLayout(listSection, KeyOf(tag, suffix), otherwise);
  };
  ListLayout layout;
  for (std::size_t column = 0; column < columns; ++column) {
    const std::string number = std::to_string(column);
    layout.widths.push_back(std::max(0, read("_C" + number, 0)));
    layout.order.push_back(read("_V" + number, neverStored));
  }
  if (!IsOrderOf(layout.order)) {
    for (std::size_t place = 0; place < columns; ++place) layout.order[place] = static_cast<std::int32_t>(place);
  }
  const std::int32_t sortColumn = read("_SK", neverStored);
  if (sortColumn >= 0 && static_cast<std::size_t>(sortColumn) < columns) layout.sortColumn = sortColumn;
  layout.ascending = read("_OA", 1) != 0;
  return layout;
}

}  // namespace tolvan
