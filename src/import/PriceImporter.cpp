#include "import/PriceImporter.h"

#include <algorithm>
#include <span>
#include <stdexcept>
#include <utility>

#include "base/NumberText.h"
#include "base/Text.h"
#include "import/RegisteredSince.h"

namespace tolvan {
namespace {

constexpr std::string_view permission = "importar-precios";

constexpr std::string_view noPermission =
    "No tiene permiso para realizar esta función. Favor consulte al personal técnico.";
constexpr std::string_view noApplication =
    "Error al conectar con Microsoft Excel, verifique que Excel está instalado en su sistema";
constexpr std::string_view wrongFormat = "El archivo tiene el formato incorrecto o bien está dañado";
constexpr std::string_view notFinished = "La operación no pudo concluirse";
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

/// What `make` returns; an amount that does not fit becomes the failure of the row.
template <class Make>
auto ForRow(std::int32_t row, const Make& make) {
  try {
    return make();
  } catch (const std::overflow_error&) {
    const HostError error(HostErrorKind::InvalidValue, "un importe calculado es demasiado grande");
    throw RowFailure(error, static_cast<std::size_t>(row));
  }
}

/// Cost and price are shown where they change, the difference where there is one.
std::optional<Currency> ShownAmount(const ReviewRow& row, std::size_t column) {
  if (column == review_column::cost && row.costChanged) return row.cost.value_or(Currency());
  if (column == review_column::price && row.priceChanged) return row.price.value_or(Currency());
  if (column == review_column::difference && row.difference != Currency()) return row.difference;
  return std::nullopt;
}

std::string SummaryText(const ImportOutcome& outcome) {
  std::string text = "Operación realizada con éxito: \r\n\r\n";
  text += "Nuevos Items: " + std::to_string(outcome.created) + "\r\n";
  text += "Precios Actualizados: " + std::to_string(outcome.updated) + "\r\n";
  return text + "Renglones no procesados: " + std::to_string(outcome.unprocessed);
}

}  // namespace

std::string FailureText(const ImportOutcome& outcome) {
  if (outcome.cause.empty()) return outcome.failure;
  return outcome.failure + std::string(lineBreak) + outcome.cause;
}

PriceImporter::PriceImporter(const ComponentContext& context, ImportTools tools)
    : context_(&context), tools_(std::move(tools)) {}

void PriceImporter::Warn(std::string_view text) const {
  context_->UserDialogs().ShowMessage(MessageIcon::Exclamation, context_->application.ProductName(), text);
}

bool PriceImporter::Procesar(StatusWindow& callingWindow) {
  outcome_ = {};
  ForgetRows();
  if (!Read(callingWindow) || !ClassifyRead()) return false;
  Review();
  return true;
}

bool PriceImporter::Read(StatusWindow& callingWindow) {
  try {
    tools_.spreadsheets.Start();
  } catch (const HostError& error) {
    return Fail(noApplication, error);
  }
  try {
    const auto status = callingWindow.OpenStatus();
    end_ = ReadDataRows(tools_.spreadsheets, path_, Layout(), UserInterruption(), *status,
                        [this](const SheetRow& row) { return TakeRow(row); });
    return true;
  } catch (const WrongList& wrong) {
    ForgetRows();
    return Fail(wrongFormat, wrong);
  } catch (const HostError& error) {
    ForgetRows();
    if (error.Kind() != HostErrorKind::Interrupted) return Fail(wrongFormat, error);
    return FailSilently(error);
  }
}

bool PriceImporter::ClassifyRead() {
  try {
    Classify(DepartmentTable::Load(Database()), TaxTable::Load(Database()));
    return true;
  } catch (const HostError& error) {
    return FailSilently(error);
  }
}

void PriceImporter::Review() {
  const std::unique_ptr<ImportReview> review = tools_.review();
  review->SetClase(*this);
  review->RefrescarSumario();
  PintarLV(review->lvStatus(), 0, 1);
  review->ShowModal();
}

bool PriceImporter::IClaseImportar_Iniciar(StatusWindow& reviewWindow) {
  outcome_ = {};
  if (!context_->application.HasPermission(permission)) {
    Refuse(context_->application.ProductName(), noPermission);
    return false;
  }
  ApplyTables tables;
  if (!Prepare(tables)) return false;
  ClassifyAgain(tables);
  return Apply(reviewWindow, tables);
}

bool PriceImporter::Prepare(ApplyTables& tables) {
  try {
    if (!MayApply()) return false;
    tables.departments = DepartmentTable::Load(Database());
    tables.foreignFactor = LoadForeignFactor(Database());
    tables.taxes = TaxTable::Load(Database());
    return true;
  } catch (const HostError& error) {
    return FailSilently(error);
  }
}

void PriceImporter::ClassifyAgain(const ApplyTables& tables) {
  try {
    Classify(tables.departments, tables.taxes);
  } catch (const HostError&) {
    // Deliberately not tested: whether the import goes on depends only on the start of the transaction. The decisions
    // that the user has seen stand.
  }
}

bool PriceImporter::Apply(StatusWindow& reviewWindow, const ApplyTables& tables) {
  try {
    const auto transaction = Database().BeginTransaction();
    const auto status = reviewWindow.OpenStatus();
    ApplyRows(*status, tables);
    status->SetText("Finalizando transacción");
    transaction->Commit();
  } catch (const HostError& error) {
    const std::string since = error.Kind() == HostErrorKind::Constraint ? RegisteredMeanwhile() : std::string();
    if (since.empty()) return Fail(notFinished, error);
    return Fail(notFinished, std::runtime_error(since));
  } catch (const std::exception& error) {
    return Fail(notFinished, error);
  }
  outcome_.applied = true;
  CountActions();
  context_->UserDialogs().ShowMessage(MessageIcon::Information, context_->application.ProductName(),
                                      SummaryText(outcome_));
  return true;
}

void PriceImporter::ApplyRows(StatusDisplay& status, const ApplyTables& tables) {
  const std::int32_t rows = NumeroRenglones();
  status.SetText("Realizando transacción");
  status.SetRange(rows);
  ItemWriter writer(Database());
  for (std::int32_t row = 1; row <= rows; ++row) {
    if (UserInterruption().Requested()) throw HostError(HostErrorKind::Interrupted, "");
    const RowAction action = ActionOf(row);
    if (action == RowAction::Create) writer.Create(ForRow(row, [&] { return CreationOf(row, tables); }));
    if (action == RowAction::Update) writer.Update(ForRow(row, [&] { return UpdateOf(row, tables); }));
    status.Advance();
  }
  writer.Flush();
}

std::string PriceImporter::RegisteredMeanwhile() const {
  std::vector<std::string> created;
  for (std::int32_t row = 1; row <= NumeroRenglones(); ++row) {
    if (ActionOf(row) == RowAction::Create) created.push_back(RowAt(row).code);
  }
  return RegisteredSince(Database(), created);
}

void PriceImporter::CountActions() {
  for (std::int32_t row = 1; row <= NumeroRenglones(); ++row) {
    switch (ActionOf(row)) {
      case RowAction::Create:
        ++outcome_.created;
        break;
      case RowAction::Update:
        ++outcome_.updated;
        break;
      case RowAction::None:
        ++outcome_.unprocessed;
        break;
    }
  }
}

void PriceImporter::Refuse(std::string_view title, std::string_view text) {
  outcome_.failure = text;
  outcome_.shown = true;
  context_->UserDialogs().ShowMessage(MessageIcon::Exclamation, title, text);
}

bool PriceImporter::Fail(std::string_view text, const std::exception& cause) {
  outcome_.failure = text;
  outcome_.cause = Explain(cause);
  outcome_.shown = true;
  Warn(FailureText(outcome_));
  return false;
}

bool PriceImporter::FailSilently(const HostError& error) {
  outcome_.failure = Explain(error);
  return false;
}

std::string PriceImporter::Explain(const std::exception& cause) const {
  const auto* error = dynamic_cast<const HostError*>(&cause);
  if (error == nullptr) return cause.what();
  // No row is to blame for it, however far the engine had come.
  if (error->Kind() == HostErrorKind::Interrupted) {
    return TextForPeople(HostError(HostErrorKind::Interrupted, "")) + ". No se cambió nada.";
  }
  const auto* row = dynamic_cast<const RowFailure*>(error);
  if (row == nullptr) return TextForPeople(*error);
  const ReviewRow shown = RowAt(static_cast<std::int32_t>(row->Row()));
  return "Fila " + std::to_string(shown.sheetRow) + " del libro, código " + shown.code + ": " + TextForPeople(*error);
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
      for (const std::int32_t other : AlsoChanged()) static_cast<void>(PaintRow(list, other, tab));
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
  const std::vector<std::int32_t> changed = AlsoChanged();
  std::string note;
  for (const std::int32_t number : std::span(changed).first(std::min(changed.size(), mostNamed))) {
    const ReviewRow row = RowAt(number);
    note += "También cambió la fila " + std::to_string(row.sheetRow) + " (" + row.code +
            "): " + std::string(ActionText(row.action)) + ". ";
  }
  if (changed.size() > mostNamed) note += "Y " + std::to_string(changed.size() - mostNamed) + " más. ";
  return note;
}

std::optional<Currency> PriceImporter::AmountOf(std::int32_t row, std::size_t column) const {
  return ShownAmount(RowAt(row), column);
}

}  // namespace tolvan
