#include "cli/OrderImportarExcel.h"

#include "cli/ImportOrder.h"
#include "ui/ActionTable.h"

namespace tolvan {

OrderDefinition OrderImportarExcel::Definition() const {
  return {.name = "importar-excel",
          .summary = "Importa Items, costos y precios de un libro hecho con la plantilla",
          .arguments = {{.name = "LIBRO", .summary = "el libro de Excel (.xls o .xlsx)", .isPath = true}},
          .options = ImportOptions(),
          .notes = "Todo se aplica en una sola transacción, o nada.",
          .examples = {{"importar-excel lista.xlsx --simular", "muestra qué pasaría, sin cambiar nada"},
                       {"importar-excel lista.xlsx --informe cambios.csv", "la importa y deja escrito lo que cambió"}}};
}

ExitCode OrderImportarExcel::Run(OrderCall& call) const {
  return RunImport(call, action::excelPrices, {});
}

}  // namespace tolvan
