// The options window without its toolkit: the start in its order, tree and panels, the buttons, one piece of work at a
// time. The view forwards every event to here and decides nothing; what the actions are and how they run is in the
// action table.
#pragma once

#include <functional>
#include <map>
#include <span>
#include <string>

#include "services/clsCallBackProgreso.h"
#include "ui/ActionRoutines.h"
#include "ui/DailySalesFields.h"
#include "ui/OptionsView.h"

namespace tolvan {

class frmOpciones {
 public:
  /// All of it must outlive the window. Nothing is asked of the view before Iniciar.
  frmOpciones(const ComponentContext& context, OptionsView& view, ActionTools tools,
              std::span<const Action> actions = ComponentActions());

  /// Binds the progress, restores the layout, builds the tree, shows panel 0 and fills all panels.
  void Iniciar();

  // The public operations, in their order.

  /// Fills the store code's box from the settings.
  void LlenarCodigo();

  /// The accept button: brings the user to a field that cannot be saved; else saves the panels and the section, and
  /// when that succeeded runs the current action interactively. A refused or failed save is shown to the user with text
  /// 35389, and nothing runs.
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

  // Events of the other controls.

  /// A click on a node, or the keyboard's choice of it. A key that names no action is a bounds error, which the user is
  /// shown.
  void tvOpciones_NodeClick(const std::string& key);

  /// Closes the window without saving; while work is running, stops that instead.
  void bCancelar_Click();

  /// The close box. False: not now, work is running; it is stopped, and the window closes after it.
  bool QueryUnload();

  /// Saves the layout.
  void Unload();

  void bC1_AbrirCarpeta_Click();

  /// Chooses the file of the current action, by whichever button of the array.
  void BAbrirArchivo_Click();
  void cmdAbrirPlantilla_Click();

  /// One of the two option buttons of the collector's panel, of which the first is chosen at the beginning: Count.
  void opProposito_Click(CollectorPurpose purpose) { purpose_ = purpose; }
  void cmdDCExportarItems_Click();

  FieldRules& Fields() { return fields_; }

  /// The rows that the window shows.
  std::span<const Action> Actions() const { return actions_; }
  int CurrentAction() const { return currentAction_; }
  bool IsBusy() const { return busy_; }

 private:
  void Perform(const std::function<void()>& step) const;
  void Work(const std::function<void()>& work);
  void SelectAction(int number);
  bool SavePanels();
  void ChooseFolder();
  void ChooseFile(const Action& action);
  void FindFileAgain(const Action& action);
  void ShowFiles();

  const ComponentContext* context_;
  OptionsView* view_;
  ActionTools tools_;
  std::span<const Action> actions_;
  clsCallBackProgreso progress_;
  FieldRules fields_;
  int currentAction_ = action::none;
  std::string folder_;                // of the daily sales file
  std::map<int, std::string> files_;  // chosen, by action
  CollectorPurpose purpose_ = CollectorPurpose::Count;
  std::function<void()> afterwards_;
  bool busy_ = false;
  bool closesAfterWork_ = false;
};

}  // namespace tolvan
