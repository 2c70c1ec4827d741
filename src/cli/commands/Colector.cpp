// The item-definition file of the collector device.
#include "cli/CommandCall.h"
#include "cli/TerminalProgress.h"
#include "cli/commands/AllCommands.h"
#include "services/clsCallBackProgreso.h"
#include "store/DeferredProviders.h"
#include "transport/ItemDefinitionFile.h"
#include "transport/TransportDocument.h"

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

/// Draws the number of rows read.
class RowLine final : public ProgressContainer, public ProgressBar {
 public:
  explicit RowLine(TerminalLine& line) : line_(line) {}
  void SetVisible(bool visible) override {
    if (!visible) line_.Clear();
  }
  void SetMin(std::int32_t) override {}
  void SetMax(std::int32_t maximum) override { maximum_ = maximum; }
  std::int32_t Max() const override { return maximum_; }
  void SetValue(std::int32_t rows) override {
    if (rows > 0 && line_.Due()) line_.Draw("Leyendo: " + std::to_string(rows) + " renglones");
  }

 private:
  TerminalLine& line_;
  std::int32_t maximum_ = 0;
};

ExitCode Report(CommandCall& call, const std::string& path, const ActionReport& report) {
  const auto result = report.DetailsAs<ItemDefinitionResult>();
  if (!report.done) {
    const bool unopened = result.outcome == ItemDefinitionOutcome::QueryNotOpened;
    throw CommandFailure(ExitCode::Failed,
                         (unopened ? "No se creó el archivo: una consulta no se pudo abrir." : "") + report.text);
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
  const bool counts = call.Given().Value("--proposito") == counting;
  const CollectorPurpose purpose = counts ? CollectorPurpose::Count : CollectorPurpose::Receiving;
  CommandHost& host = call.Host();
  const ComponentContext& context = host.Context();
  static_cast<void>(host.RequireDatabase());
  DeferredXmlLibrary library;
  basComponenteXML xml(library, context.UserDialogs(), context.application.ProductName(),
                       context.application.XmlLibraryDownload());
  ItemDefinitionServices services = CollectorServices(context, xml);
  TerminalLine line(call.Messages(), call.MessagesColumns());
  line.Begin();
  RowLine bar(line);
  clsCallBackProgreso progress;
  if (call.ShowsProgress()) progress.EstablecerControles(&bar, &bar, nullptr, nullptr, nullptr);
  services.progress = &progress;
  return Report(call, path, ItemDefinitionFile(std::move(services)).Write(path, purpose));
}

}  // namespace

Command ColectorCommand() {
  return {.name = NameOf(action::collectorFile),
          .summary = SummaryOf(action::collectorFile),
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
