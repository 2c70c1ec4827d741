#include "desktop/WxDialogs.h"

#include <wx/dirdlg.h>
#include <wx/filedlg.h>
#include <wx/filename.h>

#include <cctype>
#include <iostream>

#include "base/Text.h"
#include "desktop/DialogParent.h"
#include "desktop/MessageWindow.h"
#include "desktop/TextQuestion.h"
#include "desktop/WxText.h"

namespace tolvan {
namespace {

/// Behind what the component asks for: content decides what a file is, so any name can be chosen.
constexpr std::string_view allFiles = "|Todos los archivos|*";

std::optional<std::string> Pick(wxFileDialog& dialog) {
  if (dialog.ShowModal() != wxID_OK) return std::nullopt;
  return FromWx(dialog.GetPath());
}

/// The extension that a filter's first pattern asks for, such as ".tolpak"; empty when it asks for none.
std::string ExtensionOf(std::string_view filter) {
  const std::vector<std::string_view> parts = Split(filter, '|');
  if (parts.size() < 2 || !parts[1].starts_with("*.")) return {};
  return std::string(parts[1].substr(1, parts[1].find(';') - 1));
}

}  // namespace

std::string FilterForBothCases(std::string_view filter) {
  std::string both;
  bool pattern = false;
  for (const char each : filter) {
    if (each == '|') pattern = !pattern;
    if (pattern && std::isalpha(static_cast<unsigned char>(each)) != 0) {
      both.append("[").append(ToLower(std::string(1, each))).append(ToUpper(std::string(1, each))).append("]");
    } else {
      both += each;
    }
  }
  if (both.ends_with('|')) both.pop_back();
  return both;
}

void WxDialogs::BeginIn(std::vector<std::string> openFolders, std::vector<std::string> saveFolders) {
  openFolders_ = std::move(openFolders);
  saveFolders_ = std::move(saveFolders);
}

std::string WxDialogs::FirstFolder(const std::vector<std::string>& folders) const {
  if (wxDirExists(ToWx(lastFolder_))) return lastFolder_;
  for (const std::string& each : folders) {
    if (wxDirExists(ToWx(each))) return each;
  }
  return {};
}

std::optional<std::string> WxDialogs::Used(std::optional<std::string> path) {
  if (path) lastFolder_ = FromWx(wxPathOnly(ToWx(*path)));
  return path;
}

void WxDialogs::ShowMessage(MessageIcon icon, std::string_view title, std::string_view text) {
  if (work_.SessionEnds()) {
    std::cerr << ReplaceAll(text, "\r\n", "\n") << '\n';
    return;
  }
  const StandstillScope standstill(work_);
  MessageWindow(DialogParent(), icon, ToWx(title), ToWxMessage(text), MessageWindow::Buttons::Accept).ShowModal();
}

bool WxDialogs::AskYesNo(std::string_view title, std::string_view text, bool defaultYes) {
  if (work_.SessionEnds()) return defaultYes;
  const StandstillScope standstill(work_);
  MessageWindow box(DialogParent(), MessageIcon::None, ToWx(title), ToWxMessage(text), MessageWindow::Buttons::YesNo,
                    defaultYes);
  return box.ShowModal() == wxID_YES;
}

std::optional<std::string> WxDialogs::AskText(std::string_view title, std::string_view prompt,
                                              std::string_view initial) {
  if (work_.SessionEnds()) return std::nullopt;
  const StandstillScope standstill(work_);
  TextQuestion question(DialogParent(), ToWx(title), ToWxMessage(prompt), ToWx(initial));
  if (question.ShowModal() != wxID_OK) return std::nullopt;
  return FromWx(question.Answer());
}

std::optional<std::string> WxDialogs::PickFileToOpen(std::string_view title, std::string_view filter) {
  if (work_.SessionEnds()) return std::nullopt;
  const StandstillScope standstill(work_);
  const std::string withAll = FilterForBothCases(filter) + std::string(allFiles);
  wxFileDialog dialog(DialogParent(), ToWx(title), ToWx(FirstFolder(openFolders_)), {}, ToWx(withAll),
                      wxFD_OPEN | wxFD_FILE_MUST_EXIST);
  return Used(Pick(dialog));
}

std::optional<std::string> WxDialogs::PickFileToSave(std::string_view title, std::string_view filter,
                                                     std::string_view defaultName) {
  if (work_.SessionEnds()) return std::nullopt;
  const StandstillScope standstill(work_);
  wxFileDialog dialog(DialogParent(), ToWx(title), ToWx(FirstFolder(saveFolders_)), ToWx(defaultName),
                      ToWx(FilterForBothCases(filter)), wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
  std::optional<std::string> path = Used(Pick(dialog));
  const std::string extension = ExtensionOf(filter);
  if (!path || extension.empty() || wxFileName(ToWx(*path)).HasExt()) return path;
  // A name typed without its extension gets it, unless that names a file that is there and nobody agreed to replace.
  return wxFileExists(ToWx(*path + extension)) ? path : *path + extension;
}

std::optional<std::string> WxDialogs::PickFolder(std::string_view title, std::string_view initial) {
  if (work_.SessionEnds()) return std::nullopt;
  const StandstillScope standstill(work_);
  const std::string begin = wxDirExists(ToWx(initial)) ? std::string(initial) : FirstFolder(saveFolders_);
  wxDirDialog dialog(DialogParent(), ToWx(title), ToWx(begin), wxDD_DEFAULT_STYLE);
  if (dialog.ShowModal() != wxID_OK) return std::nullopt;
  lastFolder_ = FromWx(dialog.GetPath());
  return lastFolder_;
}

}  // namespace tolvan
