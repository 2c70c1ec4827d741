// The way from the configured engine to its dialect.
#pragma once

#include <memory>

#include "host/SqlDialect.h"

namespace tolvan {

/// Never null.
std::unique_ptr<SqlDialect> MakeSqlDialect(DatabaseEngine engine);

}  // namespace tolvan
