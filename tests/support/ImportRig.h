// A workbook in memory, a review that a test plays, and an importer's host, over a small store or over whatever
// database a test gives.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/SpreadsheetApplication.h"
#include "import/ImportReview.h"
#include "support/FakeHost.h"
#include "support/TestStore.h"
#include "system/posix/PosixServices.h"
#include "ui/ReviewView.h"

namespace tolvan::test {

/// A cell given in a test: a number, a text, or what cannot be written as either.
struct Given {
  Given(double value) : kind(CellKind::Number), number(value) {}              // NOLINT(google-explicit-constructor)
  Given(const char* value) : kind(CellKind::Text), text(value) {}             // NOLINT(google-explicit-constructor)
  Given(std::string value) : kind(CellKind::Text), text(std::move(value)) {}  // NOLINT(google-explicit-constructor)
  Given(CellKind other, std::string value = {}) : kind(other), text(std::move(value)) {}  // NOLINT
  CellKind kind;
  double number = 0;
  std::string text;
};
inline const Given none(CellKind::Empty);

using GivenRow = std::vector<Given>;

/// One workbook in memory; what is written becomes what is read next.
class FakeSpreadsheets : public SpreadsheetApplication {
 public:
  void Start() override {}
  std::unique_ptr<WorksheetReader> OpenFirstWorksheet(std::string_view path, const Interruption&) override;
  std::unique_ptr<NewWorkbook> CreateFromTemplate(std::string_view, std::uint32_t headingRows) override;

  std::uint32_t firstRow = 5;
  std::vector<GivenRow> rows;            ///< from firstRow on; an empty one is a row without cells
  std::optional<HostError> readFailure;  ///< thrown after the last row
};

/// A review whose ShowModal does what a test says.
struct FakeReview : ImportReview {
  FakeReview(ReviewListModel& model, std::function<void(IClaseImportar&)> work)
      : list(&model), action(std::move(work)) {}
  void SetClase(IClaseImportar& made) override { importer = &made; }
  void RefrescarSumario() override {}
  ReviewList& lvStatus() override { return *list; }
  void ShowModal() override { action(*importer); }
  ReviewListModel* list;
  std::function<void(IClaseImportar&)> action;
  IClaseImportar* importer = nullptr;
};

/// What an importer works with, without a database: the host that it asks, the workbook, the review.
struct ImportRig {
  /// An importer whose review does what `review` says.
  template <class Importer>
  Importer MakeImporter(std::function<void(IClaseImportar&)> review) {
    Importer importer(host.context, {sheets, hashes, [this, review]() -> std::unique_ptr<ImportReview> {
                                       return std::make_unique<FakeReview>(list, review);
                                     }});
    importer.SetRutaArchivo("libro.xlsx");
    return importer;
  }

  FakeHost host;
  FakeSpreadsheets sheets;
  NettleHashService hashes;
  ReviewListModel list;
  FakeStatus status;
};

/// Imports into a small store. Item VIEJO costs 10 and sells at 100 before 18 % of tax; EXENTO pays none; SINPRINCIPAL
/// has no unit at all.
class ImportTest : public ::testing::Test, protected TestStore, protected ImportRig {
 protected:
  ImportTest();

  /// Every row of the tables that an import writes, as text.
  std::string Dump();
};

}  // namespace tolvan::test
