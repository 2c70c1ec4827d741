// The tables that the component works on, for the configured engine.
#include <ostream>
#include <string_view>

#include "cli/CommandCall.h"
#include "cli/commands/AllCommands.h"
#include "database/sql/SqlScript.h"

namespace tolvan {
namespace {

/// The names after CREATE TABLE, in the order of the script.
std::vector<std::string> TablesOf(std::string_view script) {
  constexpr std::string_view create = "CREATE TABLE ";
  constexpr std::string_view unlessThere = "IF NOT EXISTS ";
  std::vector<std::string> tables;
  for (const std::string& statement : SplitSqlScript(script)) {
    std::size_t start = statement.find(create);
    if (start == std::string::npos) continue;
    start += create.size();
    if (statement.compare(start, unlessThere.size(), unlessThere) == 0) start += unlessThere.size();
    tables.push_back(statement.substr(start, statement.find_first_of(" (", start) - start));
  }
  return tables;
}

ExitCode RunEsquema(CommandCall& call) {
  CommandHost& host = call.Host();
  const EngineTraits& engine = host.Context().application.Dialect().Engine();
  const bool create = call.Given().Has("--crear");
  if (create) RunSqlScript(host.RequireDatabase(), engine.schema);
  if (create || call.WantsJson()) {
    call.Print({{"motor", std::string(engine.name), "Motor"}, {"tablas", TablesOf(engine.schema), "Tablas"}});
  } else {
    call.Out() << engine.schema;
  }
  return ExitCode::Done;
}

}  // namespace

Command EsquemaCommand() {
  return {.name = "esquema",
          .summary = "Muestra, o crea en la base de datos configurada, las tablas con que trabaja el componente",
          .options = {{.name = "--crear", .summary = "las crea, todas o ninguna; sin ella solo se muestran"}},
          .notes =
              "El texto es el del motor configurado. Lo que ya existe no se cambia, salvo en Access, que rechaza una "
              "tabla que ya está. Con sqlite el archivo ha de existir, aunque esté vacío.",
          .examples = {{"esquema", "muestra las instrucciones, sin ejecutarlas"}},
          .run = &RunEsquema};
}

}  // namespace tolvan
