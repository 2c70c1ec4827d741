// How the options window starts an import (actions 3 and 5) and opens the template: the file chosen, looked for and
// remembered, and the importer made for one run.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "import/PriceImporter.h"
#include "ui/frmOpciones.h"

namespace tolvan {

class ImportLauncher {
 public:
  /// Told of every importer made; it lives until Launch returns.
  using Observer = std::function<void(PriceImporter&)>;

  /// Context and window, over which status is shown, must outlive this object.
  ImportLauncher(const ComponentContext& context, ImportTools tools, StatusWindow& window, Observer observer = {});

  /// Makes the dispatcher run the imports. This object must outlive its use there.
  void AttachTo(frmOpciones& form);

  /// The whole way of one import, asking for the file when none is selected. True when the review was shown and
  /// closed. `silent` is set when the user has been told how it went; the text of a failure that nobody has told is
  /// appended to `errorText` behind a line break (CR LF).
  bool Launch(int action, std::string& errorText, bool& silent);

  /// From here on files are imported without being remembered, so that nothing is left of a run but what it applies.
  void DoNotRemember() { remembers_ = false; }

  /// How the last run went, for fronts that tell more than success.
  const ImportOutcome& LastOutcome() const { return outcome_; }

  /// The button beside the file's label.
  void ChooseWorkbook(int action);

  /// The file remembered from an import that was not finished, when it is still there.
  void RestoreLastWorkbook();

  /// Empty when none is selected.
  const std::string& Workbook(int action) { return workbooks_[action]; }
  void SetWorkbook(int action, std::string path) { workbooks_[action] = std::move(path); }

  /// The button cmdAbrirPlantilla. False when it could not be opened; the user has been told.
  bool cmdAbrirPlantilla_Click();

 private:
  std::unique_ptr<PriceImporter> MakeImporter(int action) const;
  bool Import(int action);
  bool Refuse(const std::string& text);
  void Remember(const std::string& path);
  void Warn(std::string_view text) const;

  const ComponentContext* context_;
  ImportTools tools_;
  StatusWindow* window_;
  Observer observer_;
  std::map<int, std::string> workbooks_;
  ImportOutcome outcome_;
  bool remembers_ = true;
};

}  // namespace tolvan
