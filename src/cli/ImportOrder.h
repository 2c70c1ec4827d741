// What the two orders that import a price list share: the launcher of the options window, with the command's review.
#pragma once

#include "cli/CommandReview.h"
#include "cli/Order.h"

namespace tolvan {

/// --simular and --informe.
std::vector<OptionDefinition> ImportOptions();

/// Imports the workbook that the call names by an action of the options window, 3 or 5.
ExitCode RunImport(OrderCall& call, int action, std::vector<RowChange> changes);

}  // namespace tolvan
