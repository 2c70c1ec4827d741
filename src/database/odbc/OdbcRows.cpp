#include "database/odbc/OdbcRows.h"

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>

#include "database/odbc/OdbcErrors.h"
#include "database/odbc/OdbcText.h"

namespace tolvan {
namespace {

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

class RowReader {
 public:
  RowReader(void* statement, std::size_t columnCount, const EngineTraits& engine) : statement_(statement) {
    for (std::size_t column = 0; column < columnCount; ++column) Describe(column, engine);
  }

  std::vector<std::string> TakeNames() { return std::move(names_); }

  /// False behind the last row.
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

}  // namespace

std::unique_ptr<BufferedRecordset> ReadOdbcRows(void* statement, std::size_t columnCount, const EngineTraits& engine) {
  RowReader reader(statement, columnCount, engine);
  std::vector<BufferedRecordset::Row> rows;
  for (BufferedRecordset::Row row; reader.Read(row); row.clear()) rows.push_back(std::move(row));
  return std::make_unique<BufferedRecordset>(reader.TakeNames(), std::move(rows));
}

}  // namespace tolvan
