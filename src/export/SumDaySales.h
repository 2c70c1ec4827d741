// The sales total of one day.
#pragma once

#include "base/Calendar.h"
#include "base/Currency.h"
#include "host/DatabaseServices.h"

namespace tolvan {

/// The query of the total over the completed sales that are not void, validated from midnight of `day` to before
/// midnight of the next. The form with taxes ends in ";" and the one without does not: deliberate, logs are compared.
SqlStatement SumDaySalesStatement(Date day, bool withTaxes);

/// The total of the sales of every company; 0 when there are none. Throws HostError, kind InvalidValue when the total
/// does not fit a Currency.
Currency SumDaySales(DatabaseServices& database, Date day, bool withTaxes);

}  // namespace tolvan
