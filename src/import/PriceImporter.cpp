#include "import/PriceImporter.h"

#include <algorithm>
#include <span>
#include <stdexcept>
#include <utility>

#include "base/Text.h"

namespace tolvan {
namespace {

constexpr std::string_view permission = "importar-precios";

constexpr std::string_view noPermission =
    "No tiene permiso para realizar esta función. Favor consulte al personal técnico.";
constexpr std::string_view noApplication =
    "Error al conectar con Microsoft Excel, verifique que Excel está instalado en su sistema";
constexpr std::string_view wrongFormat = "El archivo tiene el formato incorrecto o bien está dañado";
constexpr std::string_view notFinished = "La operación no pudo concluirse";
constexpr std::size_t mostNamed = 10;

std::vector<std::string> Registered(DatabaseServices& database, std::span<const std::string> codes) {
  const StoredCodes stored = StoredCodes::OfItems(database);
  std::vector<std::string> found;
  for (std::size_t begin = 0; begin < codes.size(); begin += rowsPerBlock) {
    const std::span<const std::string> block = codes.subspan(begin, std::min(rowsPerBlock, codes.size() - begin));
    std::vector<SqlStatement> statements;
    for (const std::string& code : block) statements.push_back(CodeExistsStatement(stored.SpellingOf(code)));
    const std::vector<BatchResult> answers = RunWhole(database, statements);
    for (std::size_t index = 0; index < block.size(); ++index) {
      if (FoundRows(answers[index])) found.push_back(block[index]);
    }
  }
  return found;
}

/// Spanish: which of the `codes` that were to be created belong to items by now, because another program registered
/// them since the list was classified, and how to go on; empty when none does, or when the database cannot be asked.
std::string RegisteredSince(DatabaseServices& database, std::span<const std::string> codes) {
  std::vector<std::string> found;
  try {
    found = Registered(database, codes);
  } catch (const HostError&) {
    return {};  // the failure that led here is the one to report
  }
  if (found.empty()) return {};
  std::string names;
  for (std::size_t index = 0; index < std::min(found.size(), mostNamed); ++index) {
    names += (index == 0 ? "" : ", ") + found[index];
  }
  if (found.size() > mostNamed) names += " y " + std::to_string(found.size() - mostNamed) + " más";
  return "Otro programa registró mientras tanto: " + names +
         ". No se aplicó nada; repita la importación, que los tomará como Items ya registrados.";
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
  Forget();
  if (!Read(callingWindow) || !ClassifyRead()) return false;
  Review();
  return true;
}

void PriceImporter::Forget() {
  ForgetRows();
  alsoChanged_.clear();
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
                        [this](const SheetRow& row) { TakeRow(row); });
    return true;
  } catch (const WrongList& wrong) {
    Forget();
    return Fail(wrongFormat, wrong);
  } catch (const HostError& error) {
    Forget();
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
    if (ActionOf(row) != RowAction::None) writer.Take(FittingChangeOf(row, tables));
    status.Advance();
  }
  writer.Flush();
}

/// ChangeOf; an amount that does not fit becomes the failure of the row.
ItemChange PriceImporter::FittingChangeOf(std::int32_t row, const ApplyTables& tables) const {
  try {
    return ChangeOf(row, tables);
  } catch (const std::overflow_error&) {
    const HostError error(HostErrorKind::InvalidValue, "un importe calculado es demasiado grande");
    throw RowFailure(error, static_cast<std::size_t>(row));
  }
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

}  // namespace tolvan
