// Which provider serves the configured database engine: the one place to change when an engine gets another one.
#pragma once

#include <memory>
#include <string>

#include "host/DatabaseServices.h"
#include "host/Interruption.h"
#include "host/SqlDialect.h"
#include "store/HostConfiguration.h"

namespace tolvan {

/// Never null. Throws HostError: Configuration when the provider's module cannot be loaded, otherwise as
/// HostApplication::Database. `interruption` must outlive the result.
std::unique_ptr<DatabaseServices> OpenConfiguredDatabase(const HostConfiguration& configuration,
                                                         const Interruption& interruption);

}  // namespace tolvan
