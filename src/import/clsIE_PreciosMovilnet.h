// The importer of the Movilnet price list of phones and modems.
#pragma once

#include <vector>

#include "import/MovilnetClassifier.h"
#include "import/MovilnetRow.h"
#include "import/PriceImporter.h"

namespace tolvan {

class clsIE_PreciosMovilnet final : public PriceImporter {
 public:
  using PriceImporter::PriceImporter;

  ReviewRow RowAt(std::int32_t number) const override;

 private:
  std::int32_t IClaseImportar_NumeroRenglones() const override { return static_cast<std::int32_t>(rows_.size()); }
  std::int32_t IClaseImportar_NumeroNuevos() const override;
  std::int32_t IClaseImportar_NumeroAsociados() const override;
  void IClaseImportar_DeterminarAtributosMenu(std::int32_t row, bool& associate, bool& dissociate,
                                              bool& setCode) const override;
  bool IClaseImportar_AsignarItem(std::int32_t row, std::string_view item) override;
  bool IClaseImportar_AsignarNuevoItem(std::int32_t row, std::string_view code) override;

  const SheetLayout& Layout() const override { return movilnetLayout; }
  void ForgetRows() override;
  std::string TakeRow(const SheetRow& row) override;
  void Classify(const DepartmentTable& departments, const TaxTable& taxes) override;
  bool MayApply() override;
  std::vector<std::int32_t> AlsoChanged() const override { return alsoChanged_; }
  RowAction ActionOf(std::int32_t row) const override { return DecisionOf(row).action; }
  ItemCreation CreationOf(std::int32_t number, const ApplyTables& tables) const override;
  ItemUpdate UpdateOf(std::int32_t number, const ApplyTables& tables) const override;
  // The opposite of what the template's importer shows there: deliberate.
  bool ShowsFree(const ReviewRow& row) const override { return !row.codeFree; }

  MovilnetClassifier Classifier() const;
  bool ChangeRow(std::int32_t row, MovilnetRow changed);
  void NoteChanges(std::int32_t row, const std::vector<MovilnetDecision>& before);
  const MovilnetRow& ReadRow(std::int32_t row) const { return rows_[static_cast<std::size_t>(row) - 1]; }
  const MovilnetDecision& DecisionOf(std::int32_t row) const { return decisions_[static_cast<std::size_t>(row) - 1]; }

  std::vector<MovilnetRow> rows_;
  std::vector<MovilnetDecision> decisions_;  // one for each row, once they are classified
  std::vector<std::int32_t> alsoChanged_;    // by the last change, besides the row that was meant
  Rate generalRate_;                         // of the last classification of all rows
  StoredCodes items_;                        // likewise
};

}  // namespace tolvan
