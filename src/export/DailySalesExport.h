// The daily sales file: one store's total of one day as a single line for an external reporting system, optionally
// mailed. Its form is described in docs/formats.md.
#pragma once

#include <string>
#include <string_view>

#include "base/Calendar.h"
#include "base/Currency.h"
#include "host/NetworkServices.h"
#include "services/ActionReport.h"
#include "services/ComponentContext.h"

namespace tolvan {

/// The details of the action's report.
struct DailySalesFile {
  std::string path;    ///< empty when the run did not come so far
  std::string record;  ///< the line
  bool written = false;
  bool sent = false;
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

/// A date that three settings hold as its parts.
struct DateSettings {
  Setting year;
  Setting month;
  Setting day;
};

inline constexpr DateSettings reportDateSettings{
    .year = Setting::FechaReporteAnno, .month = Setting::FechaReporteMes, .day = Setting::FechaReporteDia};
inline constexpr DateSettings uploadDateSettings{
    .year = Setting::OffsetAnno, .month = Setting::OffsetMes, .day = Setting::OffsetDia};

/// The stored date, carried when its parts run over (day 31 of February is in March). Throws HostError InvalidValue
/// when they are no date at all; `what` names the date in its text ("fecha de reporte").
Date StoredDate(const ImpExpSettings& settings, const DateSettings& parts, std::string_view what);

/// StoredDate of the report date.
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
  /// settings say so. Never throws a HostError: the report says why it was not done. Its details are a DailySalesFile.
  ActionReport Run(bool interactive);

 private:
  void Export(bool interactive, DailySalesFile& file, ActionReport& report);
  bool Write(DailySalesFile& file, ActionReport& report);
  MailOutcome Send(const std::string& path, bool interactive);

  const ComponentContext* context_;
};

}  // namespace tolvan
