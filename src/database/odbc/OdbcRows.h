// Reads the rows of a result into values of the recordset, by the type of each column.
#pragma once

#include <memory>

#include "database/sql/BufferedRecordset.h"
#include "host/SqlStatement.h"

namespace tolvan {

/// All rows of the current result of an ODBC statement with `columnCount` columns. Throws HostError.
std::unique_ptr<BufferedRecordset> ReadOdbcRows(void* statement, std::size_t columnCount, const EngineTraits& engine);

}  // namespace tolvan
