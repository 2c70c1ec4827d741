// Decides what is done with each row of a template workbook, from what the database holds at that moment. Deciding
// changes nothing: the same rows against the same database always give the same decisions.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/DatabaseServices.h"
#include "host/UserInterface.h"
#include "import/ImportReview.h"
#include "import/ItemStatements.h"
#include "import/StoreTables.h"
#include "import/TemplateRow.h"

namespace tolvan {

struct TemplateDecision {
  RowAction action = RowAction::None;
  bool looked = false;       ///< the row could be looked up
  bool found = false;        ///< an item with a principal unit in the inventory has the row's code
  std::string associated{};  ///< that item's code when it will be updated
  std::string databaseDescription{};
  std::optional<Currency> previousCost{};
  std::optional<Currency> previousPrice{};  ///< with tax
  Currency difference{};                    ///< of the prices with tax; 0 when not compared
  Rate rate{};                              ///< of the tax inside the row's prices
  bool codeFree = false;
  bool costChanged = false;
  bool priceChanged = false;
  bool unitUpdate = false;      ///< the alternate unit is written; the two flags say which part
  std::string alternateUnit{};  ///< of an item that is updated, as it is stored
  bool unitPrice = false;
  bool unitCost = false;
  std::string reason{};  ///< why it is not processed, Spanish; empty when it is
  Remarks remarks{};     ///< what of it is not taken into account
};

class TemplateClassifier {
 public:
  struct Store {
    DatabaseServices& database;
    std::int32_t inventory;
    const TaxTable& taxes;
    const DepartmentTable& departments;
    const StoredCodes& items;
    const Interruption& interruption;
  };

  /// What `store` refers to must outlive this object.
  TemplateClassifier(const Store& store, bool appliesAlternateUnit)
      : store_(store), appliesAlternateUnit_(appliesAlternateUnit) {}

  /// One decision for each row. Throws HostError.
  std::vector<TemplateDecision> Classify(std::span<const TemplateRow> rows) const;

 private:
  void ClassifyBlock(std::span<const TemplateRow> rows, std::span<TemplateDecision> decisions) const;
  /// Whether the item's units are to be asked.
  bool Compare(const TemplateRow& row, const Recordset& found, TemplateDecision& decision) const;
  static void Compare(const TemplateRow& row, const ItemRecord& item, TemplateDecision& decision);
  void DecideNew(std::span<const TemplateRow> rows, std::span<TemplateDecision> decisions,
                 std::span<const std::size_t> unknown) const;
  void DecideNew(const TemplateRow& row, TemplateDecision& decision) const;
  void CheckUnits(std::span<const TemplateRow> rows, std::span<TemplateDecision> decisions,
                  std::span<const std::size_t> asked) const;

  Store store_;
  bool appliesAlternateUnit_;
};

}  // namespace tolvan
