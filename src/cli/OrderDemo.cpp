#include "cli/OrderDemo.h"

#include <nlohmann/json.hpp>
#include <ostream>

#include "cli/CommandHost.h"
#include "cli/demo/DemoStore.h"
#include "host/SystemServices.h"

namespace tolvan {
namespace {

Date DemoDay(OrderCall& call) {
  if (!call.Given().Has("--fecha")) return call.SystemClock().Today();
  const std::string text = call.Given().Value("--fecha");
  const auto date = Date::Parse(text);
  if (!date) throw CommandFailure(ExitCode::Usage, "La fecha \"" + text + "\" no es AAAA-MM-DD");
  return *date;
}

/// The settings that make the orders work at once: a folder that exists, and the last day that has sales.
void StoreSettings(CommandHost& host, Date yesterday) {
  ImpExpSettings& settings = host.Context().settings;
  settings.SetText(Setting::CodigoTienda, "0001");
  settings.SetText(Setting::CarpetaDestino, "Exportar");
  settings.SetInteger(Setting::FechaReporteDia, yesterday.Day());
  settings.SetInteger(Setting::FechaReporteMes, yesterday.Month());
  settings.SetInteger(Setting::FechaReporteAnno, yesterday.Year());
  host.Component().SaveSettings();
}

void Print(OrderCall& call, const DemoPlaces& places) {
  if (call.WantsJson()) {
    const nlohmann::ordered_json document{
        {"carpeta", places.folder}, {"host", places.host}, {"ejemplos", places.examples}};
    call.PrintJson(document.dump(2, ' ', false, nlohmann::json::error_handler_t::replace));
    return;
  }
  call.Out() << "Carpeta:       " << places.folder << '\n'
             << "Configuración: " << places.host << '\n'
             << "Ejemplos:      " << places.examples << '\n';
}

}  // namespace

OrderDefinition OrderDemo::Definition() const {
  return {.name = "demo",
          .summary = "Crea una tienda de demostración en una carpeta",
          .arguments = {{.name = "CARPETA", .summary = "la carpeta; se crea si no existe", .isPath = true}},
          .options = {{.name = "--fecha",
                       .summary = "el día que cuenta como hoy; las ventas llegan hasta la víspera",
                       .valueName = "AAAA-MM-DD"}},
          .notes = "Una tienda de demostración anterior en la misma carpeta se reemplaza; otros datos no se tocan.",
          .examples = {{"demo tienda", "la crea en la carpeta tienda, con su tolvan.ini y con listas de ejemplo"}}};
}

ExitCode OrderDemo::Run(OrderCall& call) const {
  const Date today = DemoDay(call);
  const DemoPlaces places = PlacesOfDemo(call.Given().arguments.front());
  MakeDemoStore(places, today, [&] { StoreSettings(*call.OpenHost(places.host), today.PlusDays(-1)); });
  Print(call, places);
  return ExitCode::Done;
}

}  // namespace tolvan
