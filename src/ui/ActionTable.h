// The actions of the component, one row each: place in the tree, panel, command, what is checked before the action
// runs, and its routine. Tree, panels, dispatcher and command line are loops over these rows, so that an action added
// here is known to all of them.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/UserInterface.h"
#include "import/PriceImporter.h"
#include "services/ActionReport.h"
#include "services/ComponentContext.h"
#include "services/clsCallBackProgreso.h"

namespace tolvan {

class XmlLibrary;

namespace action {
inline constexpr int none = 0;
inline constexpr int dailySalesFile = 1;
inline constexpr int salesUpload = 2;
inline constexpr int movilnetPrices = 3;
inline constexpr int collectorFile = 4;
inline constexpr int excelPrices = 5;
inline constexpr int taxpayerRegistry = 6;
}  // namespace action

/// What the user fills in on an action's panel.
enum class PanelKind {
  None,        ///< no panel, and no node in the tree
  DailySales,  ///< the fields of the daily sales file
  File,        ///< the file that the action reads
  Collector,   ///< a purpose, and a button of its own that makes the file
};

/// The launch check of an action that needs a file: the user is asked for it, and without one nothing runs. Spanish.
struct FileCheck {
  int button = 0;          ///< element of the button array BAbrirArchivo
  std::string_view label;  ///< of the field that shows the file
  std::string_view pickerTitle;
  std::string_view pickerFilter;
  std::string_view nothingChosen;  ///< the failure when there is no file
};

struct Action;

/// What the actions need besides the component's own services.
struct ActionTools {
  ImportTools imports;
  XmlLibrary& xml;
};

/// One run of an action. All that it refers to outlives the run.
struct ActionRun {
  const Action& action;
  const ComponentContext& context;
  const ActionTools& tools;
  clsCallBackProgreso& progress;
  StatusWindow& window;  ///< status displays are put over it
  std::string file;      ///< the one that was chosen; empty for an action that needs none
  bool interactive;
  std::function<void()> afterwards{};  ///< what the routine has to offer once the report has been shown; may be empty
};

/// A routine reports how it went; what it throws, whoever runs it shows.
using ActionRoutine = std::function<ActionReport(ActionRun& run)>;
using ImporterFactory = std::unique_ptr<PriceImporter> (*)(const ComponentContext& context, ImportTools tools);

struct Action {
  int number = action::none;
  std::int32_t captionId = 0;  ///< of the node and the panel's title
  int parent = action::none;   ///< number of the parent in the tree, `none` at the root
  PanelKind panel = PanelKind::None;
  std::string_view command{};          ///< of the command line; empty when there is none
  std::string_view summary{};          ///< what the command does, Spanish, one sentence without a full stop
  std::string_view help{};             ///< what the panel says first, Spanish
  std::string_view warning{};          ///< what it says next, emphasised; empty for nothing
  const FileCheck* check = nullptr;    ///< null when no file is needed
  bool opensTemplate = false;          ///< the panel offers the template of its workbook
  bool changesRows = false;            ///< a row of its list can be given another item or code before it is applied
  bool findsFileAgain = false;         ///< the file of an import that was not finished is chosen again later
  ImporterFactory importer = nullptr;  ///< of a price list; null otherwise
  ActionRoutine routine{};             ///< empty when accepting runs nothing
};

/// The rows in ascending order of their numbers.
std::span<const Action> ComponentActions();

/// The row of a number. Throws std::out_of_range when there is none.
const Action& FindAction(int number, std::span<const Action> actions = ComponentActions());

/// A node of the tree.
struct ActionNode {
  std::string key;        ///< "_" and the action number
  std::string parentKey;  ///< empty at the root
  std::string caption;
};

/// The actions that have a panel, in the order in which nodes are added: depth first, in the order of the rows.
std::vector<ActionNode> NodesOf(std::span<const Action> actions);

/// The key of an action's node.
std::string NodeKeyOf(int number);

/// The action number in a node's key. Throws std::out_of_range when it holds none.
int NumberInKey(const std::string& nodeKey);

/// The dispatcher: runs the routine of an action and, when the run is interactive, shows in one box how it went, unless
/// the action has done so. An action without a routine reports nothing.
ActionReport RunAction(ActionRun& run);

/// Shows a report in the box for successes or failures.
void ShowReport(const ComponentContext& context, const ActionReport& report);

/// Shows the box for failures with a text that begins with a line break.
void ShowFailure(const ComponentContext& context, std::string_view text);

}  // namespace tolvan
