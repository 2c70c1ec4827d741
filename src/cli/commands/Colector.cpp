// The item-definition file of the collector device.
#include "cli/CommandCall.h"
#include "cli/TerminalProgress.h"
#include "cli/commands/AllCommands.h"
#include "store/DeferredProviders.h"
#include "transport/ItemDefinitionFile.h"
#include "transport/basComponenteXML.h"

namespace tolvan {
namespace {

constexpr const char* counting = "conteo";
constexpr const char* receiving = "recepcion";

/// A file without articles is of no use to the device, though nothing failed.
void WarnOfNothing(CommandCall& call, const ItemDefinitionResult& result) {
  if (result.items == 0)
    call.PrintMessage("El archivo no tiene artículos: ningún Item activo y visible es de inventario.");
  if (result.deposits == 0) call.PrintMessage("El archivo no tiene depósitos que sirvan para ese propósito.");
}

ExitCode Report(CommandCall& call, const std::string& path, const ItemDefinitionResult& result) {
  switch (result.outcome) {
    case ItemDefinitionOutcome::QueryNotOpened:
      throw CommandFailure(ExitCode::Failed, "No se creó el archivo: una consulta no se pudo abrir.\n" + result.error);
    case ItemDefinitionOutcome::NoXmlLibrary:
    case ItemDefinitionOutcome::Failed:
      throw CommandFailure(ExitCode::Failed, result.error);
    case ItemDefinitionOutcome::Written:
      break;
  }
  call.Print({{"archivo", path, "Archivo"},
              {"articulos", std::int64_t(result.items), "Artículos"},
              {"barcodes", std::int64_t(result.barcodes), "Barcodes"},
              {"depositos", std::int64_t(result.deposits), "Depósitos"},
              {"instancia", result.instance, "Instancia"}});
  WarnOfNothing(call, result);
  return ExitCode::Done;
}

ExitCode RunColector(CommandCall& call) {
  const std::string path = call.PathArgument();
  const std::string purpose = call.Given().Value("--proposito");
  CommandHost& host = call.Host();
  const ComponentContext& context = host.Context();
  static_cast<void>(host.RequireDatabase());
  DeferredXmlLibrary library;
  basComponenteXML xml(library, context.UserDialogs(), context.application.ProductName(),
                       context.application.XmlLibraryDownload());
  ItemDefinitionServices services = CollectorServices(context, xml);
  TerminalLine line(call.Messages(), call.MessagesColumns());
  line.Begin();
  if (call.ShowsProgress()) {
    services.progress = [&line](std::optional<std::size_t> rows) {
      if (!rows) line.Clear();
      if (rows && line.Due()) line.Draw("Leyendo: " + std::to_string(*rows) + " renglones");
    };
  }
  return Report(call, path,
                ItemDefinitionFile(std::move(services)).Write(path, purpose == counting, purpose == receiving));
}

}  // namespace

Command ColectorCommand() {
  return {.name = "colector",
          .summary = "Escribe el archivo con los artículos, códigos de barras y depósitos para el colector",
          .arguments = {{.name = "SALIDA", .summary = "el archivo que se escribe (.tolpak)", .isPath = true}},
          .options = {{.name = "--proposito",
                       .summary = "conteo: inventario físico por áreas, con todos los depósitos; recepcion: tomas de "
                                  "mercancía, con los depósitos que la reciben",
                       .valueName = "conteo|recepcion",
                       .required = true,
                       .choices = {counting, receiving}}},
          .notes = "Un archivo anterior se reemplaza entero, o queda como estaba.",
          .examples = {{"colector articulos.tolpak --proposito conteo", "para contar el inventario"}},
          .run = &RunColector};
}

}  // namespace tolvan
