#include "services/ImpExpSettings.h"

#include "base/Text.h"
#include "host/HostError.h"
#include "services/ComponentContext.h"
#include "services/ResourceTexts.h"

namespace tolvan {
namespace {

std::string IndexText(Setting setting) {
  return std::to_string(static_cast<std::int32_t>(setting));
}

SettingDefault Number(int value) {
  return static_cast<std::int16_t>(value);
}

}  // namespace

std::vector<SettingDefinition> ImpExpSettings::Definitions(Date today, const std::string& defaultRecipient) {
  return {
      {Setting::CodigoTienda, "MicrosExp_CodigoTienda", "codigo_local", 0},
      {Setting::FechaReporteDia, "MicrosExp_FechaReporte_Dia", Number(today.Day()), 1},
      {Setting::FechaReporteMes, "MicrosExp_FechaReporte_Mes", Number(today.Month()), 1},
      {Setting::FechaReporteAnno, "MicrosExp_FechaReporte_Anno", Number(today.Year()), 1},
      {Setting::HoraFinalVentaHoras, "MicrosExp_HoraFinalVenta_Horas", Number(19), 1},
      {Setting::HoraFinalVentaMinutos, "MicrosExp_HoraFinalVenta_Minutos", Number(0), 1},
      {Setting::CarpetaDestino, "MicrosExp_CarpetaDestino", R"(C:\)", 0},
      {Setting::EnviarEmail, "MicrosExp_EnviarEmail", Number(0), 1},
      {Setting::EnviarDireccionEmail, "MicrosExp_EnviarDireccionEmail", defaultRecipient, 0},
      {Setting::NombreArchivo, "MicrosExp_NombreArchivo", "", 0},
      {Setting::DireccionServidor, "SVentas_DireccionServidor", "localhost", 0},
      {Setting::OffsetAnno, "SVentas_OffsetAnno", Number(2006), 1},
      {Setting::OffsetMes, "SVentas_OffsetMes", Number(1), 0},
      {Setting::OffsetDia, "SVentas_OffsetDia", Number(1), 0},
      {Setting::MostrarComillas, "MicrosExp_MostrarComillas", Number(1), 1},
      {Setting::RutaUltimoArchivo, "PreciosMovilnet_RutaUltimoArchivo", "", 0},
  };
}

void ImpExpSettings::Define(Date today, const std::string& defaultRecipient) {
  for (const SettingDefinition& definition : Definitions(today, defaultRecipient)) {
    store_->Define(definition.defaultValue, definition.key, IndexText(definition.index), section, definition.kindFlag,
                   0);
  }
  store_->Load(section);
}

void ImpExpSettings::Save() {
  store_->Save(section);
}

std::string ImpExpSettings::Text(Setting setting) const {
  return store_->Get(section, IndexText(setting)).value_or(std::string());
}

std::int32_t ImpExpSettings::Integer(Setting setting) const {
  return ParseInteger(Text(setting)).value_or(0);
}

void ImpExpSettings::SetText(Setting setting, std::string_view value) {
  if (store_->Set(section, IndexText(setting), value)) return;
  throw ApplicationError(255, std::string(ResourceText(text_id::cannotSaveSettings)));
}

void ImpExpSettings::SetInteger(Setting setting, std::int32_t value) {
  SetText(setting, std::to_string(value));
}

std::string ChangeSettings(ImpExpSettings& settings, const std::function<void(ImpExpSettings&)>& change) {
  std::string detail;
  try {
    change(settings);
    settings.Save();
    return {};
  } catch (const ApplicationError&) {
    // the text that follows says it all
  } catch (const HostError& error) {
    detail = "\r\n" + TextForPeople(error);
  }
  return std::string(ResourceText(text_id::cannotSaveSettings)) + detail;
}

}  // namespace tolvan
