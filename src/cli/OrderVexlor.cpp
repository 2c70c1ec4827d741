#include "cli/OrderVexlor.h"

#include "cli/CommandHost.h"
#include "cli/DailySalesReport.h"

namespace tolvan {

OrderDefinition OrderVexlor::Definition() const {
  return {.name = "vexlor",
          .summary = "Escribe el archivo de ventas de ayer, sin preguntar nada",
          .notes =
              "Es lo que el programador de tareas ejecuta cada día. La carpeta, el nombre y el envío por e-mail son "
              "los de las opciones (vea la orden opciones).",
          .examples = {{"--host tienda/tolvan.ini --silencio vexlor", "lo que se programa para cada mañana"}}};
}

ExitCode OrderVexlor::Run(OrderCall& call) const {
  CommandHost& host = call.Host();
  host.RequireDatabase();
  host.Component().VentanaImpExp("vexlor");
  return ReportDailySales(call, host.Component().LastDailySales(), host.Component().LastOutcome(), false);
}

}  // namespace tolvan
