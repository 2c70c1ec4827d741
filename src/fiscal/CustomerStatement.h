// The statement that puts a taxpayer on file unless its code is there already. The dialect writes its text once; for
// every further row only the literals change, so that a row costs no memory of its own. Where the engine takes many
// rows in one statement, that one is made here too.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "host/SqlStatement.h"

namespace tolvan {

struct CustomerRow {
  std::string_view code;  ///< digits, check digit included; also what reports show
  std::string_view name;  ///< UTF-8, at most 125 characters, no NUL
  int personeria = 0;     ///< 1 legal person, 0 natural person
};

class CustomerStatement {
 public:
  /// `active` is the value of Activo in every row. `dialect` must outlive the object.
  CustomerStatement(const SqlDialect& dialect, bool active);

  /// A statement to be filled.
  const SqlStatement& Blank() const { return blank_; }

  /// Makes `statement`, a copy of Blank, the one of this row.
  void Fill(SqlStatement& statement, const CustomerRow& row) const;

  /// Whether the engine has a statement for many rows.
  bool HasStatementForMany() const { return hasStatementForMany_; }

  /// That statement; it returns the codes of the new customers. At least one row, no code twice.
  SqlStatement ForMany(std::span<const CustomerRow> rows) const;

 private:
  std::optional<SqlStatement> TryForMany(std::span<const CustomerRow> rows) const;

  const SqlDialect* dialect_;
  bool active_;
  bool hasStatementForMany_ = false;
  SqlStatement blank_;
  std::vector<std::size_t> codePlaces_;
  std::vector<std::size_t> namePlaces_;
  std::vector<std::size_t> personeriaPlaces_;
};

}  // namespace tolvan
