// What an importer shows of its rows while they are reviewed: the list of a tab, its lines and the notes beside them.
#include <algorithm>
#include <limits>
#include <span>
#include <stdexcept>
#include <utility>

#include "base/NumberText.h"
#include "base/Text.h"
#include "import/PriceImporter.h"

namespace tolvan {
namespace {

constexpr std::string_view movedTitle = "Renglón movido a otra pestaña";
constexpr std::string_view movedText =
    "Esta acción hizo que el Item/Renglón se borrara de esta pestaña.\r\n\r\nPuede ubicar el Item/Renglón en las otras "
    "pestañas.\r\n\r\nPara agilizar este proceso, este mensaje aparecerá sólo esta vez.";

constexpr std::string_view blank = " ";

/// The tab (from 1) that shows the rows of an action.
int TabOf(RowAction action) {
  switch (action) {
    case RowAction::Create:
      return 1;
    case RowAction::Update:
      return 2;
    case RowAction::None:
      break;
  }
  return 3;
}

/// Cost and price are shown where they change, the difference where there is one.
std::optional<Currency> ShownAmount(const ReviewRow& row, std::size_t column) {
  if (column == review_column::cost && row.costChanged) return row.cost.value_or(Currency());
  if (column == review_column::price && row.priceChanged) return row.price.value_or(Currency());
  if (column == review_column::difference && row.difference != Currency()) return row.difference;
  return std::nullopt;
}

}  // namespace

Currency PriceDifference(Currency given, Currency stored) {
  try {
    return given - stored;
  } catch (const std::overflow_error&) {
    return Currency::FromTenThousandths(std::numeric_limits<std::int64_t>::max());
  }
}

void PriceImporter::IClaseImportar_PintarLV(ReviewList& list, std::int32_t row, int tab) {
  bool removed = false;
  {
    const ReviewListLock lock(list);
    if (row == 0) {
      list.Clear(*this);
      for (std::int32_t each = 1; each <= NumeroRenglones(); ++each) {
        if (TabOf(ActionOf(each)) == tab) list.Add(each);
      }
    } else if (IsRow(row)) {
      removed = PaintRow(list, row, tab);
      for (const std::int32_t other : alsoChanged_) static_cast<void>(PaintRow(list, other, tab));
    }
  }
  if (removed) TellRemoval();
}

/// Whether the row was taken away.
bool PriceImporter::PaintRow(ReviewList& list, std::int32_t row, int tab) const {
  const bool listed = list.Contains(row);
  const bool belongs = TabOf(ActionOf(row)) == tab;
  if (listed && belongs) list.Refresh(row);
  if (listed && !belongs) list.Remove(row);
  if (!listed && belongs) list.Add(row);
  return listed && !belongs;
}

void PriceImporter::TellRemoval() {
  if (std::exchange(removalTold_, true)) return;
  context_->UserDialogs().ShowMessage(MessageIcon::Information, movedTitle, movedText);
}

ReviewLine PriceImporter::LineOf(std::int32_t rowNumber) const {
  const ReviewRow row = RowAt(rowNumber);
  const auto amount = [&](std::size_t column) {
    const std::optional<Currency> shown = ShownAmount(row, column);
    if (!shown) return std::string(blank);
    return FormatMoney(*shown, context_->application.MoneyFormat(), context_->application.SeparatorText());
  };
  return {row.code,
          row.associated,
          ShowsFree(row) ? "Sí" : std::string(blank),
          row.description,
          amount(review_column::cost),
          amount(review_column::price),
          amount(review_column::difference),
          std::string(ActionText(row.action))};
}

std::string PriceImporter::NoteOf(std::int32_t row) const {
  const ReviewRow shown = RowAt(row);
  const std::string remarks = shown.AllRemarks();
  return remarks.empty() ? remarks : "Fila " + std::to_string(shown.sheetRow) + " del libro: " + remarks + ".";
}

std::string PriceImporter::ReadingNote() const {
  std::string note;
  if (end_.foreignHeadings) {
    const std::uint32_t last = Layout().firstRow - 1;
    note = "Los títulos de las filas " + std::to_string(last - 1) + " y " + std::to_string(last) +
           " no son los de la plantilla; compruebe que cada columna es la que se espera. ";
  }
  if (NumeroRenglones() == 0) {
    note += "No se leyó ningún renglón";
    if (!end_.Early())
      return note + ": la hoja no tiene datos desde la fila " + std::to_string(Layout().firstRow) + ".";
    note += ". ";
  }
  if (!end_.Early()) return std::string(TrimBlanks(note));
  note += "La lectura terminó en la fila " + std::to_string(end_.row) + " de la hoja: " + end_.why + ".";
  if (end_.following == 1) note += " Sigue 1 fila con datos que no se leyó.";
  if (end_.following > 1) note += " Siguen " + std::to_string(end_.following) + " filas con datos que no se leyeron.";
  return note;
}

std::string PriceImporter::NoteOfAll() const {
  std::int32_t count = 0;
  std::uint32_t first = 0;
  for (std::int32_t number = 1; number <= NumeroRenglones(); ++number) {
    if (ActionOf(number) == RowAction::None) continue;
    const ReviewRow row = RowAt(number);
    if (!row.remarks.empty() && ++count == 1) first = row.sheetRow;
  }
  std::string note = ReadingNote();
  if (count == 0) return note;
  if (!note.empty()) note += ' ';
  if (count == 1) return note + "El renglón de la fila " + std::to_string(first) + " tiene observaciones.";
  return note + std::to_string(count) +
         " renglones que se procesarán tienen observaciones; el primero es el de la fila " + std::to_string(first) +
         ".";
}

std::string PriceImporter::NoteOfChange() const {
  constexpr std::size_t mostNamed = 3;
  std::string note;
  for (const std::int32_t number : std::span(alsoChanged_).first(std::min(alsoChanged_.size(), mostNamed))) {
    const ReviewRow row = RowAt(number);
    note += "También cambió la fila " + std::to_string(row.sheetRow) + " (" + row.code +
            "): " + std::string(ActionText(row.action)) + ". ";
  }
  if (alsoChanged_.size() > mostNamed) note += "Y " + std::to_string(alsoChanged_.size() - mostNamed) + " más. ";
  return note;
}

std::string PriceImporter::UntoldFailure() const {
  return outcome_.shown ? std::string() : FailureText(outcome_);
}

std::optional<Currency> PriceImporter::AmountOf(std::int32_t row, std::size_t column) const {
  return ShownAmount(RowAt(row), column);
}

}  // namespace tolvan
