#include "import/clsIE_PreciosExcel.h"

namespace tolvan {
namespace {

ItemCost CostOf(Currency cost, const GivenAmount& foreign, const Rate& foreignFactor) {
  return {cost, foreign.Given() ? *foreign.value : foreignFactor.Divide(cost)};
}

}  // namespace

std::int32_t clsIE_PreciosExcel::IClaseImportar_NumeroNuevos() const {
  const auto isNew = [](const TemplateDecision& decision) { return decision.looked && !decision.found; };
  return CountDecisions(isNew);
}

std::int32_t clsIE_PreciosExcel::IClaseImportar_NumeroAsociados() const {
  const auto isUpdated = [](const TemplateDecision& decision) { return decision.action == RowAction::Update; };
  return CountDecisions(isUpdated);
}

void clsIE_PreciosExcel::IClaseImportar_DeterminarAtributosMenu(std::int32_t row, bool& associate, bool& dissociate,
                                                                bool& setCode) const {
  associate = dissociate = setCode = false;
  if (!IsRow(row)) return;
  const TemplateDecision& decision = DecisionOf(row);
  associate = decision.associated.empty();
  dissociate = !associate;
  setCode = associate && decision.action == RowAction::Create;
}

void clsIE_PreciosExcel::Classify(const DepartmentTable& departments, const TaxTable& taxes) {
  const StoredCodes items = StoredCodes::OfItems(Database());
  const TemplateClassifier classifier({.database = Database(),
                                       .inventory = Context().application.InventoryFlag(),
                                       .taxes = taxes,
                                       .departments = departments,
                                       .items = items,
                                       .interruption = UserInterruption()},
                                      appliesAlternateUnit_);
  decisions_ = classifier.Classify(rows_);
}

ReviewRow clsIE_PreciosExcel::RowAt(std::int32_t number) const {
  const TemplateRow& row = ReadRow(number);
  const TemplateDecision& decision = DecisionOf(number);
  ReviewRow shown{.number = number, .sheetRow = row.sheetRow};
  shown.code = row.code;
  shown.description = row.description;
  shown.brand = row.brand;
  shown.department = row.department;
  shown.cost = row.cost.value;
  shown.price = row.price.value;
  shown.action = decision.action;
  shown.associated = decision.associated;
  shown.codeFree = decision.codeFree;
  shown.costChanged = decision.costChanged;
  shown.priceChanged = decision.priceChanged;
  shown.difference = decision.difference;
  shown.previousCost = decision.previousCost;
  shown.previousPrice = decision.previousPrice;
  shown.reason = decision.reason;
  shown.remarks = decision.remarks;
  return shown;
}

AlternateUnit clsIE_PreciosExcel::AlternateOf(std::int32_t number, const Rate& foreignFactor) const {
  const TemplateRow& row = ReadRow(number);
  const TemplateDecision& decision = DecisionOf(number);
  const std::string& unit = decision.alternateUnit.empty() ? row.unitCode : decision.alternateUnit;
  AlternateUnit alternate{.unit = unit, .multiplier = row.multiplier, .net = {}, .cost = {}};
  if (decision.unitPrice && row.alternatePrice.Given()) {
    alternate.net = decision.rate.WithoutTax(*row.alternatePrice.value);
  }
  if (decision.unitCost) alternate.cost = CostOf(*row.alternateCost.value, {}, foreignFactor);
  return alternate;
}

ItemChange clsIE_PreciosExcel::ChangeOf(std::int32_t number, const ApplyTables& tables) const {
  if (DecisionOf(number).action == RowAction::Create) return CreationOf(number, tables);
  return UpdateOf(number, tables);
}

ItemCreation clsIE_PreciosExcel::CreationOf(std::int32_t number, const ApplyTables& tables) const {
  const TemplateRow& row = ReadRow(number);
  const TemplateDecision& decision = DecisionOf(number);
  ItemCreation item{.row = static_cast<std::size_t>(number)};
  item.code = row.code;
  item.description = row.description;
  item.brand = row.brand;
  item.department = row.department;
  item.createsDepartment = !tables.departments.Contains(row.department);
  item.taxClass = tables.taxes.GeneralClass();
  item.requiresSerials = tables.departments.RequiresSerials(row.department);
  item.cost = CostOf(row.cost.OrZero(), row.foreignCost, tables.foreignFactor);
  if (row.price.Given()) item.net = decision.rate.WithoutTax(*row.price.value);
  if (decision.unitUpdate) item.alternate = AlternateOf(number, tables.foreignFactor);
  return item;
}

ItemUpdate clsIE_PreciosExcel::UpdateOf(std::int32_t number, const ApplyTables& tables) const {
  const TemplateRow& row = ReadRow(number);
  const TemplateDecision& decision = DecisionOf(number);
  ItemUpdate item{.row = static_cast<std::size_t>(number)};
  item.code = decision.associated;
  if (decision.costChanged) item.cost = CostOf(*row.cost.value, row.foreignCost, tables.foreignFactor);
  if (decision.priceChanged) item.net = decision.rate.WithoutTax(*row.price.value);
  if (decision.unitUpdate) item.alternate = AlternateOf(number, tables.foreignFactor);
  return item;
}

}  // namespace tolvan
