#include "cli/OrderColector.h"

#include <nlohmann/json.hpp>
#include <ostream>

#include "cli/AbsolutePath.h"
#include "cli/CommandHost.h"
#include "cli/ConsoleDialogs.h"
#include "cli/TerminalLine.h"
#include "store/DeferredXmlLibrary.h"
#include "transport/ItemDefinitionFile.h"
#include "transport/basComponenteXML.h"

namespace tolvan {
namespace {

constexpr const char* count = "conteo";
constexpr const char* receiving = "recepcion";

void Print(OrderCall& call, const std::string& path, const ItemDefinitionResult& result) {
  if (call.WantsJson()) {
    const nlohmann::ordered_json document{{"archivo", path},
                                          {"articulos", result.items},
                                          {"barcodes", result.barcodes},
                                          {"depositos", result.deposits},
                                          {"instancia", result.instance}};
    call.PrintJson(document.dump(2, ' ', false, nlohmann::json::error_handler_t::replace));
    return;
  }
  call.Out() << "Archivo:   " << path << '\n'
             << "Artículos: " << result.items << '\n'
             << "Barcodes:  " << result.barcodes << '\n'
             << "Depósitos: " << result.deposits << '\n'
             << "Instancia: " << result.instance << '\n';
}

/// A file without articles is of no use to the device, though nothing failed.
void WarnOfNothing(OrderCall& call, const ItemDefinitionResult& result) {
  if (result.items == 0)
    call.Messages() << "El archivo no tiene artículos: ningún Item activo y visible es de inventario.\n";
  if (result.deposits == 0) call.Messages() << "El archivo no tiene depósitos que sirvan para ese propósito.\n";
}

ExitCode Report(OrderCall& call, const std::string& path, const ItemDefinitionResult& result) {
  switch (result.outcome) {
    case ItemDefinitionOutcome::QueryNotOpened:
      throw CommandFailure(ExitCode::Failed, "No se creó el archivo: una consulta no se pudo abrir.\n" + result.error);
    case ItemDefinitionOutcome::NoXmlLibrary:
    case ItemDefinitionOutcome::Failed:
      throw CommandFailure(ExitCode::Failed, result.error);
    case ItemDefinitionOutcome::Written:
      break;
  }
  Print(call, path, result);
  WarnOfNothing(call, result);
  return ExitCode::Done;
}

}  // namespace

OrderDefinition OrderColector::Definition() const {
  return {.name = "colector",
          .summary = "Escribe el archivo con los artículos, códigos de barras y depósitos para el colector",
          .arguments = {{.name = "SALIDA", .summary = "el archivo que se escribe (.tolpak)", .isPath = true}},
          .options = {{.name = "--proposito",
                       .summary = "conteo: inventario físico por áreas, con todos los depósitos; recepcion: tomas de "
                                  "mercancía, con los depósitos que la reciben",
                       .valueName = "conteo|recepcion",
                       .required = true,
                       .choices = {count, receiving}}},
          .notes = "Un archivo anterior se reemplaza entero, o queda como estaba.",
          .examples = {{"colector articulos.tolpak --proposito conteo", "para contar el inventario"}}};
}

ExitCode OrderColector::Run(OrderCall& call) const {
  const std::string path = AbsolutePath(call.Given().arguments.front());
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
                ItemDefinitionFile(std::move(services)).Write(path, purpose == count, purpose == receiving));
}

}  // namespace tolvan
