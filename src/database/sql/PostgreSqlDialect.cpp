// PostgreSQL's part of the dialects: its traits, and many rows in one statement.
#include "database/sql/SqlDialects.h"

#include <array>

#include "database/sql/SqlScript.h"

namespace tolvan {
namespace {

/// One column of rows that lie one after the other.
class Column {
 public:
  Column(std::span<const SqlLiteral> values, std::size_t place, std::size_t width)
      : values_(values), place_(place), width_(width) {}

  std::size_t Size() const { return values_.size() / width_; }
  const SqlLiteral& At(std::size_t row) const { return values_[row * width_ + place_]; }

  bool IsConstant() const {
    for (std::size_t row = 1; row < Size(); ++row) {
      if (At(row) != At(0)) return false;
    }
    return true;
  }

  std::string_view ArrayType() const {
    // By the alternatives of SqlLiteral; booleans are numbers here.
    constexpr std::array<std::string_view, std::variant_size_v<SqlLiteral>> types{
        "text[]", "smallint[]", "bigint[]", "numeric[]", "timestamp[]", "text[]"};
    std::size_t kind = 0;
    for (std::size_t row = 0; row < Size() && kind == 0; ++row) kind = At(row).index();
    return types[kind];
  }

 private:
  std::span<const SqlLiteral> values_;
  std::size_t place_;
  std::size_t width_;
};

void AppendQuoted(std::string& array, std::string_view text) {
  array += '"';
  for (const char character : text) {
    if (character == '"' || character == '\\') array += '\\';
    array += character;
  }
  array += '"';
}

std::string ArrayText(const Column& column, const SqlDialect& dialect) {
  std::string array = "{";
  for (std::size_t row = 0; row < column.Size(); ++row) {
    if (row > 0) array += ',';
    const SqlLiteral& value = column.At(row);
    if (const auto* text = std::get_if<std::string>(&value)) {
      AppendQuoted(array, *text);
    } else if (const auto* moment = std::get_if<DateTime>(&value)) {
      AppendQuoted(array, moment->ToIsoText());
    } else {
      array += dialect.Literal(value);
    }
  }
  return array += '}';
}

}  // namespace

// psqlODBC would work otherwise without its options: a savepoint around every statement (two more round trips each),
// line ends converted, cursors. A limit set on its statements it would send again and again, around every look-up of
// its own.
const EngineTraits& PostgreSqlDialect::Engine() const {
  static const EngineTraits traits{.name = "postgresql",
                                   .schema = data::postgreSqlSchema,
                                   .batchForm = BatchForm::Separated,
                                   .smallIntegersAreBooleans = true,
                                   .driverOptions = "Protocol=7.4-0;LFConversion=0;UseDeclareFetch=0;",
                                   .statementLimitSetting = "SET statement_timeout = '?s'"};
  return traits;
}

std::optional<SqlStatement> PostgreSqlDialect::InsertManyUnlessPresent(std::string_view table,
                                                                       std::span<const std::string_view> columns,
                                                                       std::span<const SqlLiteral> values) const {
  SqlStatement statement;
  SqlStatement arrays(" FROM unnest(");
  std::string names;
  AppendInsertInto(statement, table, columns);
  for (std::size_t place = 0; place < columns.size(); ++place) {
    const Column column(values, place, columns.size());
    statement.Sql(place == 0 ? " SELECT " : ", ");
    if (place > 0 && column.IsConstant()) {
      statement.Literal(column.At(0));
      continue;
    }
    const std::string name = "V" + std::to_string(place + 1);
    statement.Sql(name);
    arrays.Sql(names.empty() ? "" : ", ").Text(ArrayText(column, *this)).Sql("::").Sql(column.ArrayType());
    names += (names.empty() ? "" : ", ") + name;
  }
  statement.Append(arrays).Sql(") AS Filas (").Sql(names).Sql(") ON CONFLICT (").Sql(columns[0]);
  return statement.Sql(") DO NOTHING RETURNING ").Sql(columns[0]);
}

}  // namespace tolvan
