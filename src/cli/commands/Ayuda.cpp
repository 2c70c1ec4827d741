// The help of the program or of one command.
#include <algorithm>
#include <ostream>

#include "cli/CommandCall.h"
#include "cli/Help.h"
#include "cli/commands/AllCommands.h"

namespace tolvan {
namespace {

std::string HelpFor(const std::vector<std::string>& words, std::size_t columns) {
  const std::vector<Command> commands = AllCommands();
  if (words.empty()) return HelpOfAll(commands, columns);
  const auto command = std::ranges::find(commands, words.front(), &Command::name);
  if (command != commands.end()) return HelpOf(*command, columns);
  throw CommandFailure(ExitCode::Usage, UnknownCommand(words.front(), NamesOf(commands)));
}

ExitCode RunAyuda(CommandCall& call) {
  const std::string text = HelpFor(call.Given().arguments, ColumnsForText(call.OutColumns()));
  if (call.WantsJson()) {
    call.PrintJson(Result{{"ayuda", text}});
  } else {
    call.Out() << text;
  }
  return ExitCode::Done;
}

}  // namespace

Command AyudaCommand() {
  return {.name = helpCommandName,
          .summary = "Muestra esta ayuda, o la de una orden",
          .arguments = {{.name = "ORDEN", .summary = "la orden", .required = false, .isCommand = true}},
          .examples = {{"ayuda", "las órdenes y las opciones generales"},
                       {"ayuda importar-excel", "lo mismo que importar-excel --ayuda"}},
          .run = &RunAyuda};
}

}  // namespace tolvan
