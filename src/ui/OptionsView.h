// The options window seen from its logic: controls by their fixed names, each with the few properties that the logic
// reads and writes, and around them tree, panels, focus, busy state and progress. A view only shows and forwards; it
// decides nothing.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/Calendar.h"
#include "host/UserInterface.h"
#include "services/clsCallBackProgreso.h"
#include "ui/ActionTable.h"
#include "ui/WindowLayout.h"

namespace tolvan {

namespace control {
inline constexpr std::string_view codigoTienda = "txtC1_CodigoTienda";
inline constexpr std::string_view fechaMovimiento = "dC1_FechaMovimiento";
inline constexpr std::string_view horaFinJornada = "dtC1_HoraFinJornada";
inline constexpr std::string_view carpetaDestino = "txtC1_CarpetaDestino";
inline constexpr std::string_view abrirCarpeta = "bC1_AbrirCarpeta";
inline constexpr std::string_view enviarEmail = "chk1";
inline constexpr std::string_view email = "txtC1_Email";
inline constexpr std::string_view nombreArchivo = "txtC1_NombreArchivo";
inline constexpr std::string_view archivo = "lblArchivo";
inline constexpr std::string_view tituloCategoria = "lblTituloCategoria";
inline constexpr std::string_view explicacion = "lblExpl";
}  // namespace control

/// The texts of the panels that are neither in the string table nor in the action table.
namespace panel_text {
inline constexpr std::string_view browse = "E&xaminar…";
inline constexpr std::string_view nothingSelected = "(ningún archivo seleccionado)";
inline constexpr std::string_view openTemplate = "Abrir &plantilla";
inline constexpr std::string_view templateHelp =
    "Si aún no tiene el libro, abra la plantilla, llénela y guárdela con otro nombre:";
inline constexpr std::string_view purposeCount = "Conteo físico de inventario por áreas.";
inline constexpr std::string_view purposeReceiving = "Tomas para recepción de mercancía.";
inline constexpr std::string_view createFile = "&Crear nuevo archivo";
inline constexpr std::string_view stop = "&Detener";
}  // namespace panel_text

/// Where the key presses of a window go.
class KeyboardTarget {
 public:
  virtual ~KeyboardTarget() = default;

  /// Moves the focus to the next control, as the Tab key does.
  virtual void PressTab() = 0;
};

/// Enter (13) becomes 0, and a Tab goes to the target instead. Other keys stay as they are.
inline void EnterAsTab(std::int16_t& keyCode, KeyboardTarget& target) {
  constexpr std::int16_t enter = 13;
  if (keyCode != enter) return;
  keyCode = 0;
  target.PressTab();
}

class OptionsView : public StatusWindow, public KeyboardTarget {
 public:
  /// Of a date or a time what was typed, whether it is one or not.
  virtual std::string Text(std::string_view controlName) const = 0;
  virtual void SetText(std::string_view controlName, std::string_view text) = 0;
  virtual bool Checked(std::string_view controlName) const = 0;
  virtual void SetChecked(std::string_view controlName, bool checked) = 0;
  virtual void SetEnabled(std::string_view controlName, bool enabled) = 0;

  /// The last that was one.
  virtual Date DateOf(std::string_view controlName) const = 0;
  virtual void SetDate(std::string_view controlName, Date date) = 0;

  /// The last that was one.
  virtual TimeOfDay TimeOf(std::string_view controlName) const = 0;
  virtual void SetTime(std::string_view controlName, TimeOfDay time) = 0;

  /// Moves the keyboard focus; where that cannot be done, nothing happens.
  virtual void Focus(std::string_view controlName) = 0;

  /// Fills tvOpciones; a parent stands before its children.
  virtual void ShowNodes(const std::vector<ActionNode>& nodes) = 0;

  /// Marks a node of tvOpciones as the chosen one, which is no click on it.
  virtual void SelectNode(const std::string& key) = 0;

  /// Hides every panel but this one. 0 is the introduction, the others are numbered as their actions.
  virtual void ShowPanel(int panel) = 0;

  /// The file's label on an action's panel: lblArchivo.
  virtual void SetFile(int panel, std::string_view text) = 0;

  virtual void SelectAll(std::string_view controlName) = 0;

  /// While busy nothing answers but bCancelar, which stops the work then, and Pump lets events through. The user's last
  /// wish to stop is forgotten when work begins. Calls do not nest.
  virtual void SetBusy(bool busy) = 0;

  /// Whether accepting runs the action that is shown. Where it does not, the button of its panel is the default one.
  virtual void AllowAccept(bool allowed) = 0;

  /// The user's wish to stop the work that is running.
  virtual void RequestStop() = 0;

  /// Ends the window.
  virtual void CloseWindow() = 0;

  virtual ProgressContainer& pbProgreso() = 0;
  virtual ProgressBar& pb01() = 0;
  virtual ProgressCaption& lbProgreso() = 0;
  virtual MessagePump& Pump() = 0;

  /// The part of the window whose layout is kept.
  virtual LayoutWindow& StoredLayout() = 0;
};

}  // namespace tolvan
