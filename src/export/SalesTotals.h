// What the store sold on one day, as the two exports ask the database for it.
#pragma once

#include <cstdint>

#include "base/Calendar.h"
#include "base/Currency.h"
#include "host/DatabaseServices.h"

namespace tolvan {

/// What a store sold on one day, for the reporting server.
struct DaySalesTotals {
  std::int64_t operations = 0;
  Currency subtotal;
  Currency discounts;
  Currency taxes;
  Currency total;  ///< subtotal less discounts plus taxes
};

/// The query of the total over the completed sales that are not void, validated from midnight of `day` to before
/// midnight of the next. The form with taxes ends in ";" and the one without does not: deliberate, logs are compared.
SqlStatement SumDaySalesStatement(Date day, bool withTaxes);

/// The total of the sales of every company; 0 when there are none. Throws HostError, kind InvalidValue when the total
/// does not fit a Currency.
Currency SumDaySales(DatabaseServices& database, Date day, bool withTaxes);

/// The query over the completed sales of a company that are not void, validated from midnight of `day` to before
/// midnight of the next.
SqlStatement SumDayOperationsStatement(Date day, std::int32_t company);

/// The totals of the day; zeros when nothing was sold. Throws HostError, kind InvalidValue when a total is no amount or
/// does not fit.
DaySalesTotals SumDayOperations(DatabaseServices& database, Date day, std::int32_t company);

}  // namespace tolvan
