// How each action runs: the routines of the action table, and the same steps for fronts that run one action by itself.
#pragma once

#include <functional>
#include <string>

#include "transport/ItemDefinitionFile.h"
#include "ui/ActionTable.h"

namespace tolvan {

// The routines of the table. Whoever runs them reports what they throw.

ActionReport RunDailySales(ActionRun& run);
ActionReport RunSalesUpload(ActionRun& run);
ActionReport RunImport(ActionRun& run);
ActionReport RunRegistryImport(ActionRun& run);

/// The daily sales file without a window, and when `interactive` the box that says how it went. Its details are a
/// DailySalesFile.
ActionReport ExportDailySales(const ComponentContext& context, bool interactive);

/// What one import works with. All of it outlives the import.
struct ImportLaunch {
  const ComponentContext& context;
  ImportTools tools;
  StatusWindow& window;                        ///< status displays are put over it
  bool remembersFile = true;                   ///< false leaves nothing of the run but what it applies
  std::function<void(PriceImporter&)> made{};  ///< receives the importer, which lives until the import ends
};

/// The whole way of one import of a workbook: looked for, remembered, read and reviewed. True when the review was shown
/// and closed; `outcome` says what came of it, and whether the user has seen that.
bool LaunchImport(const Action& action, const std::string& path, const ImportLaunch& launch, ImportOutcome& outcome);

/// Makes the template of the workbook and opens it for the user. A failure is shown.
void OpenTemplate(const ComponentContext& context, SpreadsheetApplication& spreadsheets);

/// Asks for a file and writes the collector's items to it. A failure is shown in the window's box for failures; nothing
/// is shown when the user cancelled, nor when a query could not be opened. `progress` may be null.
void MakeCollectorFile(const ComponentContext& context, XmlLibrary& library, CollectorPurpose purpose,
                       clsCallBackProgreso* progress);

}  // namespace tolvan
