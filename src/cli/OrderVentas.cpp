#include "cli/OrderVentas.h"

#include "cli/CommandHost.h"
#include "cli/DailySalesReport.h"

namespace tolvan {
namespace {

/// The panel always opens on today; the order reports the stored day, or the one asked for.
Date ReportDate(const ParsedOrder& given, const ImpExpSettings& settings) {
  if (given.Has("--fecha")) {
    const std::string text = given.Value("--fecha");
    const auto date = Date::Parse(text);
    if (!date) throw CommandFailure(ExitCode::Usage, "La fecha \"" + text + "\" no es AAAA-MM-DD");
    return *date;
  }
  return StoredReportDate(settings);
}

}  // namespace

OrderDefinition OrderVentas::Definition() const {
  return {.name = "ventas",
          .summary = "Escribe el archivo de ventas de un día, como al aceptar su panel en la ventana",
          .options = {{.name = "--fecha",
                       .summary = "guarda antes esta fecha de reporte; si falta, vale la guardada",
                       .valueName = "AAAA-MM-DD"}},
          .examples = {{"ventas --fecha 2026-11-15", "escribe el archivo de ese día"}}};
}

ExitCode OrderVentas::Run(OrderCall& call) const {
  CommandHost& host = call.Host();
  const Date date = ReportDate(call.Given(), host.Context().settings);
  host.RequireDatabase();
  HeadlessOpciones window(host.Context());
  window.Form().Cargar();
  window.Form().SelectAction(action::dailySalesFile);
  window.View().SetDate(control::fechaMovimiento, date);
  window.Form().bGuardar_Click();
  return ReportDailySales(call, window.Form().LastDailySales(), window.Form().LastOutcome(), true);
}

}  // namespace tolvan
