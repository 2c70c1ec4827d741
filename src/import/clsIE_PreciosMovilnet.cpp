#include "import/clsIE_PreciosMovilnet.h"

#include <algorithm>
#include <array>

#include "base/Text.h"
#include "import/CellValues.h"

namespace tolvan {
namespace {

/// The departments could not be looked up, so that nothing was begun.
constexpr std::string_view notCompleted = "No se pudo completar la operación";
constexpr std::array<std::string_view, 2> requiredDepartments{"CDMA", "GSM"};

constexpr std::string_view departmentsTitle = "Falta registrar departamentos";
constexpr std::string_view departmentsText =
    "Para proceder, debe estar registrados los departamentos CDMA y GSM para los correspondientes equipos.\r\n\r\nAbra "
    "otro Tolvan y utilice la ficha Departamentos para crear el o los que falten";
constexpr std::string_view duplicateTitle = "Código duplicado";
constexpr std::string_view duplicateText = "Este código ya aparece listado, no pueden establecerse códigos duplicados";

bool IsAssociated(const MovilnetDecision& decision) {
  return !decision.associated.empty();
}

}  // namespace

std::int32_t clsIE_PreciosMovilnet::IClaseImportar_NumeroNuevos() const {
  return NumeroRenglones() - NumeroAsociados();
}

std::int32_t clsIE_PreciosMovilnet::IClaseImportar_NumeroAsociados() const {
  return CountDecisions(IsAssociated);
}

void clsIE_PreciosMovilnet::IClaseImportar_DeterminarAtributosMenu(std::int32_t row, bool& associate, bool& dissociate,
                                                                   bool& setCode) const {
  associate = dissociate = setCode = false;
  if (!IsRow(row)) return;
  dissociate = IsAssociated(DecisionOf(row));
  // Also for a row that is not processed because of its code: giving it another one is the way out.
  associate = setCode = !dissociate;
}

bool clsIE_PreciosMovilnet::IClaseImportar_AsignarItem(std::int32_t row, std::string_view item) {
  if (!IsRow(row)) return false;
  MovilnetRow changed = ReadRow(row);
  changed.chosenItem = item;
  return ChangeRow(row, std::move(changed));
}

bool clsIE_PreciosMovilnet::IClaseImportar_AsignarNuevoItem(std::int32_t row, std::string_view code) {
  if (!IsRow(row) || code.empty()) return false;
  const MovilnetRow& own = ReadRow(row);
  const bool listed = std::any_of(rows_.begin(), rows_.end(), [&](const MovilnetRow& other) {
    return &other != &own && EqualIgnoringCase(other.code, code);
  });
  if (listed) {
    Context().UserDialogs().ShowMessage(MessageIcon::Exclamation, duplicateTitle, duplicateText);
    return false;
  }
  MovilnetRow changed = own;
  changed.code = code;
  changed.codeChosen = true;
  return ChangeRow(row, std::move(changed));
}

bool clsIE_PreciosMovilnet::ChangeRow(std::int32_t row, MovilnetRow changed) {
  const auto index = static_cast<std::size_t>(row) - 1;
  std::vector<MovilnetDecision> decision;
  try {
    decision = Classifier().LookUp(std::span(&changed, 1));
  } catch (const HostError& error) {
    Warn(TextForPeople(error));
    return false;
  }
  if (decision.front().lost) return false;
  const std::vector<MovilnetDecision> before = decisions_;
  rows_[index] = std::move(changed);
  decisions_[index] = std::move(decision.front());
  MovilnetClassifier::Settle(rows_, decisions_);
  NoteChanges(row, before);
  return true;
}

/// What is settled among the rows may change others: of two with one code the second is not processed.
void clsIE_PreciosMovilnet::NoteChanges(std::int32_t row, const std::vector<MovilnetDecision>& before) {
  std::vector<std::int32_t> changed;
  for (std::int32_t other = 1; other <= NumeroRenglones(); ++other) {
    const MovilnetDecision& then = before[static_cast<std::size_t>(other) - 1];
    const MovilnetDecision& now = DecisionOf(other);
    if (other != row && (then.action != now.action || then.reason != now.reason)) changed.push_back(other);
  }
  SetAlsoChanged(std::move(changed));
}

MovilnetClassifier clsIE_PreciosMovilnet::Classifier() const {
  return MovilnetClassifier({.database = Database(),
                             .hashes = Tools().hashes,
                             .items = items_,
                             .inventory = Context().application.InventoryFlag(),
                             .generalRate = generalRate_,
                             .interruption = UserInterruption()});
}

void clsIE_PreciosMovilnet::Classify(const DepartmentTable&, const TaxTable& taxes) {
  generalRate_ = taxes.GeneralRate();
  items_ = StoredCodes::OfItems(Database());
  std::vector<MovilnetDecision> decisions = Classifier().LookUp(rows_);
  MovilnetClassifier::Settle(rows_, decisions);
  decisions_ = std::move(decisions);
}

bool clsIE_PreciosMovilnet::MayApply() {
  try {
    for (const std::string_view department : requiredDepartments) {
      SqlStatement statement("SELECT idDepartamento FROM Departamentos WHERE idDepartamento = ");
      if (!Database().OpenRecordset(statement.Text(department))->AtEnd()) continue;
      Refuse(departmentsTitle, departmentsText);
      return false;
    }
    return true;
  } catch (const HostError& error) {
    return Fail(notCompleted, error);
  }
}

ReviewRow clsIE_PreciosMovilnet::RowAt(std::int32_t number) const {
  const MovilnetRow& row = ReadRow(number);
  const MovilnetDecision& decision = DecisionOf(number);
  ReviewRow shown{.number = number, .sheetRow = row.sheetRow};
  shown.code = row.code;
  shown.description = row.description;
  shown.brand = row.brandCode;
  shown.department = row.department;
  shown.cost = row.cost.value;
  shown.price = row.price.value;
  shown.action = decision.action;
  shown.associated = decision.associated;
  shown.codeFree = !decision.codeTaken;
  const bool associated = IsAssociated(decision);
  shown.costChanged = !associated || decision.currentCost != row.cost.value;
  shown.priceChanged = !associated || decision.difference != Currency();
  shown.difference = decision.difference;
  shown.previousCost = decision.currentCost;
  shown.previousPrice = decision.currentPrice;
  shown.reason = decision.reason;
  return shown;
}

ItemChange clsIE_PreciosMovilnet::ChangeOf(std::int32_t number, const ApplyTables& tables) const {
  if (DecisionOf(number).action == RowAction::Create) return CreationOf(number, tables);
  return UpdateOf(number, tables);
}

ItemCreation clsIE_PreciosMovilnet::CreationOf(std::int32_t number, const ApplyTables& tables) const {
  const MovilnetRow& row = ReadRow(number);
  ItemCreation item{.row = static_cast<std::size_t>(number)};
  item.code = row.code;
  item.description = FirstCharacters(row.description, descriptionLength);
  item.brand = CodeOrDefault(row.brandCode);
  item.department = CodeOrDefault(row.department);
  if (!tables.departments.Contains(item.department)) {
    throw RowFailure({HostErrorKind::Constraint, "falta registrar el departamento " + item.department}, item.row);
  }
  item.taxClass = tables.taxes.GeneralClass();
  item.requiresSerials = tables.departments.RequiresSerials(item.department);
  const Currency cost = row.cost.OrZero();
  item.cost = {cost, tables.foreignFactor.Divide(cost)};
  item.net = tables.taxes.GeneralRate().WithoutTax(row.price.OrZero());
  item.fixedPrice = true;
  item.fingerprint = DecisionOf(number).fingerprint;
  return item;
}

ItemUpdate clsIE_PreciosMovilnet::UpdateOf(std::int32_t number, const ApplyTables& tables) const {
  const MovilnetRow& row = ReadRow(number);
  const MovilnetDecision& decision = DecisionOf(number);
  ItemUpdate item{.row = static_cast<std::size_t>(number)};
  item.code = decision.associated;
  item.unit = defaultCode;
  const Currency cost = row.cost.OrZero();
  item.cost = ItemCost{cost, tables.foreignFactor.Divide(cost)};
  item.net = tables.taxes.GeneralRate().WithoutTax(row.price.OrZero());
  item.fixedPrice = true;
  item.fingerprint = decision.fingerprint;
  return item;
}

}  // namespace tolvan
