// The review of an import, between the importer and whatever shows it - a window, or the command: the rows and what is
// done with each, the list of a tab, the operations that a review asks for, and how an importer comes by one.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Currency.h"
#include "host/UserInterface.h"

namespace tolvan {

/// What an import does with a row of the workbook. The numbers are part of the importers' interface.
enum class RowAction : std::int16_t { None = 0, Update = 1, Create = 2 };

/// "No procesar", "Actualizar" or "Agregar".
constexpr std::string_view ActionText(RowAction action) {
  switch (action) {
    case RowAction::None:
      return "No procesar";
    case RowAction::Update:
      return "Actualizar";
    case RowAction::Create:
      return "Agregar";
  }
  return "";
}

/// A row of an import as review, report and command show it, whatever workbook it comes from. Prices include tax.
struct ReviewRow {
  std::int32_t number = 0;     ///< of the rows read, from 1
  std::uint32_t sheetRow = 0;  ///< in the worksheet
  std::string code{};
  std::string description{};
  std::string brand{};
  std::string department{};
  std::optional<Currency> cost{};   ///< nothing: not given
  std::optional<Currency> price{};  ///< nothing: not given
  RowAction action = RowAction::None;
  std::string associated{};  ///< the item that is updated; empty for a new one
  bool codeFree = false;     ///< no item has the row's code
  bool costChanged = false;
  bool priceChanged = false;
  Currency difference{};
  std::optional<Currency> previousCost{};   ///< nothing: there is none
  std::optional<Currency> previousPrice{};  ///< nothing: there is none
  std::string reason{};                     ///< why it is not processed, Spanish; empty when it is
  std::vector<std::string> remarks{};       ///< what of it is not taken into account, Spanish

  /// Reason and remarks as one text, "; " between.
  std::string AllRemarks() const {
    std::string all = reason;
    for (const std::string& remark : remarks) all += (all.empty() ? "" : "; ") + remark;
    return all;
  }
};

/// How much more is given for an item than it cost with tax until now. A difference that does not fit, which only a
/// stored price that no item can have brings about, is the largest amount.
Currency PriceDifference(Currency given, Currency stored);

/// The columns in their order: Excel, Tolvan, Libre, Descripción, Costo, PVP, Dif, Acción.
using ReviewLine = std::array<std::string, 8>;

namespace review_column {
inline constexpr std::size_t description = 3;
inline constexpr std::size_t cost = 4;
inline constexpr std::size_t price = 5;
inline constexpr std::size_t difference = 6;
}  // namespace review_column

/// Where the texts of a list come from.
class ReviewLineSource {
 public:
  virtual ~ReviewLineSource() = default;

  /// `row` is one of the rows of the list.
  virtual ReviewLine LineOf(std::int32_t row) const = 0;

  /// What there is to say about a row that its columns do not show, such as why it is not processed. Spanish; may be
  /// empty.
  virtual std::string NoteOf(std::int32_t /*row*/) const { return {}; }

  /// What there is to say of the list as a whole, such as rows of the file that were not read. Spanish; may be empty.
  virtual std::string NoteOfAll() const { return {}; }

  /// Which other rows the last change of a row changed too, and how; empty when none. Spanish.
  virtual std::string NoteOfChange() const { return {}; }

  /// Why the rows were last not applied, where no box has shown it yet; empty otherwise. Spanish.
  virtual std::string UntoldFailure() const { return {}; }

  /// The amount that the text of a column shows, for sorting; nothing where the column shows none.
  virtual std::optional<Currency> AmountOf(std::int32_t /*row*/, std::size_t /*column*/) const { return std::nullopt; }
};

/// The list as an importer fills it: line numbers only. The texts of a line are asked for when it is shown, so that a
/// list of any length is filled at once.
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

  /// Shows a line's present texts, or takes it away; nothing happens when it is not there.
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

/// What the review window knows of an importer. The operations stand in their slot order, which other programs rely on;
/// classes implement them under the names that begin with the interface's.
class IClaseImportar {
 public:
  /// Applies the reviewed rows, with a status display over `reviewWindow`. True only when they were committed.
  bool Iniciar(StatusWindow& reviewWindow) { return IClaseImportar_Iniciar(reviewWindow); }

  std::int32_t NumeroRenglones() const { return IClaseImportar_NumeroRenglones(); }
  std::int32_t NumeroNuevos() const { return IClaseImportar_NumeroNuevos(); }        ///< or not associated
  std::int32_t NumeroAsociados() const { return IClaseImportar_NumeroAsociados(); }  ///< with an existing item

  /// Fills the list with the rows of a tab (from 1) when `row` is 0; else brings that one row up to date.
  void PintarLV(ReviewList& list, std::int32_t row, int tab) { IClaseImportar_PintarLV(list, row, tab); }

  /// Which entries of the row menu are enabled, in their order; none for a row that does not exist.
  void DeterminarAtributosMenu(std::int32_t row, bool& associate, bool& dissociate, bool& setCode) const {
    IClaseImportar_DeterminarAtributosMenu(row, associate, dissociate, setCode);
  }

  /// Associates a row with an item, or with none when the code is empty. False, and no change, when it cannot be.
  bool AsignarItem(std::int32_t row, std::string_view item) { return IClaseImportar_AsignarItem(row, item); }

  /// Sets the code under which a row will be created. False, and no change, when it cannot be.
  bool AsignarNuevoItem(std::int32_t row, std::string_view code) { return IClaseImportar_AsignarNuevoItem(row, code); }

  virtual ~IClaseImportar() = default;

 private:
  virtual bool IClaseImportar_Iniciar(StatusWindow& reviewWindow) = 0;
  virtual std::int32_t IClaseImportar_NumeroRenglones() const = 0;
  virtual std::int32_t IClaseImportar_NumeroNuevos() const = 0;
  virtual std::int32_t IClaseImportar_NumeroAsociados() const = 0;
  virtual void IClaseImportar_PintarLV(ReviewList& list, std::int32_t row, int tab) = 0;
  virtual void IClaseImportar_DeterminarAtributosMenu(std::int32_t row, bool& associate, bool& dissociate,
                                                      bool& setCode) const = 0;
  virtual bool IClaseImportar_AsignarItem(std::int32_t row, std::string_view item) = 0;
  virtual bool IClaseImportar_AsignarNuevoItem(std::int32_t row, std::string_view code) = 0;
};

/// The review window as an importer sees it.
class ImportReview {
 public:
  virtual ~ImportReview() = default;

  virtual void SetClase(IClaseImportar& importer) = 0;

  /// Shows the importer's present counters.
  virtual void RefrescarSumario() = 0;

  virtual ReviewList& lvStatus() = 0;

  /// Returns when the window is closed.
  virtual void ShowModal() = 0;
};

/// Makes a review window. Never null.
using ImportReviewFactory = std::function<std::unique_ptr<ImportReview>()>;

}  // namespace tolvan
