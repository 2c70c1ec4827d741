#include "database/odbc/OdbcSession.h"

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <clocale>
#include <cstdio>

#include "base/Text.h"
#include "database/odbc/OdbcErrors.h"
#include "database/sql/BufferedRecordset.h"

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

enum class ColumnKind { Text, Integer, Boolean, Real, Decimal, Moment };

ColumnKind KindOf(SQLSMALLINT type, const EngineTraits& engine) {
  switch (type) {
    case SQL_BIT:
      return ColumnKind::Boolean;
    case SQL_SMALLINT:
      return engine.smallIntegersAreBooleans ? ColumnKind::Boolean : ColumnKind::Integer;
    case SQL_TINYINT:
    case SQL_INTEGER:
    case SQL_BIGINT:
      return ColumnKind::Integer;
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
      return ColumnKind::Real;
    case SQL_NUMERIC:
    case SQL_DECIMAL:
      return ColumnKind::Decimal;
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
    case SQL_DATE:
    case SQL_TIMESTAMP:
      return ColumnKind::Moment;
    default:
      return ColumnKind::Text;
  }
}

/// Reads the rows of a result into values of a recordset, by the type of each column.
class RowReader {
 public:
  RowReader(void* statement, std::size_t columnCount, const EngineTraits& engine) : statement_(statement) {
    for (std::size_t column = 0; column < columnCount; ++column) Describe(column, engine);
  }

  std::vector<std::string> TakeNames() { return std::move(names_); }

  /// False after the last row.
  bool Read(BufferedRecordset::Row& row) {
    const SQLRETURN code = SQLFetch(statement_);
    if (code == SQL_NO_DATA) return false;
    Require(code);
    row.reserve(kinds_.size());
    for (std::size_t column = 0; column < kinds_.size(); ++column) row.push_back(ValueOf(column));
    return true;
  }

 private:
  void Require(SQLRETURN code) const {
    if (!SQL_SUCCEEDED(code)) throw MakeOdbcError(SQL_HANDLE_STMT, statement_);
  }

  void Describe(std::size_t column, const EngineTraits& engine) {
    std::array<SQLWCHAR, 256> name{};
    SQLSMALLINT length = 0;
    SQLSMALLINT type = 0;
    SQLSMALLINT digits = 0;
    SQLSMALLINT nullable = 0;
    SQLULEN size = 0;
    Require(SQLDescribeColW(statement_, static_cast<SQLUSMALLINT>(column + 1), name.data(),
                            static_cast<SQLSMALLINT>(name.size()), &length, &type, &size, &digits, &nullable));
    const auto used = std::min<std::ptrdiff_t>(std::max<std::ptrdiff_t>(length, 0), std::ssize(name) - 1);
    names_.push_back(NarrowText(std::u16string(name.begin(), name.begin() + used)));
    kinds_.push_back(KindOf(type, engine));
  }

  FieldValue ValueOf(std::size_t column) {
    const auto place = static_cast<SQLUSMALLINT>(column + 1);
    if (kinds_[column] == ColumnKind::Moment) return MomentOf(place);
    if (kinds_[column] == ColumnKind::Real) return RealOf(place);
    std::optional<std::string> text = TextOfColumn(place);
    if (!text) return std::monostate();
    if (kinds_[column] == ColumnKind::Decimal) return DecimalText{std::move(*text)};
    if (kinds_[column] == ColumnKind::Text) return std::move(*text);
    std::int64_t number = 0;
    const auto parsed = std::from_chars(text->data(), text->data() + text->size(), number);
    if (parsed.ec != std::errc()) return std::move(*text);
    if (kinds_[column] == ColumnKind::Boolean && (number == 0 || number == 1)) return number != 0;
    return number;
  }

  FieldValue MomentOf(SQLUSMALLINT place) {
    SQL_TIMESTAMP_STRUCT moment{};
    SQLLEN indicator = 0;
    Require(SQLGetData(statement_, place, SQL_C_TYPE_TIMESTAMP, &moment, sizeof moment, &indicator));
    if (indicator == SQL_NULL_DATA) return std::monostate();
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d", int{moment.year}, int{moment.month},
                  int{moment.day}, int{moment.hour}, int{moment.minute}, int{moment.second});
    if (const auto parsed = DateTime::Parse(text.data())) return *parsed;
    return std::string(text.data());
  }

  FieldValue RealOf(SQLUSMALLINT place) {
    double number = 0;
    SQLLEN indicator = 0;
    Require(SQLGetData(statement_, place, SQL_C_DOUBLE, &number, sizeof number, &indicator));
    if (indicator == SQL_NULL_DATA) return std::monostate();
    return number;
  }

  // A long text comes in pieces, each with its zero at the end.
  std::optional<std::string> TextOfColumn(SQLUSMALLINT place) {
    std::u16string text;
    for (;;) {
      SQLLEN indicator = 0;
      const SQLRETURN code = SQLGetData(statement_, place, SQL_C_WCHAR, buffer_.data(),
                                        static_cast<SQLLEN>(buffer_.size() * sizeof(SQLWCHAR)), &indicator);
      if (code == SQL_NO_DATA) break;
      Require(code);
      if (indicator == SQL_NULL_DATA) return std::nullopt;
      const std::size_t room = buffer_.size() - 1;
      const bool whole = indicator >= 0 && static_cast<std::size_t>(indicator) / sizeof(SQLWCHAR) <= room;
      const std::size_t used = whole ? static_cast<std::size_t>(indicator) / sizeof(SQLWCHAR) : room;
      text.append(buffer_.begin(), buffer_.begin() + static_cast<std::ptrdiff_t>(used));
      if (whole) break;
    }
    return NarrowText(text);
  }

  void* statement_;
  std::vector<std::string> names_;
  std::vector<ColumnKind> kinds_;
  std::array<SQLWCHAR, 2048> buffer_{};
};

/// All rows of the current result of a statement with `columnCount` columns. Throws HostError.
std::unique_ptr<BufferedRecordset> ReadRows(void* statement, std::size_t columnCount, const EngineTraits& engine) {
  RowReader reader(statement, columnCount, engine);
  std::vector<BufferedRecordset::Row> rows;
  for (BufferedRecordset::Row row; reader.Read(row); row.clear()) rows.push_back(std::move(row));
  return std::make_unique<BufferedRecordset>(reader.TakeNames(), std::move(rows));
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
        return {{},
                ReadRows(session_.statement_, static_cast<std::size_t>(columns), session_.options_.dialect->Engine()),
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
  // A driver that answers with an error again and again must not keep us here.
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
