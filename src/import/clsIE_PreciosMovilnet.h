// The importer of the Movilnet price list of phones and modems.
#pragma once

#include <vector>

#include "import/MovilnetClassifier.h"
#include "import/MovilnetRow.h"
#include "import/PriceImporter.h"

namespace tolvan {

class clsIE_PreciosMovilnet final : public ListImporter<MovilnetRow, MovilnetDecision> {
 public:
  using ListImporter::ListImporter;

  ReviewRow RowAt(std::int32_t number) const override;

 private:
  std::int32_t IClaseImportar_NumeroNuevos() const override;
  std::int32_t IClaseImportar_NumeroAsociados() const override;
  void IClaseImportar_DeterminarAtributosMenu(std::int32_t row, bool& associate, bool& dissociate,
                                              bool& setCode) const override;
  bool IClaseImportar_AsignarItem(std::int32_t row, std::string_view item) override;
  bool IClaseImportar_AsignarNuevoItem(std::int32_t row, std::string_view code) override;

  const SheetLayout& Layout() const override { return movilnetLayout; }
  void TakeRow(const SheetRow& row) override { rows_.push_back(ReadMovilnetRow(row)); }
  void Classify(const DepartmentTable& departments, const TaxTable& taxes) override;
  bool MayApply() override;
  ItemChange ChangeOf(std::int32_t number, const ApplyTables& tables) const override;
  // The opposite of what the template's importer shows there: deliberate.
  bool ShowsFree(const ReviewRow& row) const override { return !row.codeFree; }

  MovilnetClassifier Classifier() const;
  bool ChangeRow(std::int32_t row, MovilnetRow changed);
  void NoteChanges(std::int32_t row, const std::vector<MovilnetDecision>& before);
  ItemCreation CreationOf(std::int32_t number, const ApplyTables& tables) const;
  ItemUpdate UpdateOf(std::int32_t number, const ApplyTables& tables) const;

  Rate generalRate_;   // of the last classification of all rows
  StoredCodes items_;  // likewise
};

}  // namespace tolvan
