// The whole options window behind its view: the start in its order, the tree, the buttons, the routines of the actions,
// one piece of work at a time. The view forwards every event to here and decides nothing.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "services/clsCallBackProgreso.h"
#include "ui/CollectorPanel.h"
#include "ui/FieldRules.h"
#include "ui/ImportLauncher.h"
#include "ui/OptionsWindowView.h"
#include "ui/RegistryLauncher.h"
#include "ui/frmOpciones.h"

namespace tolvan {

/// What the actions work with beside the component's own services.
struct OptionsTools {
  ImportTools imports;
  XmlLibrary& xml;
};

class OptionsWindow {
 public:
  /// All of it must outlive the window. Nothing is asked of the view before Iniciar.
  OptionsWindow(const ComponentContext& context, OptionsWindowView& view, OptionsTools tools);

  /// Binds the progress, restores the layout, builds the tree, shows panel 0 and fills all panels.
  void Iniciar();

  /// A click on a node, or the keyboard's choice of it. A key that names no action is a bounds error, told to the user.
  void tvOpciones_NodeClick(const std::string& key);

  void bGuardar_Click();

  /// Closes the window without saving; while work is running, stops that instead.
  void bCancelar_Click();

  /// The close box. False: not now, work is running; it is stopped, and the window closes behind it.
  bool QueryUnload();

  /// Saves the layout.
  void Unload();

  void bC1_AbrirCarpeta_Click();

  /// Element 0 chooses a workbook for the current action, element 1 the registry's text file.
  void BAbrirArchivo_Click(int element);
  void cmdAbrirPlantilla_Click();

  /// One of the two option buttons of the collector's panel.
  void opProposito_Click(CollectorPurpose purpose) { collector_.opProposito_Click(purpose); }
  void cmdDCExportarItems_Click();

  FieldRules& Fields() { return fields_; }
  frmOpciones& Form() { return form_; }
  bool IsBusy() const { return busy_; }

 private:
  void Perform(const std::function<void()>& step) const;
  void Work(const std::function<void()>& work);
  void ShowAction(int number);
  void ShowFiles();

  const ComponentContext* context_;
  OptionsWindowView* view_;
  ActionTable actions_;
  clsCallBackProgreso progress_;
  frmOpciones form_;
  FieldRules fields_;
  ImportLauncher imports_;
  RegistryLauncher registry_;
  CollectorPanel collector_;
  bool busy_ = false;
  bool closesAfterWork_ = false;
};

}  // namespace tolvan
