// The daily sales file: one store's total of one day as a single line for an external reporting system, optionally
// mailed. Its form is described in docs/formats.md.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/Calendar.h"
#include "base/Currency.h"
#include "host/HostError.h"
#include "host/NetworkServices.h"
#include "services/ComponentContext.h"

namespace tolvan {

/// What one run did, for fronts that tell more than success.
struct DailySalesResult {
  bool succeeded = false;  ///< the file was written and, when asked for, sent
  std::string path;        ///< of the file; empty when the run did not come so far
  std::string record;      ///< the line
  bool written = false;
  bool sent = false;
  std::optional<HostError> writeFailure;
};

/// The fields of the line that are not the total.
struct DailySalesRecord {
  std::string storeCode;
  int endHours = 0;
  int endMinutes = 0;
  Date reportDate;
  bool quoted = true;  ///< double quotes around time and date, and then a trailing separator
};

/// The line for a total, without a line end.
std::string FormatDailySales(const DailySalesRecord& record, Currency total);

/// The report date that the settings hold, carried when its parts run over (day 31 of February is in March). Throws
/// HostError InvalidValue when they are no date at all.
Date StoredReportDate(const ImpExpSettings& settings);

/// Why the file cannot hold a store code, in Spanish with the character and the setting; empty when it can.
std::string StoreCodeObjection(std::string_view storeCode);

/// The default name of the file: "240131.txt".
std::string DailySalesFileName(Date reportDate);

class DailySalesExport {
 public:
  /// `context` must outlive this object.
  explicit DailySalesExport(const ComponentContext& context) : context_(&context) {}

  /// Writes the file of the stored report date when `interactive`, of yesterday when not, and sends it when the
  /// settings say so. Never throws a HostError: messages are appended to `errorText`, each after a line break (CR LF).
  DailySalesResult Run(bool interactive, std::string& errorText);

 private:
  void Export(bool interactive, DailySalesResult& result, std::string& errorText);
  bool Write(DailySalesResult& result, std::string& errorText);
  MailOutcome Send(const std::string& path, bool interactive);

  const ComponentContext* context_;
};

}  // namespace tolvan
