// Sends the store's totals to a reporting server over HTTP, one day at a time: the server lists the days that it still
// needs, and gets them in that order. The server keeps one set of totals per store and day, so that sending a day
// again replaces what it has: after a failure the next run simply asks again.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Calendar.h"
#include "services/ActionReport.h"
#include "services/ComponentContext.h"

namespace tolvan {

class clsCallBackProgreso;
struct ServerAddress;

/// What is said when the server needs no day.
inline constexpr std::string_view noDayPending = "No hay días pendientes: el servidor de ventas no pidió ninguno.";

/// What one exchange did, and the details of the action's report.
struct SalesUploadResult {
  std::vector<Date> days;  ///< accepted by the server, in the order sent
  bool complete = false;   ///< every day asked for was sent, also when none was asked for
  std::string failure;     ///< Spanish; empty exactly when complete

  /// Complete, but the server needed nothing.
  bool NothingPending() const { return complete && days.empty(); }
};

/// One exchange with the server. The action is UploadSales; the host creates this through the COM library.
class clsIE_SVentas {
 public:
  /// Reads the server's address and the reference date. `context` and `progress`, which may be null, must outlive this
  /// object.
  explicit clsIE_SVentas(const ComponentContext& context, clsCallBackProgreso* progress = nullptr);

  /// Writes address and reference date back, like WriteBack, unless that was done; a refusal is not told.
  ~clsIE_SVentas();
  clsIE_SVentas(const clsIE_SVentas&) = delete;
  clsIE_SVentas& operator=(const clsIE_SVentas&) = delete;

  /// Whether there is a server to send to.
  bool Listo() const { return ready_; }

  /// One exchange. True when every day that the server listed was sent, and it listed one; the first day that fails
  /// ends it, and the days before it stay sent. The reference date moves to the last day sent. Shows nothing and throws
  /// no HostError.
  bool Procesar();

  /// Of the last exchange.
  const SalesUploadResult& Result() const { return result_; }

  /// Writes the server's address and the reference date to the settings, for those who want to know whether they were
  /// taken; nothing is made durable. A date that could not be read is not written. Throws ApplicationError.
  void WriteBack();

 private:
  void Exchange();
  std::vector<std::string> AskPendingDays(const ServerAddress& server);
  void SendDays(const ServerAddress& server, const std::vector<std::string>& answer);
  void SendDay(const ServerAddress& server, Date day);
  std::vector<std::string> Send(const ServerAddress& server, const std::vector<std::string>& fields);

  const ComponentContext* context_;
  clsCallBackProgreso* progress_;
  std::string serverAddress_;
  std::optional<Date> referenceDate_;  // empty when the settings hold none
  bool ready_;
  std::string referenceFailure_;
  bool writtenBack_ = false;
  SalesUploadResult result_;
};

/// The action: sends the days that the server asks for and saves how far it came, also when it stopped early. It is
/// done when days were sent, all that were asked for, and the settings are saved. Throws no HostError; the details of
/// the report are a SalesUploadResult. `progress` may be null.
ActionReport UploadSales(const ComponentContext& context, clsCallBackProgreso* progress = nullptr);

}  // namespace tolvan
