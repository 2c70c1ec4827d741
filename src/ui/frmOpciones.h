// The options window without its toolkit: the current action, the fill and save of panels, and the dispatcher that runs
// an action and tells how it went. Views forward events to it and show what it says.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "export/DailySalesExport.h"
#include "ui/ActionTable.h"
#include "ui/OpcionesView.h"

namespace tolvan {

/// How the last run of the dispatcher went.
struct ActionOutcome {
  int action = action::none;
  bool ran = false;  ///< false when there was nothing to run for the action, or its settings could not be saved
  bool succeeded = false;
  std::string errorText{};  ///< the collected messages, each behind a line break (CR LF)
};

/// A routine of an action. It appends its messages to `errorText` and returns success; with `silent` set, success is
/// not announced, nor a failure without messages, which the routine has told itself.
using ActionRoutine = std::function<bool(bool interactive, std::string& errorText, bool& silent)>;

class frmOpciones {
 public:
  /// The name that the file helper's cleaning makes of an empty one; it means that no name is forced.
  static constexpr std::string_view emptyFileName = "_";

  /// Both must outlive the window. The dispatcher begins with the routines of the two sales exports.
  frmOpciones(const ComponentContext& context, OpcionesView& view);

  // The public operations, in their order.

  /// Fills the store code's box from the settings.
  void LlenarCodigo();

  /// The accept button: saves the panels and the section, and when that succeeded runs the current action
  /// interactively. A refused or failed save is told to the user with text 35389, and nothing is run.
  void bGuardar_Click();

  /// Fills the panel of an action from the settings, of every action for 0. Always true.
  bool local_LlenarForm(int actionNumber);

  /// Puts the focus on the first field of an action's panel.
  void local_FocoPrimerCampo(int actionNumber);

  /// The load step: fills all panels.
  void Cargar();

  /// Runs the current action and, when `interactive`, reports its outcome in one box.
  void ImpExp(bool interactive);

  /// Writes the daily sales file.
  bool Exp_Micros_01(bool interactive, std::string& errorText);

  /// Throws std::out_of_range outside 0 to 6.
  void SelectAction(int actionNumber);
  int CurrentAction() const { return currentAction_; }

  /// Writes the panel of an action to the settings, of every action for 0; nothing is made durable yet. Throws
  /// ApplicationError when the store refuses a value.
  void SavePanel(int actionNumber);

  /// The folder picker of the daily sales panel.
  void ChooseFolder();

  /// Makes the dispatcher run `routine` for an action of the table.
  void SetRoutine(int actionNumber, ActionRoutine routine);

  /// The caption and the title of every message box.
  std::string Caption() const;

  const ActionOutcome& LastOutcome() const { return outcome_; }
  const ActionReport& LastDailySales() const { return dailySales_; }

 private:
  void FillDailySales();
  void SaveDailySales();
  void ShowFolder();
  bool SaveAll();
  void Report();

  const ComponentContext* context_;
  OpcionesView* view_;
  std::map<int, ActionRoutine> routines_;
  int currentAction_ = action::none;
  std::string folder_;
  ActionOutcome outcome_;
  ActionReport dailySales_;
};

}  // namespace tolvan
