// The review of an import when the command runs it: the review window's logic over a view without controls. What a
// person would do in the window - correct rows, look, proceed - is done as the command line says.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "cli/CommandCall.h"
#include "cli/TerminalProgress.h"
#include "import/PriceImporter.h"
#include "ui/ReviewView.h"
#include "ui/frmStatusImportar.h"

namespace tolvan {

class SpreadsheetApplication;

/// A change that the row menu would make.
struct RowChange {
  enum class Kind { Associate, SetCode };
  Kind kind;
  std::int32_t row;
  bool onSheet;       ///< whether `row` is the sheet's; else it counts the rows read, from 1
  std::string value;  ///< an item, "" to remove the association, or a code
};

struct ReviewPlan {
  std::vector<RowChange> changes;
  bool simulate = false;
  std::string reportPath;  ///< absolute; empty for none
};

/// How a review ended.
struct ReviewResult {
  bool applied = false;
  bool declined = false;   ///< a person did not want to go on
  std::string failure{};   ///< with its cause; empty when nothing failed
  std::string untold{};    ///< what of it has not been on standard error yet
  std::string document{};  ///< with --json
};

class CommandReview final : public ReviewView {
 public:
  /// Everything must outlive the review; `importer` is the one whose review this is.
  CommandReview(CommandCall& call, const ComponentContext& context, SpreadsheetApplication& spreadsheets,
                PriceImporter& importer, const ReviewPlan& plan, ReviewResult& result, frmStatusImportar& form);

  ReviewListModel& lvStatus() override { return list_; }
  void ShowUntilClosed() override;

 private:
  void SetExplanation(std::string_view) override {}
  void SetNote(std::string_view) override {}
  void SetSummary(int, std::string_view text) override { summary_.emplace_back(text); }
  void EnableAccept(bool) override {}
  void PopUpMenu(bool, bool, bool) override {}
  std::optional<std::string> PickItem(const SqlStatement& items, std::string_view subject) override;
  void CloseWindow() override {}
  std::unique_ptr<StatusDisplay> OpenStatus() override { return status_.OpenStatus(); }

  void Review();
  std::int32_t NumberOf(const RowChange& change) const;
  std::string NameOf(std::int32_t number) const;
  bool Change(const RowChange& change, std::int32_t number);
  bool MakeChanges();
  bool WantsToGoOn();
  void Proceed();
  void WriteReport(const std::string& onFailure);
  void Fail(const std::string& text);

  CommandCall& call_;
  const ComponentContext& context_;
  SpreadsheetApplication& spreadsheets_;
  PriceImporter& importer_;
  const ReviewPlan& plan_;
  ReviewResult& result_;
  TerminalStatus status_;
  ReviewListModel list_;
  frmStatusImportar& form_;
  std::vector<std::string> summary_;
  std::string itemToPick_;
};

/// The three groups, each with its rows; a group without rows is left out. Where a terminal shows it, the table fits
/// its `columns` as far as the codes and amounts of a row do, says nothing twice, and has about fifty rows.
void PrintReview(std::ostream& out, const PriceImporter& importer, std::optional<std::size_t> columns);

/// The JSON document of one import. `error` is the key of a failure, left out when empty.
std::string ReviewJson(const PriceImporter& importer, bool applied, const std::string& error);

}  // namespace tolvan
