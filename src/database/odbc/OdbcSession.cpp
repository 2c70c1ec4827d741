#include "database/odbc/OdbcSession.h"

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include <clocale>

#include "base/Text.h"
#include "database/odbc/OdbcErrors.h"
#include "database/odbc/OdbcRows.h"
#include "database/odbc/OdbcText.h"

namespace tolvan {
namespace {

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t));

SQLWCHAR* Wide(std::u16string& text) {
  return reinterpret_cast<SQLWCHAR*>(text.data());
}

/// An attribute that is a number travels in the pointer.
SQLPOINTER Number(std::uintptr_t value) {
  return reinterpret_cast<SQLPOINTER>(value);  // NOLINT(performance-no-int-to-ptr): the interface's own way
}

/// The engine's options stand at the end, where they win over the user's.
std::string WithDriverOptions(const OdbcOptions& options) {
  const std::string_view added = options.dialect->Engine().driverOptions;
  if (added.empty()) return options.connection;
  const bool ended = options.connection.empty() || options.connection.ends_with(';');
  return options.connection + (ended ? "" : ";") + std::string(added);
}

}  // namespace

/// Frees its handle when no other thread cancels it.
class OdbcSession::RunningStatement {
 public:
  explicit RunningStatement(OdbcSession& session) : session_(session) {
    SQLHANDLE handle = nullptr;
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_STMT, session.connection_, &handle))) {
      throw MakeOdbcError(SQL_HANDLE_DBC, session.connection_);
    }
    if (session.options_.dialect->Engine().statementLimitSetting.empty()) {
      const auto seconds = static_cast<std::uintptr_t>(session.options_.statementLimit.count());
      SQLSetStmtAttrW(handle, SQL_ATTR_QUERY_TIMEOUT, Number(seconds), 0);
    }
    SQLSetStmtAttrW(handle, SQL_ATTR_NOSCAN, Number(SQL_NOSCAN_ON), 0);
    const std::lock_guard lock(session_.cancelling_);
    session_.statement_ = handle;
  }
  ~RunningStatement() {
    const std::lock_guard lock(session_.cancelling_);
    SQLFreeHandle(SQL_HANDLE_STMT, session_.statement_);
    session_.statement_ = nullptr;
  }
  RunningStatement(const RunningStatement&) = delete;
  RunningStatement& operator=(const RunningStatement&) = delete;

  SQLRETURN Send(const std::string& text) {
    std::u16string wide = WideText(text);
    return SQLExecDirectW(session_.statement_, Wide(wide), static_cast<SQLINTEGER>(wide.size()));
  }
  SQLRETURN Next() { return SQLMoreResults(session_.statement_); }

  BatchResult ReadResult(SQLRETURN code) {
    if (code != SQL_NO_DATA && !SQL_SUCCEEDED(code)) return {{}, nullptr, Error()};
    SQLSMALLINT columns = 0;
    if (SQL_SUCCEEDED(code)) SQLNumResultCols(session_.statement_, &columns);
    try {
      if (columns > 0) {
        return {
            {},
            ReadOdbcRows(session_.statement_, static_cast<std::size_t>(columns), session_.options_.dialect->Engine()),
            {}};
      }
    } catch (const HostError& error) {
      return {{}, nullptr, error};
    }
    SQLLEN count = 0;
    if (code == SQL_NO_DATA || !SQL_SUCCEEDED(SQLRowCount(session_.statement_, &count)) || count < 0) count = 0;
    return {count, nullptr, {}};
  }

 private:
  HostError Error() const { return MakeOdbcError(SQL_HANDLE_STMT, session_.statement_); }

  OdbcSession& session_;
};

OdbcSession::~OdbcSession() {
  if (connected_) {
    SQLEndTran(SQL_HANDLE_DBC, connection_, SQL_ROLLBACK);
    SQLDisconnect(connection_);
  }
  if (connection_ != nullptr) SQLFreeHandle(SQL_HANDLE_DBC, connection_);
  if (environment_ != nullptr) SQLFreeHandle(SQL_HANDLE_ENV, environment_);
}

