#include "cli/CommandReview.h"

#include <ostream>

#include "base/Text.h"
#include "import/ImportReport.h"
#include "import/StoreTables.h"

namespace tolvan {
namespace {

constexpr std::string_view question = "¿Ya revisó los renglones y desea proceder con la importación?";

}  // namespace

CommandReview::CommandReview(CommandCall& call, const ComponentContext& context, SpreadsheetApplication& spreadsheets,
                             PriceImporter& importer, const ReviewPlan& plan, ReviewResult& result,
                             frmStatusImportar& form)
    : call_(call),
      context_(context),
      spreadsheets_(spreadsheets),
      importer_(importer),
      plan_(plan),
      result_(result),
      status_(call.Messages(), call.MessagesColumns(), call.ShowsProgress()),
      form_(form) {}

void CommandReview::ShowUntilClosed() {
  Review();
  if (call_.WantsJson()) result_.document = ReviewJson(importer_, result_.applied, ForTerminal(result_.failure));
}

void CommandReview::Review() {
  if (importer_.NumeroRenglones() == 0) return Fail(importer_.ReadingNote());
  if (!MakeChanges()) return;
  if (!call_.WantsJson()) {
    const auto columns = call_.OutColumns() ? call_.OutColumns()() : std::nullopt;
    PrintReview(call_.Out(), importer_, columns);
    summary_.clear();
    form_.RefrescarSumario();
    const std::string note = importer_.NoteOfAll();
    if (!note.empty()) summary_.push_back(ForTerminal(note));
    for (const std::string& text : summary_) {
      for (const std::string& line : WrapAtWords(text, columns.value_or(text.size() + 1))) call_.Out() << line << '\n';
    }
    call_.Out().flush();
  } else if (importer_.End().foreignHeadings) {
    call_.PrintMessage(importer_.ReadingNote());
  }
  if (plan_.simulate) return WriteReport("No se pudo escribir el informe");
  if (!call_.Out()) {
    Fail("No se aplicó nada: los renglones no se pudieron mostrar");
  } else if (WantsToGoOn()) {
    Proceed();
  } else {
    result_.declined = true;
  }
}

bool CommandReview::MakeChanges() {
  for (const RowChange& change : plan_.changes) {
    const std::int32_t number = NumberOf(change);
    if (number == 0) {
      Fail("No se aplicó nada: no hay un renglón " + std::string(change.onSheet ? "en la fila " : "") +
           std::to_string(change.row) + (change.onSheet ? " de la hoja" : "") + "; se leyeron " +
           std::to_string(importer_.NumeroRenglones()));
      return false;
    }
    if (!Change(change, number)) {
      const bool associates = change.kind == RowChange::Kind::Associate;
      Fail("No se aplicó nada: el " + NameOf(number) + " no admite " + (associates ? "--asociar" : "--codigo") +
           " con el valor \"" + change.value + "\"");
      return false;
    }
    // A row has two numbers; a user who gave the wrong one sees it here.
    call_.PrintMessage("Se cambió el " + NameOf(number) + ".");
  }
  return true;
}

/// The row, counted as it was read; 0 when there is none.
std::int32_t CommandReview::NumberOf(const RowChange& change) const {
  const std::int32_t rows = importer_.NumeroRenglones();
  if (!change.onSheet) return change.row <= rows ? change.row : 0;
  for (std::int32_t number = 1; number <= rows; ++number) {
    if (importer_.RowAt(number).sheetRow == static_cast<std::uint32_t>(change.row)) return number;
  }
  return 0;
}

std::string CommandReview::NameOf(std::int32_t number) const {
  const ReviewRow row = importer_.RowAt(number);
  return "renglón " + std::to_string(number) + " (fila " + std::to_string(row.sheetRow) + " de la hoja, «" +
         row.description + "»)";
}

bool CommandReview::Change(const RowChange& change, std::int32_t number) {
  if (change.kind == RowChange::Kind::SetCode) {
    bool associate = false;
    bool dissociate = false;
    bool setCode = false;
    importer_.DeterminarAtributosMenu(number, associate, dissociate, setCode);
    return setCode && form_.EstablecerCodigo(number, change.value);
  }
  if (change.value.empty()) return form_.mnuRenglonR_Click(1, number);
  itemToPick_ = change.value;
  return form_.mnuRenglonR_Click(0, number);
}

std::optional<std::string> CommandReview::PickItem(const SqlStatement& items, std::string_view) {
  DatabaseServices& database = context_.application.Database();
  const StoredCodes stored = StoredCodes::OfItems(database);
  SqlStatement search = items;
  const auto found = database.OpenRecordset(search.Sql(" AND idItem = ").Text(stored.SpellingOf(itemToPick_)));
  if (found->AtEnd()) return std::nullopt;
  return std::string(found->Text(0));
}

bool CommandReview::WantsToGoOn() {
  // With --json nobody has seen the rows, so nobody is asked about them.
  if (call_.WantsJson()) return true;
  return context_.UserDialogs().AskYesNo(context_.application.ProductName(), question, true);
}

void CommandReview::Proceed() {
  form_.Check1_Click(true);
  result_.applied = form_.bAceptar_Click();
  if (!result_.applied) {
    result_.failure = FailureText(importer_.Outcome());  // the form has told it
    return;
  }
  WriteReport("La importación se aplicó, pero no se pudo escribir el informe");
}

void CommandReview::WriteReport(const std::string& onFailure) {
  if (plan_.reportPath.empty()) return;
  try {
    WriteImportReport(importer_, context_.Files(), spreadsheets_, plan_.reportPath);
  } catch (const HostError& error) {
    Fail(onFailure + "\r\n" + TextForPeople(error));
  }
}

void CommandReview::Fail(const std::string& text) {
  result_.failure = result_.untold = text;
}

}  // namespace tolvan
