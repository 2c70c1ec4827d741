#include "cli/DailySalesReport.h"

#include <nlohmann/json.hpp>
#include <ostream>

#include "cli/ConsoleDialogs.h"

namespace tolvan {
namespace {

void PrintJson(OrderCall& call, const DailySalesResult& result, const std::string& failure) {
  nlohmann::ordered_json document;
  if (result.written) {
    document["archivo"] = result.path;
  } else {
    document["archivo"] = nullptr;
  }
  document["registro"] = result.record;
  document["enviado"] = result.sent;
  if (!failure.empty()) document["error"] = failure;
  call.PrintJson(document.dump(2, ' ', false, nlohmann::json::error_handler_t::replace));
}

void PrintText(std::ostream& out, const DailySalesResult& result) {
  if (!result.written) return;
  out << "Archivo:  " << result.path << '\n' << "Registro: " << result.record << '\n';
  out << "Enviado:  " << (result.sent ? "sí" : "no") << '\n';
}

}  // namespace

ExitCode ReportDailySales(OrderCall& call, const DailySalesResult& result, const ActionOutcome& outcome, bool shown) {
  const std::string failure = outcome.succeeded ? std::string() : ForTerminal(outcome.errorText);
  if (call.WantsJson()) {
    PrintJson(call, result, failure);
  } else {
    PrintText(call.Out(), result);
  }
  if (outcome.succeeded) return ExitCode::Done;
  if (!shown) call.Messages() << failure << '\n';
  // The component's text names the path only; the cause helps whoever must mend it.
  if (result.writeFailure) call.Messages() << ForTerminal(TextForPeople(*result.writeFailure)) << '\n';
  return ExitCode::Failed;
}

}  // namespace tolvan
