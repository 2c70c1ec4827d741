// Scripts of many statements, such as the files of data/esquema.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/DatabaseServices.h"

namespace tolvan {

/// The statements of a script, without the ";" behind them and without comments ("--" to the end of the line, "/*" to
/// "*/"). A ";" inside '…', "…" or […] ends nothing; there are no trigger or function bodies.
std::vector<std::string> SplitSqlScript(std::string_view script);

/// Runs the whole script in one transaction: all of it took effect, or a HostError was thrown and nothing did.
void RunSqlScript(DatabaseServices& database, std::string_view script);

}  // namespace tolvan
