#include "ui/frmStatusImportar.h"

#include <array>
#include <string>

#include "import/CellValues.h"
#include "import/ItemStatements.h"
#include "import/StoreTables.h"
#include "services/ComponentContext.h"
#include "services/ResourceTexts.h"

namespace tolvan {
namespace {

constexpr int rightButton = 2;
constexpr std::array<std::int32_t, 3> explanations{text_id::newItemsExplanation, text_id::updatedItemsExplanation,
                                                   text_id::unprocessedExplanation};
constexpr int unprocessedTab = 3;
constexpr std::string_view chooseLine = "Escoja un renglón para ver por qué no se procesa.";
constexpr std::string_view leaveQuestion =
    "Usted corrigió renglones a mano y no los ha importado. Si sale ahora, esas correcciones se pierden.\r\n\r\n"
    "¿Desea salir?";
constexpr std::string_view codeTitle = "Nuevo Código";
constexpr std::string_view codePrompt = "Establezca el código del nuevo Item (12 Caracteres Max, Sin Espacios)";

/// "3 renglones nuevos o sin asociar."
std::string SummaryLine(std::int32_t count, std::string_view adjective, std::string_view rest) {
  std::string line = std::to_string(count) + (count == 1 ? " renglon" : " renglones");
  line.append(adjective);
  if (count != 1 && !adjective.empty()) line += 's';
  return line.append(rest);
}

}  // namespace

void frmStatusImportar::RefrescarSumario() {
  view_->SetSummary(0, SummaryLine(importer_->NumeroRenglones(), "", " en total."));
  view_->SetSummary(1, SummaryLine(importer_->NumeroNuevos(), " nuevo", " o sin asociar."));
  view_->SetSummary(2, SummaryLine(importer_->NumeroAsociados(), " previamente asociado", "."));
}

void frmStatusImportar::ShowModal() {
  view_->SetExplanation(ResourceText(explanations.front()));
  view_->EnableAccept(false);
  lvStatus_ItemClick(0);
  view_->ShowUntilClosed();
}

void frmStatusImportar::tabFiltro_Click(int tab) {
  tab_ = tab;
  changeNote_.clear();
  importer_->PintarLV(view_->lvStatus(), 0, tab);
  view_->SetExplanation(ResourceText(explanations.at(static_cast<std::size_t>(tab) - 1)));
}

void frmStatusImportar::lvStatus_ItemClick(std::int32_t row) {
  const ReviewListModel& lines = view_->lvStatus();
  if (row > 0) return view_->SetNote(changeNote_ + lines.NoteOf(row));
  std::string note = changeNote_ + lines.NoteOfAll();
  if (tab_ == unprocessedTab && lines.Lines() > 0) note += (note.empty() ? "" : " ") + std::string(chooseLine);
  view_->SetNote(note);
}

void frmStatusImportar::lvStatus_MouseUp(int button, std::int32_t row) {
  if (button != rightButton || row <= 0) return;
  bool associate = false;
  bool dissociate = false;
  bool setCode = false;
  importer_->DeterminarAtributosMenu(row, associate, dissociate, setCode);
  view_->PopUpMenu(associate, dissociate, setCode);
}

bool frmStatusImportar::mnuRenglonR_Click(int entry, std::int32_t row) {
  if (row <= 0 || applying_) return false;
  std::array<bool, 3> enabled{};
  importer_->DeterminarAtributosMenu(row, enabled[0], enabled[1], enabled[2]);
  if (entry < 0 || entry > 2 || !enabled.at(static_cast<std::size_t>(entry))) return false;
  if (entry == 0) return AsociarConBusqueda(row);
  if (entry == 1) return Repaint(row, importer_->AsignarItem(row, ""));
  return AsksForCode(row);
}

bool frmStatusImportar::AsociarConBusqueda(std::int32_t row) {
  SqlStatement items("SELECT idItem FROM Items WHERE Oculto = ");
  const ReviewLine line = LineOf(row);
  const std::string subject = "Para el renglón «" + line[0] + "» " + line[review_column::description] + ", costo " +
                              line[review_column::cost] + ", PVP " + line[review_column::price];
  const std::optional<std::string> item = view_->PickItem(items.Boolean(false), subject);
  if (!item || item->empty()) return false;
  return Repaint(row, importer_->AsignarItem(row, *item));
}

bool frmStatusImportar::AsksForCode(std::int32_t row) {
  const std::optional<std::string> answer = context_->UserDialogs().AskText(codeTitle, codePrompt, LineOf(row)[0]);
  return answer && EstablecerCodigo(row, *answer);
}

bool frmStatusImportar::EstablecerCodigo(std::int32_t row, std::string_view answer) {
  const std::string code = CleanCode(answer, shortCodeLength);
  if (code.empty()) return false;
  try {
    DatabaseServices& database = context_->application.Database();
    const StoredCodes items = StoredCodes::OfItems(database);
    if (!database.OpenRecordset(CodeExistsStatement(items.SpellingOf(code)))->AtEnd()) {
      Warn("Este código " + code + " ya está registrado en la base de datos.");
      return false;
    }
  } catch (const HostError& error) {
    Warn(TextForPeople(error));
    return false;
  }
  return Repaint(row, importer_->AsignarNuevoItem(row, code));
}

bool frmStatusImportar::Repaint(std::int32_t row, bool changed) {
  if (!changed) return false;
  ++changes_;
  importer_->PintarLV(view_->lvStatus(), row, tab_);
  changeNote_ = view_->lvStatus().NoteOfChange();
  RefrescarSumario();
  return true;
}

/// Empty texts for a row that the list does not show.
ReviewLine frmStatusImportar::LineOf(std::int32_t row) const {
  const std::optional<std::size_t> line = view_->lvStatus().LineOfRow(row);
  return line ? view_->lvStatus().TextsOf(*line) : ReviewLine();
}

bool frmStatusImportar::bAceptar_Click() {
  // Applying lets window events through; a second click must not begin a second import.
  if (applying_) return false;
  applying_ = true;
  const bool applied = importer_->Iniciar(*view_);
  applying_ = false;
  if (!applied) {
    // What the importer has not shown itself.
    if (const std::string failure = view_->lvStatus().UntoldFailure(); !failure.empty()) Warn(failure);
    // The rows were classified again: the window shows what holds now.
    tabFiltro_Click(tab_);
    RefrescarSumario();
    return false;
  }
  ForgetFile();
  view_->CloseWindow();
  return true;
}

void frmStatusImportar::Warn(std::string_view text) const {
  context_->UserDialogs().ShowMessage(MessageIcon::Exclamation, context_->application.ProductName(), text);
}

void frmStatusImportar::bCancelar_Click() {
  if (applying_) return;
  const std::string product = context_->application.ProductName();
  if (changes_ == 0 || context_->UserDialogs().AskYesNo(product, leaveQuestion, false)) view_->CloseWindow();
}

bool frmStatusImportar::QueryUnload() {
  bCancelar_Click();
  return false;
}

void frmStatusImportar::ForgetFile() {
  const std::string failure = ChangeSettings(
      context_->settings, [](ImpExpSettings& settings) { settings.SetText(Setting::RutaUltimoArchivo, ""); });
  if (!failure.empty()) Warn(failure);
}

}  // namespace tolvan
