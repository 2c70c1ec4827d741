// The table of the commands, in the order in which help lists them. Each is a value that its own file in this folder
// makes; a new one is such a file, its declaration, and its row.
#pragma once

#include <vector>

#include "cli/Command.h"

namespace tolvan {

Command DemoCommand();
Command VentanaCommand();
Command VexlorCommand();
Command VentasCommand();
Command SubirVentasCommand();
Command ImportarExcelCommand();
Command ImportarMovilnetCommand();
Command PlantillaCommand();
Command ImportarRncCommand();
Command RncCommand();
Command ColectorCommand();
Command LoteCommand();
Command Crc32Command();
Command EsquemaCommand();
Command OpcionesCommand();
Command AyudaCommand();

inline std::vector<Command> AllCommands() {
  return {
      DemoCommand(),        VentanaCommand(),       VexlorCommand(),           VentasCommand(),
      SubirVentasCommand(), ImportarExcelCommand(), ImportarMovilnetCommand(), PlantillaCommand(),
      ImportarRncCommand(), RncCommand(),           ColectorCommand(),         LoteCommand(),
      Crc32Command(),       EsquemaCommand(),       OpcionesCommand(),         AyudaCommand(),
  };
}

}  // namespace tolvan
