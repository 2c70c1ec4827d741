// The host's database on a server, over ODBC. Statements travel as their exact text. Every failure is a HostError whose
// context is the statement. Rows are read whole before a call returns, so that a connection is free for the next
// statement whatever the driver can do; the largest result of the component is its item table.
//
// A connection that is lost (the server went away, or a call was given up) is opened again by the next call outside a
// transaction. What was begun on the lost one is never taken up again.
#pragma once

#include <optional>

#include "database/odbc/OdbcModule.h"
#include "database/odbc/OdbcWorker.h"
#include "host/DatabaseServices.h"

namespace tolvan {

class OdbcDatabaseServices final : public DatabaseServices {
 public:
  /// Connects. Throws HostError: Configuration (no such driver, a connection string that cannot be used), Unreachable,
  /// Access (the login is refused), Timeout.
  explicit OdbcDatabaseServices(OdbcOptions options);
  ~OdbcDatabaseServices() override;

  std::unique_ptr<Recordset> OpenRecordset(const SqlStatement& statement) override;
  std::int64_t Execute(const SqlStatement& statement) override;
  std::vector<BatchResult> RunBatch(std::span<const SqlStatement> statements) override;
  std::unique_ptr<Transaction> BeginTransaction() override;

 private:
  class OpenTransaction;

  BatchForm Form() const { return dialect_.Engine().batchForm; }
  void Connect();
  /// Throws the failure that ended the open transaction; connects again when the connection was lost.
  void RequireUsable();
  std::vector<BatchResult> Send(const std::string& text);
  /// The results of one statement; throws its first error.
  std::vector<BatchResult> SendOne(const SqlStatement& statement);
  /// What came back for each statement, from the first on; see AssignResults.
  std::vector<BatchResult> SendTogether(std::span<const std::string> texts);
  std::vector<BatchResult> SendSaved(std::span<const std::string> texts);
  void RunRendered(std::span<const std::string> texts, std::vector<BatchResult>& results);
  /// Remembers the first failure of the open transaction, and whether the connection went with it.
  void NoteFailure(const HostError& error);
  void Control(void (OdbcSession::*work)(), const Interruption* interruption);
  void Commit();
  void Rollback() noexcept;

  OdbcOptions options_;
  const SqlDialect& dialect_;
  std::unique_ptr<OdbcWorker> worker_;  // null when the connection is lost
  bool inTransaction_ = false;
  std::optional<HostError> failure_;
};

}  // namespace tolvan
