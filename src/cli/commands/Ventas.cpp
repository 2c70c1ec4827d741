// The daily sales file: of yesterday, as a scheduler runs it, and of a chosen day, as a person accepts its panel.
#include <ostream>

#include "cli/CommandCall.h"
#include "cli/commands/AllCommands.h"
#include "export/DailySalesExport.h"
#include "services/ResourceTexts.h"
#include "ui/ActionRoutines.h"
#include "ui/DailySalesFields.h"

namespace tolvan {
namespace {

/// A file that was not written has no lines.
void Print(CommandCall& call, const DailySalesFile& result, const std::string& failure) {
  if (!result.written && !call.WantsJson()) return;
  Result fields{
      {"archivo", nullptr, "Archivo"}, {"registro", result.record, "Registro"}, {"enviado", result.sent, "Enviado"}};
  if (result.written) fields.front().value = result.path;
  if (!failure.empty()) fields.push_back({"error", failure});
  call.Print(fields);
}

/// `shown`: a box has shown the text of a failure already.
ExitCode Report(CommandCall& call, const ActionReport& report, bool shown) {
  const std::string failure = report.done ? std::string() : ForTerminal(report.text);
  // The component's text names the path only; the cause helps whoever must mend it.
  const std::string cause = ForTerminal(report.cause);
  Print(call, report.DetailsAs<DailySalesFile>(), cause.empty() ? failure : failure + '\n' + cause);
  if (report.done) return ExitCode::Done;
  if (!shown) call.PrintMessage(failure);
  if (!cause.empty()) call.PrintMessage(cause);
  return ExitCode::Failed;
}

ExitCode RunVexlor(CommandCall& call) {
  CommandHost& host = call.Host();
  host.RequireDatabase();
  host.Component().VentanaImpExp("vexlor");
  return Report(call, host.Component().LastReport(), false);
}

/// The panel always opens on today; the command reports the day asked for, or the stored one.
ExitCode RunVentas(CommandCall& call) {
  CommandHost& host = call.Host();
  const std::optional<Date> given = call.GivenDate();
  const Date date = given ? *given : StoredReportDate(host.Context().settings);
  host.RequireDatabase();
  const ComponentContext& context = host.Context();
  DailySalesFields fields = LoadFields(context);
  fields.date = date;
  ActionReport report;
  report.text = ChangeSettings(context.settings, [&](ImpExpSettings& settings) { StoreFields(fields, settings); });
  if (report.text.empty()) {
    report = ExportDailySales(context, true);
  } else {
    context.UserDialogs().ShowMessage(MessageIcon::Exclamation, ResourceText(text_id::windowCaption), report.text);
  }
  return Report(call, report, true);
}

}  // namespace

Command VexlorCommand() {
  return {.name = "vexlor",
          .summary = "Escribe el archivo de ventas de ayer, sin preguntar nada",
          .notes =
              "Es lo que el programador de tareas ejecuta cada día. La carpeta, el nombre y el envío por e-mail son "
              "los de las opciones (vea la orden opciones).",
          .examples = {{"--host tienda/tolvan.ini --silencio vexlor", "lo que se programa para cada mañana"}},
          .run = &RunVexlor};
}

Command VentasCommand() {
  return {.name = NameOf(action::dailySalesFile),
          .summary = SummaryOf(action::dailySalesFile),
          .options = {{.name = "--fecha",
                       .summary = "guarda antes esta fecha de reporte; si falta, vale la guardada",
                       .valueName = "AAAA-MM-DD"}},
          .examples = {{"ventas --fecha 2026-11-15", "escribe el archivo de ese día"}},
          .run = &RunVentas};
}

}  // namespace tolvan
