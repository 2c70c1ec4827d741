// The six actions of the options window. Actions are registered with the panel and the caption that they show; what has
// a slot but is not registered gets no node in the tree.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace tolvan {

namespace action {
inline constexpr int none = 0;
inline constexpr int dailySalesFile = 1;
inline constexpr int salesUpload = 2;
inline constexpr int movilnetPrices = 3;
inline constexpr int collectorFile = 4;
inline constexpr int excelPrices = 5;
inline constexpr int taxpayerRegistry = 6;
inline constexpr int last = 6;
}  // namespace action

struct ActionSlot {
  std::int32_t panel = 0;   ///< index of the panel; a negative one means that panel 0 is shown
  std::int32_t parent = 0;  ///< number of the parent action, 0 at the root
  std::int32_t captionId = 0;
  std::int32_t image = 0;
  bool flagA = false;
  bool flagB = true;
  bool registered = false;
};

/// A node of the tree, in the order in which nodes are added: depth first, ascending action numbers.
struct ActionNode {
  std::string key;        ///< "_" and the action number
  std::string parentKey;  ///< empty at the root
  std::string caption;
  std::int32_t image = 0;
};

class ActionTable {
 public:
  /// Throw std::out_of_range for a number outside 1 to 6.
  const ActionSlot& At(int number) const;
  void Register(int number, std::int32_t captionId, std::int32_t parent);

  /// The registered actions as the tree shows them.
  std::vector<ActionNode> Nodes() const;

  /// The key of an action's node.
  static std::string KeyOf(int number);

  /// The action number in a node's key. Throws std::out_of_range when it holds none from 1 to 6.
  static int NumberOf(const std::string& nodeKey);

 private:
  void AppendChildren(int parent, std::vector<ActionNode>& nodes) const;

  std::array<ActionSlot, action::last> slots_{};
};

/// The table of the component: every action but the sales upload, which runs from the command only.
ActionTable ComponentActions();

}  // namespace tolvan
