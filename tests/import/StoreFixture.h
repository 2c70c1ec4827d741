// A small store in a database file, a workbook in memory and an importer's host, so that what an import leaves behind
// can be looked at.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "contract/TemporaryFolder.h"
#include "database/sql/Schemas.h"
#include "database/sql/SqlScript.h"
#include "database/sqlite/SqliteDatabaseServices.h"
#include "host/SpreadsheetApplication.h"
#include "import/ImportReview.h"
#include "support/FakeHost.h"
#include "system/NettleHashService.h"
#include "ui/ReviewListModel.h"

namespace tolvan::data {}

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
  void Start() override {
    if (startFailure) throw *startFailure;
  }
  std::unique_ptr<WorksheetReader> OpenFirstWorksheet(std::string_view path, const Interruption&) override;
  std::unique_ptr<NewWorkbook> CreateFromTemplate(std::string_view, std::uint32_t headingRows) override;

  std::uint32_t firstRow = 5;
  std::vector<GivenRow> rows;  ///< from firstRow on; an empty one is a row without cells
  std::optional<HostError> startFailure;
  std::optional<HostError> readFailure;  ///< thrown behind the last row
};

struct SilentStatus : StatusWindow {
  struct Display : StatusDisplay {
    explicit Display(SilentStatus& owner) : window(&owner) {}
    void SetText(std::string_view text) override { window->texts.emplace_back(text); }
    void SetRange(std::int32_t maximum) override { window->range = maximum; }
    void Advance() override { ++window->advanced; }
    SilentStatus* window;
  };
  std::unique_ptr<StatusDisplay> OpenStatus() override { return std::make_unique<Display>(*this); }
  std::vector<std::string> texts;
  std::int32_t range = 0;
  std::int32_t advanced = 0;
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

class StoreTest : public ::testing::Test {
 protected:
  StoreTest();

  /// Every row of the tables that an import writes, as text.
  std::string Dump();
  std::string Query(const std::string& text);  ///< rows separated by "|", fields by ","
  void Run(const std::string& script) { RunSqlScript(*real, script); }

  template <class Importer>
  Importer MakeImporter(std::function<void(IClaseImportar&)> review) {
    Importer importer(host.context, {sheets, hashes, [this, review]() -> std::unique_ptr<ImportReview> {
                                       return std::make_unique<FakeReview>(list, review);
                                     }});
    importer.SetRutaArchivo("libro.xlsx");
    return importer;
  }

  TemporaryFolder folder;
  std::string path = folder.File("tienda.db");
  std::unique_ptr<SqliteDatabaseServices> real;
  FakeHost host;
  FakeSpreadsheets sheets;
  NettleHashService hashes;
  ReviewListModel list;
  SilentStatus status;
};

}  // namespace tolvan::test
