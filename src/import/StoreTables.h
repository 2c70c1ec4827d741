// What an import reads of the store's small tables before it looks at any row: the rates of taxes and of the foreign
// currency, the departments, and the spelling of the codes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/Currency.h"
#include "host/DatabaseServices.h"

namespace tolvan {

/// A fraction or factor with eight decimals, never negative: a tax rate or a conversion factor. The one place where a
/// price with tax is made from a net price and the reverse: what a template is filled with and what a workbook is
/// compared with both come from here, so that a filled template that is imported back changes nothing.
class Rate {
 public:
  /// Zero.
  constexpr Rate() = default;

  /// Rounded to eight decimals. Nothing for what is no number, negative or from 10,000,000 on.
  static std::optional<Rate> Of(const FieldValue& value);

  constexpr bool IsZero() const { return count_ == 0; }

  /// The price with this rate added, and the net price inside a price with tax; each rounded once, half to even.
  /// Throw std::overflow_error when the result does not fit.
  Currency WithTax(Currency net) const;
  Currency WithoutTax(Currency withTax) const;

  /// amount / factor, half to even. Throws std::overflow_error, and std::domain_error when this is zero.
  Currency Divide(Currency amount) const;

 private:
  explicit constexpr Rate(std::int64_t count) : count_(count) {}

  std::int64_t count_ = 0;  // hundred-millionths
};

/// The rates of the store's tax classes, read once for one run of an action.
class TaxTable {
 public:
  /// No taxes: every rate is zero, and new items are of class 1.
  TaxTable() = default;

  /// Reads table Impuestos. Throws HostError, kind InvalidValue for a rate that is no fraction.
  static TaxTable Load(DatabaseServices& database);

  /// The rate of a class; zero for a class that the table does not hold.
  Rate RateOf(std::int64_t taxClass) const;

  /// RateOf, or zero for an exempt item.
  Rate RateOf(std::int64_t taxClass, bool exempt) const { return exempt ? Rate() : RateOf(taxClass); }

  Rate GeneralRate() const { return RateOf(generalClass_); }
  std::int64_t GeneralClass() const { return generalClass_; }

 private:
  std::unordered_map<std::int64_t, Rate> rates_;
  std::int64_t generalClass_ = 1;
};

class DepartmentTable {
 public:
  /// Throws HostError.
  static DepartmentTable Load(DatabaseServices& database);

  bool Contains(std::string_view department) const;

  /// False for a department that the table does not hold.
  bool RequiresSerials(std::string_view department) const;

 private:
  std::unordered_map<std::string, bool> requiresSerials_;  // by upper-cased code
};

/// How many units of the store's currency one unit of the foreign currency costs, never zero; of the first foreign
/// currency where there are several. Throws HostError, kind InvalidValue when no foreign currency is registered or its
/// factor is unusable.
Rate LoadForeignFactor(DatabaseServices& database);

/// Codes in another casing. The engines compare the codes of items, brands and departments without regard to case, but
/// SQLite does so for ASCII letters only, and its order of keys cannot be changed without harm to the other programs
/// that write the same file. So the codes that it would miss are looked for here; see docs/importacion.md.
class StoredCodes {
 public:
  /// No codes: every one is its own spelling.
  StoredCodes() = default;

  /// Reads a column of codes where the engine needs it. Throw HostError.
  static StoredCodes OfItems(DatabaseServices& database) { return Load(database, "Items", "idItem"); }
  static StoredCodes OfBrands(DatabaseServices& database) { return Load(database, "Marcas", "idMarca"); }

  static StoredCodes OfDepartments(DatabaseServices& database) {
    return Load(database, "Departamentos", "idDepartamento");
  }

  /// The code to ask the engine for: the stored one that is `code` in another casing, or else `code` itself. It points
  /// into `code` or this object.
  std::string_view SpellingOf(std::string_view code) const;

 private:
  static StoredCodes Load(DatabaseServices& database, std::string_view table, std::string_view column);

  std::unordered_map<std::string, std::vector<std::string>> byUpperCase_;  // those with letters beyond ASCII
};

}  // namespace tolvan
