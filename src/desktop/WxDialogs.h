// Message boxes, questions and pickers over the window that is shown last. When the session ends nobody is asked: texts
// go to standard error, and questions answer as the contract says for nobody.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "desktop/DesktopWork.h"
#include "host/UserInterface.h"

namespace tolvan {

class WxDialogs final : public Dialogs {
 public:
  /// `work` must outlive the dialogs.
  explicit WxDialogs(const DesktopWork& work) : work_(work) {}

  /// Where pickers begin until a folder has been used: the first of each that is there.
  void BeginIn(std::vector<std::string> openFolders, std::vector<std::string> saveFolders);

  void ShowMessage(MessageIcon icon, std::string_view title, std::string_view text) override;
  bool AskYesNo(std::string_view title, std::string_view text, bool defaultYes) override;
  std::optional<std::string> AskText(std::string_view title, std::string_view prompt,
                                     std::string_view initial) override;
  std::optional<std::string> PickFileToOpen(std::string_view title, std::string_view filter) override;
  std::optional<std::string> PickFileToSave(std::string_view title, std::string_view filter,
                                            std::string_view defaultName) override;
  std::optional<std::string> PickFolder(std::string_view title, std::string_view initial) override;

 private:
  std::string FirstFolder(const std::vector<std::string>& folders) const;
  std::optional<std::string> Used(std::optional<std::string> path);

  const DesktopWork& work_;
  std::vector<std::string> openFolders_;
  std::vector<std::string> saveFolders_;
  std::string lastFolder_;  // of the last file or folder that was chosen; empty before
};

/// A picker's filter for file systems that distinguish upper and lower case: "*.txt" finds DGII.TXT too.
std::string FilterForBothCases(std::string_view filter);

}  // namespace tolvan
