// Scripts of many statements: the files of data/esquema, one for each engine, as they are embedded into the programs,
// and how a script is run.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/DatabaseServices.h"

namespace tolvan {
namespace data {

extern const std::string_view sqliteSchema;
extern const std::string_view sqlServerSchema;
extern const std::string_view postgreSqlSchema;
extern const std::string_view accessSchema;

}  // namespace data

/// The statements of a script, without the ";" after them and without comments ("--" to the end of the line, "/*" to
/// "*/"). A ";" inside '…', "…" or […] ends nothing; there are no trigger or function bodies.
std::vector<std::string> SplitSqlScript(std::string_view script);

/// Runs the whole script in one transaction: all of it took effect, or a HostError was thrown and nothing did.
void RunSqlScript(DatabaseServices& database, std::string_view script);

}  // namespace tolvan
