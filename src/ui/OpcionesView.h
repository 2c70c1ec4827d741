// What the options window shows, seen from its logic: controls by their fixed names, each with the few properties that
// the logic reads and writes. A view only shows and forwards; it decides nothing.
#pragma once

#include <string>
#include <string_view>

#include "base/Calendar.h"

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

class OpcionesView {
 public:
  virtual ~OpcionesView() = default;

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
};

}  // namespace tolvan
