// The rates of the store's tax classes, read once for one run of an action.
#pragma once

#include <cstdint>
#include <unordered_map>

#include "host/DatabaseServices.h"
#include "services/Rate.h"

namespace tolvan {

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

}  // namespace tolvan
