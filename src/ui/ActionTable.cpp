#include "ui/ActionTable.h"

#include <stdexcept>

#include "base/Text.h"
#include "services/ResourceTexts.h"

namespace tolvan {
namespace {

std::size_t SlotIndex(int number) {
  if (number < 1 || number > action::last) {
    throw std::out_of_range("action number " + std::to_string(number) + " is not one of 1 to 6");
  }
  return static_cast<std::size_t>(number - 1);
}

}  // namespace

const ActionSlot& ActionTable::At(int number) const {
  return slots_[SlotIndex(number)];
}

void ActionTable::Register(int number, std::int32_t captionId, std::int32_t parent) {
  slots_[SlotIndex(number)] = {.panel = number,
                               .parent = parent,
                               .captionId = captionId,
                               .image = number,
                               .flagA = false,
                               .flagB = true,
                               .registered = true};
}

std::vector<ActionNode> ActionTable::Nodes() const {
  std::vector<ActionNode> nodes;
  AppendChildren(action::none, nodes);
  return nodes;
}

void ActionTable::AppendChildren(int parent, std::vector<ActionNode>& nodes) const {
  for (int number = 1; number <= action::last; ++number) {
    const ActionSlot& slot = At(number);
    if (!slot.registered || slot.parent != parent) continue;
    nodes.push_back({.key = KeyOf(number),
                     .parentKey = parent == action::none ? std::string() : KeyOf(parent),
                     .caption = std::string(ResourceText(slot.captionId)),
                     .image = slot.image});
    AppendChildren(number, nodes);
  }
}

std::string ActionTable::KeyOf(int number) {
  return "_" + std::to_string(number);
}

int ActionTable::NumberOf(const std::string& nodeKey) {
  const auto number = ParseInteger(std::string_view(nodeKey).substr(nodeKey.empty() ? 0 : 1));
  if (!number) throw std::out_of_range("the node key \"" + nodeKey + "\" holds no action number");
  static_cast<void>(SlotIndex(*number));
  return *number;
}

ActionTable ComponentActions() {
  ActionTable table;
  table.Register(action::dailySalesFile, text_id::dailySalesFile, action::none);
  table.Register(action::movilnetPrices, text_id::movilnetPrices, action::none);
  table.Register(action::collectorFile, text_id::dataTerminal, action::none);
  table.Register(action::excelPrices, text_id::excelSheet, action::none);
  table.Register(action::taxpayerRegistry, text_id::taxpayerRegistry, action::none);
  return table;
}

}  // namespace tolvan
