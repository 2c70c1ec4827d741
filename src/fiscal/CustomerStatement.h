// The statement that puts a taxpayer on file unless its code is there already. The dialect writes its text once; for
// every further row only the literals change, so that a row costs no memory of its own.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

#include "host/SqlDialect.h"

namespace tolvan {

struct CustomerRow {
  std::string_view code;  ///< digits, check digit included; also what reports show
  std::string_view name;  ///< UTF-8, at most 125 characters, no NUL
  int personeria = 0;     ///< 1 legal person, 0 natural person
};

class CustomerStatement {
 public:
  /// `active` is the value of Activo in every row.
  CustomerStatement(const SqlDialect& dialect, bool active);

  /// A statement to be filled.
  const SqlStatement& Blank() const { return blank_; }

  /// Makes `statement`, a copy of Blank, the one of this row.
  void Fill(SqlStatement& statement, const CustomerRow& row) const;

 private:
  SqlStatement blank_;
  std::vector<std::size_t> codePlaces_;
  std::vector<std::size_t> namePlaces_;
  std::vector<std::size_t> personeriaPlaces_;
};

}  // namespace tolvan
