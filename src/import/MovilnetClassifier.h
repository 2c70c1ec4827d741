// Decides what becomes of each row of the Movilnet list: items are found by the fingerprint of the line they came from,
// not by code, unless the user chose otherwise.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/DatabaseServices.h"
#include "host/SystemServices.h"
#include "host/UserInterface.h"
#include "import/ImportReview.h"
#include "import/MovilnetRow.h"
#include "import/StoreTables.h"

namespace tolvan {

struct MovilnetDecision {
  RowAction action = RowAction::None;
  std::string fingerprint{};
  std::string associated{};       ///< the item that the row updates; empty for a new item
  std::string itemDescription{};  ///< that item's; empty for a new item
  bool lost = false;              ///< the item that the user chose is not there any more
  bool codeTaken = false;
  std::optional<Currency> currentPrice{};  ///< with tax; 0 when the item has none, nothing for a new item
  std::optional<Currency> currentCost{};   ///< of the unit "DEF"; nothing where there is none
  Currency difference{};                   ///< of the prices with tax; 0 for a new item
  std::string reason{};                    ///< why the row is not processed, Spanish; empty when it is
};

class MovilnetClassifier {
 public:
  struct Store {
    DatabaseServices& database;
    const HashService& hashes;
    const StoredCodes& items;
    std::int32_t inventory;
    Rate generalRate;
    const Interruption& interruption;
  };

  /// What `store` refers to must outlive this object.
  explicit MovilnetClassifier(const Store& store) : store_(store) {}

  /// What the database says of each row; the actions are not settled yet. Throws HostError.
  std::vector<MovilnetDecision> LookUp(std::span<const MovilnetRow> rows) const;

  /// Sets action and reason of every row. Not processed are a line that the list held before, unless the user decided
  /// about it, a row whose item an earlier row updates, and a new row whose code is taken or an earlier row's. Settling
  /// again gives the same.
  static void Settle(std::span<const MovilnetRow> rows, std::span<MovilnetDecision> decisions);

 private:
  SqlStatement ItemStatement(const MovilnetRow& row, const MovilnetDecision& decision) const;
  void LookUpBlock(std::span<const MovilnetRow> rows, std::span<MovilnetDecision> decisions) const;
  void LookUpCosts(std::span<MovilnetDecision> decisions) const;
  void Associate(const MovilnetRow& row, const Recordset& item, MovilnetDecision& decision) const;

  Store store_;
};

}  // namespace tolvan
