// The totals of one day that the reporting server asks for.
#pragma once

#include <cstdint>

#include "base/Calendar.h"
#include "export/SalesProtocol.h"
#include "host/DatabaseServices.h"

namespace tolvan {

/// The query over the completed sales of a company that are not void, validated from midnight of `day` to before
/// midnight of the next.
SqlStatement SumDayOperationsStatement(Date day, std::int32_t company);

/// The totals of the day; zeros when nothing was sold. Throws HostError, kind InvalidValue when a total is no amount or
/// does not fit.
DaySalesTotals SumDayOperations(DatabaseServices& database, Date day, std::int32_t company);

}  // namespace tolvan
