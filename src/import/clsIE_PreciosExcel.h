// The importer of workbooks laid out in the product's own template.
#pragma once

#include "import/PriceImporter.h"
#include "import/TemplateClassifier.h"
#include "import/TemplateRow.h"

namespace tolvan {

class clsIE_PreciosExcel final : public ListImporter<TemplateRow, TemplateDecision> {
 public:
  using ListImporter::ListImporter;

  /// Whether the alternate-unit columns are applied; true at first.
  bool AplicaActualizacionUnidadAlterna() const { return appliesAlternateUnit_; }
  void SetAplicaActualizacionUnidadAlterna(bool applies) { appliesAlternateUnit_ = applies; }

  ReviewRow RowAt(std::int32_t number) const override;

 private:
  std::int32_t IClaseImportar_NumeroNuevos() const override;
  std::int32_t IClaseImportar_NumeroAsociados() const override;
  void IClaseImportar_DeterminarAtributosMenu(std::int32_t row, bool& associate, bool& dissociate,
                                              bool& setCode) const override;

  const SheetLayout& Layout() const override { return templateLayout; }
  void TakeRow(const SheetRow& row) override { rows_.push_back(ReadTemplateRow(row)); }
  void Classify(const DepartmentTable& departments, const TaxTable& taxes) override;
  ItemChange ChangeOf(std::int32_t number, const ApplyTables& tables) const override;

  ItemCreation CreationOf(std::int32_t number, const ApplyTables& tables) const;
  ItemUpdate UpdateOf(std::int32_t number, const ApplyTables& tables) const;
  AlternateUnit AlternateOf(std::int32_t number, const Rate& foreignFactor) const;

  bool appliesAlternateUnit_ = true;
};

}  // namespace tolvan
