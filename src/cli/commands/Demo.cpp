// Makes a demo store in a folder.
#include "cli/CommandCall.h"
#include "cli/commands/AllCommands.h"
#include "cli/demo/DemoStore.h"
#include "host/SystemServices.h"

namespace tolvan {
namespace {

/// The settings that make the commands work at once: a folder that exists, and the last day that has sales.
void StoreSettings(CommandHost& host, Date yesterday) {
  ImpExpSettings& settings = host.Context().settings;
  settings.SetText(Setting::CodigoTienda, "0001");
  settings.SetText(Setting::CarpetaDestino, "Exportar");
  settings.SetInteger(Setting::FechaReporteDia, yesterday.Day());
  settings.SetInteger(Setting::FechaReporteMes, yesterday.Month());
  settings.SetInteger(Setting::FechaReporteAnno, yesterday.Year());
  host.Component().SaveSettings();
}

ExitCode RunDemo(CommandCall& call) {
  const Date today = call.GivenDate().value_or(call.SystemClock().Today());
  const DemoPlaces places = PlacesOfDemo(call.Given().arguments.front());
  MakeDemoStore(places, today, [&] { StoreSettings(*call.OpenHost(places.host), today.PlusDays(-1)); });
  call.Print({{"carpeta", places.folder, "Carpeta"},
              {"host", places.host, "Configuración"},
              {"ejemplos", places.examples, "Ejemplos"}});
  return ExitCode::Done;
}

}  // namespace

Command DemoCommand() {
  return {.name = "demo",
          .summary = "Crea una tienda de demostración en una carpeta",
          .arguments = {{.name = "CARPETA", .summary = "la carpeta; se crea si no existe", .isPath = true}},
          .options = {{.name = "--fecha",
                       .summary = "el día que cuenta como hoy; las ventas llegan hasta la víspera",
                       .valueName = "AAAA-MM-DD"}},
          .notes = "Una tienda de demostración anterior en la misma carpeta se reemplaza; otros datos no se tocan.",
          .examples = {{"demo tienda", "la crea en la carpeta tienda, con su tolvan.ini y con listas de ejemplo"}},
          .run = &RunDemo};
}

}  // namespace tolvan
