// A statement as a value: fixed text with typed literals between. Rendered by a dialect it is the exact SQL text; a
// provider that prepares binds the literals instead and caches by ParameterText. Values never enter the fixed text.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/Calendar.h"
#include "base/Currency.h"

namespace tolvan {

class SqlDialect;

/// std::monostate is NULL; text is UTF-8.
using SqlLiteral = std::variant<std::monostate, bool, std::int64_t, Currency, DateTime, std::string>;

class SqlStatement {
 public:
  SqlStatement() = default;
  explicit SqlStatement(std::string_view fixedText) { Sql(fixedText); }

  /// Appends text of the program's own. It must hold no "?" outside what Literal appends.
  SqlStatement& Sql(std::string_view fixedText);

  /// Appends a value as a literal.
  SqlStatement& Text(std::string_view value) { return Literal(std::string(value)); }
  SqlStatement& Boolean(bool value) { return Literal(value); }
  SqlStatement& Integer(std::int64_t value) { return Literal(value); }
  SqlStatement& Money(Currency value) { return Literal(value); }
  SqlStatement& Moment(DateTime value) { return Literal(value); }
  SqlStatement& Null() { return Literal(std::monostate()); }
  SqlStatement& Literal(SqlLiteral value);

  /// Appends another statement, its literals included.
  SqlStatement& Append(const SqlStatement& other);

  /// Puts another text in the place of the literal at `index`, which is below Literals().size(): for a statement that
  /// runs once per row, whose memory is used again.
  void ReplaceText(std::size_t index, std::string_view value);

  /// The same for a value of any type.
  void ReplaceLiteral(std::size_t index, SqlLiteral value) { literals_[index] = std::move(value); }

  /// The text with "?" in the place of every literal.
  const std::string& ParameterText() const { return parameterText_; }
  std::span<const SqlLiteral> Literals() const { return literals_; }

  /// The exact text, every literal written by `dialect`. Throws HostError InvalidValue for a text with a NUL.
  std::string Render(const SqlDialect& dialect) const;

 private:
  std::string parameterText_;
  std::vector<SqlLiteral> literals_;
  std::vector<std::size_t> positions_;  // of each "?" in parameterText_
};

}  // namespace tolvan
