// The table of the commands, in the order in which help lists them. Each is a value that its own file in this folder
// makes; a new one is such a file, its declaration, and its row. Importers of price lists need none of it: their rows
// in the table of actions make their commands. A command that runs an action has its name and summary from there.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "cli/Command.h"
#include "ui/ActionTable.h"

namespace tolvan {

Command DemoCommand();
Command VentanaCommand();
Command VexlorCommand();
Command VentasCommand();
Command SubirVentasCommand();
Command PlantillaCommand();
Command ImportarRncCommand();
Command RncCommand();
Command ColectorCommand();
Command LoteCommand();
Command Crc32Command();
Command EsquemaCommand();
Command OpcionesCommand();
Command AyudaCommand();

/// One command for each importer of price lists, by name.
std::vector<Command> ImportCommands();

/// The name and the summary of the command of an action, from its row.
inline std::string NameOf(int action) {
  return std::string(FindAction(action).command);
}
inline std::string SummaryOf(int action) {
  return std::string(FindAction(action).summary);
}

inline std::vector<Command> AllCommands() {
  std::vector<Command> commands{DemoCommand(), VentanaCommand(), VexlorCommand(), VentasCommand(),
                                SubirVentasCommand()};
  for (Command& each : ImportCommands()) commands.push_back(std::move(each));
  for (const auto make : {&PlantillaCommand, &ImportarRncCommand, &RncCommand, &ColectorCommand, &LoteCommand,
                          &Crc32Command, &EsquemaCommand, &OpcionesCommand, &AyudaCommand}) {
    commands.push_back(make());
  }
  return commands;
}

}  // namespace tolvan
