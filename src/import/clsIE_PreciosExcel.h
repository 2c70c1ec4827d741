// The importer of workbooks laid out in the product's own template.
#pragma once

#include <vector>

#include "import/PriceImporter.h"
#include "import/TemplateClassifier.h"
#include "import/TemplateRow.h"

namespace tolvan {

class clsIE_PreciosExcel final : public PriceImporter {
 public:
  using PriceImporter::PriceImporter;

  /// Whether the alternate-unit columns are applied; true at first.
  bool AplicaActualizacionUnidadAlterna() const { return appliesAlternateUnit_; }
  void SetAplicaActualizacionUnidadAlterna(bool applies) { appliesAlternateUnit_ = applies; }

  ReviewRow RowAt(std::int32_t number) const override;

 private:
  std::int32_t IClaseImportar_NumeroRenglones() const override { return static_cast<std::int32_t>(rows_.size()); }
  std::int32_t IClaseImportar_NumeroNuevos() const override;
  std::int32_t IClaseImportar_NumeroAsociados() const override;
  void IClaseImportar_DeterminarAtributosMenu(std::int32_t row, bool& associate, bool& dissociate,
                                              bool& setCode) const override;
  // This importer has no association.
  bool IClaseImportar_AsignarItem(std::int32_t, std::string_view) override { return false; }
  bool IClaseImportar_AsignarNuevoItem(std::int32_t, std::string_view) override { return false; }

  const SheetLayout& Layout() const override { return templateLayout; }
  void ForgetRows() override;
  std::string TakeRow(const SheetRow& row) override;
  void Classify(const DepartmentTable& departments, const TaxTable& taxes) override;
  RowAction ActionOf(std::int32_t row) const override { return DecisionOf(row).action; }
  ItemCreation CreationOf(std::int32_t number, const ApplyTables& tables) const override;
  ItemUpdate UpdateOf(std::int32_t number, const ApplyTables& tables) const override;

  const TemplateRow& ReadRow(std::int32_t row) const { return rows_[static_cast<std::size_t>(row) - 1]; }
  const TemplateDecision& DecisionOf(std::int32_t row) const { return decisions_[static_cast<std::size_t>(row) - 1]; }
  AlternateUnit AlternateOf(std::int32_t number, const Rate& foreignFactor) const;

  std::vector<TemplateRow> rows_;
  std::vector<TemplateDecision> decisions_;  // one for each row, once they are classified
  bool appliesAlternateUnit_ = true;
};

}  // namespace tolvan
