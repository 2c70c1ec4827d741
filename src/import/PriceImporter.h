// What all price-list importers share: the way from the workbook through the review into one transaction. What is
// particular to a list - its columns, how rows are classified, what is written - is in the classes made from
// ListImporter. A row crosses to them once, as cells, and comes back once, as what is to be done to an item.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "host/SpreadsheetApplication.h"
#include "host/SystemServices.h"
#include "import/ImportReview.h"
#include "import/ItemWriter.h"
#include "import/StoreTables.h"
#include "import/WorkbookReading.h"
#include "services/ComponentContext.h"

namespace tolvan {

/// What an importer needs in addition to the component's own services. All of it must outlive the importer.
struct ImportTools {
  SpreadsheetApplication& spreadsheets;
  const HashService& hashes;
  ImportReviewFactory review;
};

/// How an import went, for fronts that report more than success.
struct ImportOutcome {
  bool applied = false;      ///< the rows were committed
  std::string failure{};     ///< the text for a last step that failed, Spanish; empty when it did not
  std::string cause{};       ///< what the failure came from, with the row where one is to blame; may be empty
  bool shown = false;        ///< a box has shown `failure` and `cause`
  std::int32_t created = 0;  ///< counted when applied
  std::int32_t updated = 0;
  std::int32_t unprocessed = 0;
};

/// `failure` and `cause` on lines of their own (CR LF).
std::string FailureText(const ImportOutcome& outcome);

/// What applying has read before its transaction.
struct ApplyTables {
  DepartmentTable departments;
  TaxTable taxes;
  Rate foreignFactor;
};

class PriceImporter : public IClaseImportar, public ReviewLineSource {
 public:
  PriceImporter(const ComponentContext& context, ImportTools tools);

  const std::string& RutaArchivo() const { return path_; }
  void SetRutaArchivo(std::string path) { path_ = std::move(path); }

  /// Reads and classifies the workbook, and shows the review. True when the review was shown and closed, whatever came
  /// of it; see Outcome.
  bool Procesar(StatusWindow& callingWindow);

  const ImportOutcome& Outcome() const { return outcome_; }

  /// Where the last reading ended.
  const ReadingEnd& End() const { return end_; }

  /// That the headings are foreign, that no row was read, or that the reading ended early, and why; empty when there is
  /// nothing to say. Spanish.
  std::string ReadingNote() const;

  /// `number` is a row, from 1 to NumeroRenglones.
  virtual ReviewRow RowAt(std::int32_t number) const = 0;

  ReviewLine LineOf(std::int32_t row) const final;
  std::string NoteOf(std::int32_t row) const final;
  std::string NoteOfAll() const final;
  std::string NoteOfChange() const final;
  std::string UntoldFailure() const final;
  std::optional<Currency> AmountOf(std::int32_t row, std::size_t column) const final;

 protected:
  const ComponentContext& Context() const { return *context_; }
  const ImportTools& Tools() const { return tools_; }
  DatabaseServices& Database() const { return context_->application.Database(); }
  const Interruption& UserInterruption() const { return context_->services.UserInterruption(); }
  bool IsRow(std::int32_t row) const { return row >= 1 && row <= NumeroRenglones(); }

  /// A warning with an exclamation mark and the product's name.
  void Warn(std::string_view text) const;

  /// Tells the user why applying cannot begin, and keeps the text for Outcome.
  void Refuse(std::string_view title, std::string_view text);

  /// Warns the user with `text` and its cause, and keeps both for Outcome. Always false.
  bool Fail(std::string_view text, const std::exception& cause);

  virtual const SheetLayout& Layout() const = 0;
  virtual void ForgetRows() = 0;

  /// Takes a row of the workbook that is data, as the next one of the import.
  virtual void TakeRow(const SheetRow& row) = 0;

  /// Decides on all rows, keeping what the user chose. Throws HostError; then the former decisions stand.
  virtual void Classify(const DepartmentTable& departments, const TaxTable& taxes) = 0;

  /// Whether applying may begin; when not, the user has been told. Throws HostError.
  virtual bool MayApply() { return true; }

  virtual RowAction ActionOf(std::int32_t row) const = 0;

  /// What applying does for a row whose action is not None. Throws RowFailure, and std::overflow_error for an amount
  /// that does not fit.
  virtual ItemChange ChangeOf(std::int32_t row, const ApplyTables& tables) const = 0;

  /// Whether the column "Libre" says so.
  virtual bool ShowsFree(const ReviewRow& row) const { return row.codeFree; }

  /// Keeps which rows, ascending, the user's last change of one row changed besides that row.
  void SetAlsoChanged(std::vector<std::int32_t> rows) { alsoChanged_ = std::move(rows); }

 private:
  bool IClaseImportar_Iniciar(StatusWindow& reviewWindow) final;
  void IClaseImportar_PintarLV(ReviewList& list, std::int32_t row, int tab) final;
  // An importer whose rows are associated by their codes lets nobody change that.
  bool IClaseImportar_AsignarItem(std::int32_t, std::string_view) override { return false; }
  bool IClaseImportar_AsignarNuevoItem(std::int32_t, std::string_view) override { return false; }

  bool Read(StatusWindow& callingWindow);
  bool ClassifyRead();
  void Review();
  bool Prepare(ApplyTables& tables);
  void Forget();
  void ClassifyAgain(const ApplyTables& tables);
  bool Apply(StatusWindow& reviewWindow, const ApplyTables& tables);
  void ApplyRows(StatusDisplay& status, const ApplyTables& tables);
  ItemChange FittingChangeOf(std::int32_t row, const ApplyTables& tables) const;
  std::string RegisteredMeanwhile() const;
  void CountActions();
  bool FailSilently(const HostError& error);
  std::string Explain(const std::exception& cause) const;
  bool PaintRow(ReviewList& list, std::int32_t row, int tab) const;
  void TellRemoval();

  const ComponentContext* context_;
  ImportTools tools_;
  std::string path_;
  ImportOutcome outcome_;
  ReadingEnd end_;
  std::vector<std::int32_t> alsoChanged_;
  bool removalTold_ = false;
};

/// An importer's rows as they were read, and what was decided about each: a `Decision` has an `action`.
template <class Row, class Decision>
class ListImporter : public PriceImporter {
 public:
  using PriceImporter::PriceImporter;

 protected:
  const Row& ReadRow(std::int32_t row) const { return rows_[static_cast<std::size_t>(row) - 1]; }
  const Decision& DecisionOf(std::int32_t row) const { return decisions_[static_cast<std::size_t>(row) - 1]; }

  template <class Is>
  std::int32_t CountDecisions(const Is& is) const {
    return static_cast<std::int32_t>(std::count_if(decisions_.begin(), decisions_.end(), is));
  }

  std::vector<Row> rows_;
  std::vector<Decision> decisions_;  // one for each row, once they are classified

 private:
  std::int32_t IClaseImportar_NumeroRenglones() const final { return static_cast<std::int32_t>(rows_.size()); }
  RowAction ActionOf(std::int32_t row) const final { return DecisionOf(row).action; }
  void ForgetRows() final {
    rows_.clear();
    decisions_.clear();
  }
};

}  // namespace tolvan
