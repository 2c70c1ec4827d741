// Applies decided changes to the host's tables, in blocks, inside a transaction that the caller holds. It begins,
// commits and rolls back nothing.
#pragma once

#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "host/DatabaseServices.h"
#include "import/ItemStatements.h"
#include "import/StoreTables.h"

namespace tolvan {

/// The failure of a row's step.
class RowFailure : public HostError {
 public:
  RowFailure(const HostError& error, std::size_t row) : HostError(error), row_(row) {}
  std::size_t Row() const noexcept { return row_; }  ///< of the import, from 1

 private:
  std::size_t row_;
};

class WriteBatch;

class ItemWriter {
 public:
  /// `database` must outlive this object.
  explicit ItemWriter(DatabaseServices& database) : database_(&database) {}

  /// Takes a change, and writes a full block. Throws HostError, RowFailure for the first row that fails; nothing may be
  /// written after that.
  void Take(ItemChange change);

  /// Writes what is left. Throws as above.
  void Flush();

 private:
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

  void UseStoredSpellings(ItemCreation& item);
  void LookUp();
  std::vector<Question> Questions() const;
  void Answer(const Question& question, const BatchResult& answer);
  void Append(WriteBatch& batch, const ItemCreation& item);
  static void Append(WriteBatch& batch, const ItemUpdate& item);

  DatabaseServices* database_;
  std::optional<Spellings> stored_;  // from the first creation on
  std::vector<ItemChange> block_;
  std::unordered_set<std::string> itemsInBlock_;
  std::unordered_set<std::string> brands_;       // known to exist
  std::unordered_set<std::string> departments_;  // made by this import
};

}  // namespace tolvan