void OdbcSession::Open(const OdbcOptions& options) {
  options_ = options;
  // Drivers write decimals by the locale of the process; this program never wants another one for numbers.
  std::setlocale(LC_NUMERIC, "C");
  if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment_))) {
    throw HostError(HostErrorKind::Configuration, "no se puede usar ODBC en este equipo");
  }
  SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION, Number(SQL_OV_ODBC3), 0);
  if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_))) {
    throw MakeOdbcError(SQL_HANDLE_ENV, environment_);
  }
  const auto seconds = static_cast<std::uintptr_t>(options.loginLimit.count());
  SQLSetConnectAttrW(connection_, SQL_ATTR_LOGIN_TIMEOUT, Number(seconds), 0);
  std::u16string wide = WideText(WithDriverOptions(options));
  const SQLRETURN code = SQLDriverConnectW(connection_, nullptr, Wide(wide), static_cast<SQLSMALLINT>(wide.size()),
                                           nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
  if (!SQL_SUCCEEDED(code)) throw MakeOdbcError(SQL_HANDLE_DBC, connection_);
  connected_ = true;
  if (!options.dialect->Engine().statementLimitSetting.empty()) LimitStatements();
}

void OdbcSession::LimitStatements() {
  const std::string_view setting = options_.dialect->Engine().statementLimitSetting;
  for (const BatchResult& result : Run(ReplaceAll(setting, "?", std::to_string(options_.statementLimit.count())))) {
    if (result.error) throw HostError(*result.error);
  }
}

std::vector<BatchResult> OdbcSession::Run(const std::string& text) {
  // A driver that answers an error again and again must not keep us here.
  constexpr int mostErrorsInARow = 1'000;
  RunningStatement statement(*this);
  std::vector<BatchResult> results;
  int errors = 0;
  for (SQLRETURN code = statement.Send(text);; code = statement.Next()) {
    if (code == SQL_NO_DATA && !results.empty()) break;
    results.push_back(statement.ReadResult(code));
    if (!results.back().error) {
      errors = 0;
    } else if (++errors == mostErrorsInARow || IsDead() || results.back().error->Kind() == HostErrorKind::Unreachable) {
      break;
    }
  }
  return results;
}

void OdbcSession::Begin() {
  SetAutoCommit(false);
}

void OdbcSession::Commit() {
  std::optional<HostError> failure;
  try {
    EndTransaction(SQL_COMMIT);
  } catch (const HostError& error) {
    failure = error;
  }
  // A driver may call it a success, or any failure, although the connection died on the way.
  if (IsDead()) throw HostError(HostErrorKind::Unreachable, "la conexión se perdió al confirmar la transacción");
  if (failure) throw HostError(*failure);
  SetAutoCommit(true);
}

void OdbcSession::Rollback() {
  EndTransaction(SQL_ROLLBACK);
  SetAutoCommit(true);
}

bool OdbcSession::IsDead() const {
  SQLUINTEGER dead = SQL_CD_FALSE;
  const SQLRETURN code = SQLGetConnectAttrW(connection_, SQL_ATTR_CONNECTION_DEAD, &dead, sizeof dead, nullptr);
  return SQL_SUCCEEDED(code) && dead == SQL_CD_TRUE;
}

void OdbcSession::Cancel() {
  const std::lock_guard lock(cancelling_);
  if (statement_ != nullptr) SQLCancel(statement_);
}

void OdbcSession::SetAutoCommit(bool on) {
  const auto value = static_cast<std::uintptr_t>(on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF);
  if (!SQL_SUCCEEDED(SQLSetConnectAttrW(connection_, SQL_ATTR_AUTOCOMMIT, Number(value), SQL_IS_UINTEGER))) {
    throw MakeOdbcError(SQL_HANDLE_DBC, connection_);
  }
}

void OdbcSession::EndTransaction(short how) {
  if (!SQL_SUCCEEDED(SQLEndTran(SQL_HANDLE_DBC, connection_, how))) {
    throw MakeOdbcError(SQL_HANDLE_DBC, connection_);
  }
}

}  // namespace tolvan
