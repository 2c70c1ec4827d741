// How the two orders of the daily sales file tell what happened.
#pragma once

#include "cli/Order.h"
#include "export/DailySalesExport.h"
#include "ui/frmOpciones.h"

namespace tolvan {

/// Prints the result. Throws CommandFailure when the run failed; `shown` tells that a box showed its text already.
ExitCode ReportDailySales(OrderCall& call, const DailySalesResult& result, const ActionOutcome& outcome, bool shown);

}  // namespace tolvan
