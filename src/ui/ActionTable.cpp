#include "ui/ActionTable.h"

#include <array>
#include <stdexcept>

#include "base/Text.h"
#include "fiscal/TaxpayerRegistryImport.h"
#include "import/clsIE_PreciosExcel.h"
#include "import/clsIE_PreciosMovilnet.h"
#include "services/ResourceTexts.h"
#include "ui/ActionRoutines.h"

namespace tolvan {
namespace {

constexpr FileCheck workbook{.button = 0,
                             .label = "Ruta archivo de Excel",
                             .pickerTitle = "Seleccionar Archivo de Excel",
                             .pickerFilter = "Libro de Excel|*.xls;*.xlsx",
                             .nothingChosen = "Debe seleccionar primero el archivo de Excel"};
constexpr FileCheck registryText{.button = 1,
                                 .label = "Ruta archivo de Texto RNC",
                                 .pickerTitle = registryPickerTitle,
                                 .pickerFilter = registryPickerFilter,
                                 .nothingChosen = registryNotChosen};

template <class Importer>
std::unique_ptr<PriceImporter> Make(const ComponentContext& context, ImportTools tools) {
  return std::make_unique<Importer>(context, std::move(tools));
}

std::array<Action, 6> MakeRows() {
  return {{
      {.number = action::dailySalesFile,
       .captionId = text_id::dailySalesFile,
       .panel = PanelKind::DailySales,
       .command = "ventas",
       .summary = "Escribe el archivo de ventas de un día, como al aceptar su panel en la ventana",
       .routine = RunDailySales},
      // Runs from the command only, although its routine stands here.
      {.number = action::salesUpload,
       .captionId = text_id::salesServer,
       .command = "subir-ventas",
       .summary = "Envía los totales diarios de ventas al servidor de reportes",
       .routine = RunSalesUpload},
      {.number = action::movilnetPrices,
       .captionId = text_id::movilnetPrices,
       .panel = PanelKind::File,
       .command = "importar-movilnet",
       .summary = "Importa la lista de precios de teléfonos y módems de Movilnet",
       .help = "Utilice esta sección para importar la lista de precios de teléfonos y módems de Movilnet:",
       .check = &workbook,
       .changesRows = true,
       .findsFileAgain = true,
       .importer = Make<clsIE_PreciosMovilnet>,
       .routine = RunImport},
      {.number = action::collectorFile,
       .captionId = text_id::dataTerminal,
       .panel = PanelKind::Collector,
       .command = "colector",
       .summary = "Escribe el archivo con los artículos, códigos de barras y depósitos para el colector",
       .help =
           "Utilice el siguiente botón para crear un nuevo archivo a transferir al dispositivo colector, de tal "
           "manera que éste reconozca los códigos de barras de los artículos registrados como inventario en Tolvan."},
      {.number = action::excelPrices,
       .captionId = text_id::excelSheet,
       .panel = PanelKind::File,
       .command = "importar-excel",
       .summary = "Importa Items, costos y precios de un libro hecho con la plantilla",
       .help =
           "Utilice esta sección para importar Items, precios y costos desde un libro de Excel con el formato de la "
           "plantilla:",
       .check = &workbook,
       .opensTemplate = true,
       .importer = Make<clsIE_PreciosExcel>,
       .routine = RunImport},
      {.number = action::taxpayerRegistry,
       .captionId = text_id::taxpayerRegistry,
       .panel = PanelKind::File,
       .command = "importar-rnc",
       .summary = "Importa el registro de contribuyentes de la DGII a la tabla de clientes",
       .help = "Utilice esta sección para importar el archivo del Registro Nacional de Contribuyentes a la tabla de "
               "clientes:",
       .warning =
           "ADVERTENCIA: Este proceso puede durar varios minutos, inclusive horas dependiendo de la velocidad del "
           "procesador.",
       .check = &registryText,
       .routine = RunRegistryImport},
  }};
}

void AppendChildren(std::span<const Action> actions, int parent, std::vector<ActionNode>& nodes) {
  for (const Action& each : actions) {
    if (each.panel == PanelKind::None || each.parent != parent) continue;
    nodes.push_back({.key = NodeKeyOf(each.number),
                     .parentKey = parent == action::none ? std::string() : NodeKeyOf(parent),
                     .caption = std::string(ResourceText(each.captionId))});
    AppendChildren(actions, each.number, nodes);
  }
}

}  // namespace

std::span<const Action> ComponentActions() {
  static const std::array<Action, 6> rows = MakeRows();
  return rows;
}

const Action& FindAction(int number, std::span<const Action> actions) {
  for (const Action& each : actions) {
    if (each.number == number) return each;
  }
  throw std::out_of_range("there is no action " + std::to_string(number));
}

std::vector<ActionNode> NodesOf(std::span<const Action> actions) {
  std::vector<ActionNode> nodes;
  AppendChildren(actions, action::none, nodes);
  return nodes;
}

std::string NodeKeyOf(int number) {
  return "_" + std::to_string(number);
}

int NumberInKey(const std::string& nodeKey) {
  const auto number = ParseInteger(std::string_view(nodeKey).substr(nodeKey.empty() ? 0 : 1));
  if (!number) throw std::out_of_range("the node key \"" + nodeKey + "\" holds no action number");
  return *number;
}

ActionReport RunAction(ActionRun& run) {
  if (!run.action.routine) return {};
  ActionReport report = run.action.routine(run);
  if (run.interactive && !report.told) ShowReport(run.context, report);
  return report;
}

void ShowReport(const ComponentContext& context, const ActionReport& report) {
  if (!report.done) return ShowFailure(context, std::string(lineBreak) + report.text);
  context.UserDialogs().ShowMessage(MessageIcon::Information, ResourceText(text_id::windowCaption),
                                    ResourceText(text_id::success));
}

void ShowFailure(const ComponentContext& context, std::string_view text) {
  context.UserDialogs().ShowMessage(MessageIcon::Exclamation, ResourceText(text_id::windowCaption),
                                    std::string(ResourceText(text_id::errorsHappened)).append(text));
}

}  // namespace tolvan
