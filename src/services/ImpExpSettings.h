// The sixteen settings of section "IMPEXP", and typed access to them by index.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Calendar.h"
#include "host/SystemServices.h"

namespace tolvan {

/// The index of a setting inside its section; the number is what the store knows it by.
enum class Setting : std::int32_t {
  CodigoTienda = 0,
  FechaReporteDia = 1,
  FechaReporteMes = 2,
  FechaReporteAnno = 3,
  HoraFinalVentaHoras = 4,
  HoraFinalVentaMinutos = 5,
  CarpetaDestino = 6,
  EnviarEmail = 7,
  EnviarDireccionEmail = 8,
  NombreArchivo = 9,
  DireccionServidor = 10,
  OffsetDia = 11,
  OffsetMes = 12,
  OffsetAnno = 13,
  MostrarComillas = 14,
  RutaUltimoArchivo = 15,
};

struct SettingDefinition {
  Setting index;
  std::string_view key;
  SettingDefault defaultValue;
  int kindFlag;
};

class ImpExpSettings {
 public:
  static constexpr std::string_view section = "IMPEXP";

  /// `store` must outlive this object.
  explicit ImpExpSettings(SettingsStore& store) : store_(&store) {}

  /// All settings in their defining order, the date parts with those of `today`. The offsets of the sales upload stand
  /// in the order year, month, day, and month and day have kind flag 0: both deliberate, other programs rely on it.
  static std::vector<SettingDefinition> Definitions(Date today, const std::string& defaultRecipient);

  /// Defines every setting and loads the stored values. Throws HostError Access.
  void Define(Date today, const std::string& defaultRecipient);

  /// Makes changed values durable. Throws HostError; then the stored values are the old ones.
  void Save();

  /// The stored text; empty when it cannot be read.
  std::string Text(Setting setting) const;

  /// The stored number; 0 when it cannot be read as one.
  std::int32_t Integer(Setting setting) const;

  /// Whether the stored number is exactly 1, which is what a ticked box stores.
  bool Checked(Setting setting) const { return Integer(setting) == 1; }

  /// Throw ApplicationError (offset 255, resource text 35389) when the store refuses the value.
  void SetText(Setting setting, std::string_view value);
  void SetInteger(Setting setting, std::int32_t value);
  void SetChecked(Setting setting, bool value) { SetInteger(setting, value ? 1 : 0); }

 private:
  SettingsStore* store_;
};

/// Makes a change of the settings durable. When the store refuses it, or cannot be written, the result says so for
/// people, beginning with resource text 35389; empty when the change is kept.
std::string ChangeSettings(ImpExpSettings& settings, const std::function<void(ImpExpSettings&)>& change);

}  // namespace tolvan
