// Applies decided changes to the host's tables, in blocks, inside a transaction that the caller holds. It begins,
// commits and rolls back nothing.
#pragma once

#include <optional>
#include <string>
#include <unordered_set>
#include <variant>
#include <vector>

#include "host/DatabaseServices.h"
#include "import/ItemChanges.h"
#include "import/StoreTables.h"
#include "import/WriteBlock.h"

namespace tolvan {

class ItemWriter {
 public:
  /// `database` must outlive this object.
  explicit ItemWriter(DatabaseServices& database) : database_(&database) {}

  /// Take a change, and write a full block. Throw HostError, RowFailure for the first row that fails; nothing may be
  /// written after that.
  void Create(ItemCreation item);
  void Update(ItemUpdate item) { Take(std::move(item)); }

  /// Writes what is left. Throws as above.
  void Flush();

 private:
  using Change = std::variant<ItemCreation, ItemUpdate>;

  /// What must be known before a change can be written: whether its brand exists, or its item's principal unit.
  struct Question {
    std::size_t change = 0;  // its place in the block
    SqlStatement statement;
  };

  /// How the store writes codes that the engine does not find in another casing.
  struct Spellings {
    StoredCodes items;
    StoredCodes brands;
    StoredCodes departments;
  };

  void Take(Change change);
  void LookUp();
  std::vector<Question> Questions() const;
  void Answer(const Question& question, const BatchResult& answer);
  void Append(WriteBlock& block, const ItemCreation& item);
  static void Append(WriteBlock& block, const ItemUpdate& item);

  DatabaseServices* database_;
  std::optional<Spellings> stored_;  // from the first creation on
  std::vector<Change> block_;
  std::unordered_set<std::string> itemsInBlock_;
  std::unordered_set<std::string> brands_;       // known to exist
  std::unordered_set<std::string> departments_;  // made by this import
};

}  // namespace tolvan
