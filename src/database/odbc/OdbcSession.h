// One ODBC connection, used from its worker's thread only (see OdbcWorker): every call here may block for as long as
// the server likes. Cancel alone may come from another thread.
//
// What drivers do differently is evened out here: affected rows are -1, 0 or "no data" for the same event, an error may
// come only with a later result, and all results of a text have to be walked through before the connection is free.
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "database/odbc/OdbcModule.h"
#include "host/DatabaseServices.h"

namespace tolvan {

class OdbcSession {
 public:
  OdbcSession() = default;
  ~OdbcSession();
  OdbcSession(const OdbcSession&) = delete;
  OdbcSession& operator=(const OdbcSession&) = delete;

  /// Throws HostError.
  void Open(const OdbcOptions& options);

  /// Sends the text in one round trip and reads everything that comes back, in order: counts, rows and errors. Throws
  /// only when the connection cannot be used at all.
  std::vector<BatchResult> Run(const std::string& text);

  /// Throw HostError.
  void Begin();
  void Commit();
  void Rollback();

  /// Whether the driver knows that the connection is gone.
  bool IsDead() const;

  /// Asks the server to stop what runs. May block, as every call.
  void Cancel();

 private:
  class RunningStatement;

  void LimitStatements();
  void SetAutoCommit(bool on);
  void EndTransaction(short how);

  void* environment_ = nullptr;
  void* connection_ = nullptr;
  bool connected_ = false;
  OdbcOptions options_;
  std::mutex cancelling_;  // a statement is not freed while another thread cancels it
  void* statement_ = nullptr;
};

}  // namespace tolvan
