// Fills the tables of the demo store.
#pragma once

#include "base/Calendar.h"
#include "host/DatabaseServices.h"

namespace tolvan {

/// Writes everything in one transaction into empty tables: catalogue, prices, barcodes, deposits and ninety days of
/// sales up to the day before `today`. Throws HostError.
void FillDemoDatabase(DatabaseServices& database, Date today);

}  // namespace tolvan
