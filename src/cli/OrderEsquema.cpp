#include "cli/OrderEsquema.h"

#include <nlohmann/json.hpp>
#include <ostream>
#include <string_view>

#include "cli/CommandHost.h"
#include "database/sql/SqlScript.h"

namespace tolvan {

namespace data {
extern const std::string_view sqliteSchema;
extern const std::string_view sqlServerSchema;
extern const std::string_view postgreSqlSchema;
extern const std::string_view accessSchema;
}  // namespace data

namespace {

struct EngineSchema {
  const char* name;  ///< as "motor" in tolvan.ini
  std::string_view script;
};

EngineSchema SchemaOf(DatabaseEngine engine) {
  switch (engine) {
    case DatabaseEngine::SqlServer:
      return {"sqlserver", data::sqlServerSchema};
    case DatabaseEngine::PostgreSql:
      return {"postgresql", data::postgreSqlSchema};
    case DatabaseEngine::Access:
      return {"access", data::accessSchema};
    case DatabaseEngine::Sqlite:
      break;
  }
  return {"sqlite", data::sqliteSchema};
}

/// The names behind CREATE TABLE, in the order of the script.
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

}  // namespace

OrderDefinition OrderEsquema::Definition() const {
  return {.name = "esquema",
          .summary = "Muestra, o crea en la base de datos configurada, las tablas con que trabaja el componente",
          .options = {{.name = "--crear", .summary = "las crea, todas o ninguna; sin ella solo se muestran"}},
          .notes =
              "El texto es el del motor configurado. Lo que ya existe no se cambia, salvo en Access, que rechaza una "
              "tabla que ya está. Con sqlite el archivo ha de existir, aunque esté vacío.",
          .examples = {{"esquema", "muestra las instrucciones, sin ejecutarlas"}}};
}

ExitCode OrderEsquema::Run(OrderCall& call) const {
  CommandHost& host = call.Host();
  const EngineSchema schema = SchemaOf(host.Context().application.Dialect().Engine());
  const std::vector<std::string> tables = TablesOf(schema.script);
  const bool create = call.Given().Has("--crear");
  if (create) RunSqlScript(host.RequireDatabase(), schema.script);
  if (call.WantsJson()) {
    call.PrintJson(nlohmann::ordered_json{{"motor", schema.name}, {"tablas", tables}}.dump(2));
  } else if (create) {
    call.Out() << "Motor:  " << schema.name << "\nTablas: " << tables.size() << '\n';
  } else {
    call.Out() << schema.script;
  }
  return ExitCode::Done;
}

}  // namespace tolvan
