// The list of the review window as an importer fills it: line numbers only. The texts of a line are asked for when it
// is shown, so that a list of any length is filled at once.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "base/Currency.h"

namespace tolvan {

/// The columns in their order: Excel, Tolvan, Libre, Descripción, Costo, PVP, Dif, Acción.
using ReviewLine = std::array<std::string, 8>;

namespace review_column {
inline constexpr std::size_t description = 3;
inline constexpr std::size_t cost = 4;
inline constexpr std::size_t price = 5;
inline constexpr std::size_t difference = 6;
}  // namespace review_column

class ReviewLineSource {
 public:
  virtual ~ReviewLineSource() = default;

  /// `row` is one of the rows of the list.
  virtual ReviewLine LineOf(std::int32_t row) const = 0;

  /// What there is to say of a row beside its columns, such as why it is not processed. Spanish; may be empty.
  virtual std::string NoteOf(std::int32_t /*row*/) const { return {}; }

  /// What there is to say of the list as a whole, such as rows of the file that were not read. Spanish; may be empty.
  virtual std::string NoteOfAll() const { return {}; }

  /// Which other rows the last change of a row changed too, and how; empty when none. Spanish.
  virtual std::string NoteOfChange() const { return {}; }

  /// The amount behind the text of a column, for sorting; nothing where the column shows none.
  virtual std::optional<Currency> AmountOf(std::int32_t /*row*/, std::size_t /*column*/) const { return std::nullopt; }
};

class ReviewList {
 public:
  virtual ~ReviewList() = default;

  /// Between the two nothing is drawn.
  virtual void LockUpdates() = 0;
  virtual void UnlockUpdates() noexcept = 0;

  /// Empties the list and takes the texts of what is added from `source`, which outlives its use here.
  virtual void Clear(const ReviewLineSource& source) = 0;

  /// Adds the line of a row that is not there, in the order of the rows. Its key is KeyOf(row).
  virtual void Add(std::int32_t row) = 0;

  /// Shows a line's texts anew, or takes it away; nothing happens when it is not there.
  virtual void Refresh(std::int32_t row) = 0;
  virtual void Remove(std::int32_t row) = 0;
  virtual bool Contains(std::int32_t row) const = 0;

  /// "_" and the number, so that a key never begins with a digit.
  static std::string KeyOf(std::int32_t row) { return "_" + std::to_string(row); }
};

/// Holds a list's updates while it lives.
class ReviewListLock {
 public:
  explicit ReviewListLock(ReviewList& list) : list_(list) { list_.LockUpdates(); }
  ~ReviewListLock() { list_.UnlockUpdates(); }
  ReviewListLock(const ReviewListLock&) = delete;
  ReviewListLock& operator=(const ReviewListLock&) = delete;

 private:
  ReviewList& list_;
};

}  // namespace tolvan
