// The import of the taxpayer registry as benchmarks run it: whole, with nobody who looks or interrupts.
#pragma once

#include <string>

#include "fiscal/RegistryReport.h"
#include "host/DatabaseServices.h"
#include "host/SqlStatement.h"

namespace tolvan::bench {

/// Imports the file. Ends the program when that fails.
RegistryCounts ImportRegistry(DatabaseServices& database, const SqlDialect& dialect, const std::string& registryPath);

/// Ends the program as broken.
[[noreturn]] void Stop(const std::string& text);

}  // namespace tolvan::bench
