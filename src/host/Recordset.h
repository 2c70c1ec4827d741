// A forward walk over the rows of a query. A recordset just opened stands on its first row, or is at its end.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "host/FieldValue.h"

namespace tolvan {

class Recordset {
 public:
  virtual ~Recordset() = default;

  /// True behind the last row; then there are no values to read.
  virtual bool AtEnd() const = 0;

  /// Goes to the next row. Must not be called at the end. Throws HostError when the database fails on the way; the
  /// recordset is then at its end.
  virtual void MoveNext() = 0;

  virtual std::size_t FieldCount() const = 0;

  /// The place of a column, found without regard to case; nothing when there is none.
  virtual std::optional<std::size_t> FindField(std::string_view name) const = 0;

  /// The value of the field in the current row. `index` is below FieldCount.
  virtual FieldValue Value(std::size_t index) const = 0;

  /// TextOf(Value(index)), without a copy where the provider can. Valid until the next call on this recordset.
  virtual std::string_view Text(std::size_t index) const = 0;

  /// By name. Throws HostError Statement when there is no such column.
  FieldValue Value(std::string_view name) const { return Value(RequireField(name)); }

  /// FindField, or HostError Statement.
  std::size_t RequireField(std::string_view name) const;
};

}  // namespace tolvan
