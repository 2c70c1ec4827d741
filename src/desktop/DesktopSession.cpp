#include "desktop/DesktopSession.h"

#include <gtk/gtk.h>
#include <wx/app.h>
#include <wx/dialog.h>
#include <wx/evtloop.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>

#include "base/Text.h"
#include "component/clsImpExp.h"
#include "desktop/FirstRunDialog.h"
#include "desktop/OptionsFrame.h"
#include "desktop/Program.h"
#include "desktop/ReviewDialog.h"
#include "services/ResourceTexts.h"
#include "store/ConfiguredHostFactory.h"
#include "store/DeferredProviders.h"
#include "system/posix/PosixFileHelper.h"
#include "system/posix/PosixServices.h"

namespace tolvan {
namespace {

constexpr int done = 0;
constexpr int hostUnreachable = 4;

constexpr int closingPause = 20;  // milliseconds

/// The host of the windows: the configuration read, the component attached to it, its settings loaded, its database
/// opened.
class DesktopHost {
 public:
  /// Throws HostError when the configuration, its folders or the database cannot be used.
  DesktopHost(const std::string& configurationPath, const HostFront& front, OptionsWindow window)
      : factory_(OpenHostConfiguration(configurationPath), front), component_(factory_, std::move(window)) {
    component_.DefineSettings();
    static_cast<void>(component_.Context().application.Database());
  }

  clsImpExp& Component() { return component_; }

 private:
  ConfiguredHostFactory factory_;
  clsImpExp component_;
};

std::string CannotBeRead(const std::string& configuration) {
  try {
    static_cast<void>(OpenHostConfiguration(configuration));
    return {};
  } catch (const HostError& error) {
    return TextForPeople(error);
  }
}

/// Makes `usual` lead to the configuration; a link that leads nowhere gives way.
std::string LinkTo(const std::string& configuration, const std::filesystem::path& usual) {
  std::error_code error;
  std::filesystem::create_directories(usual.parent_path(), error);
  if (!error && std::filesystem::is_symlink(usual)) std::filesystem::remove(usual, error);
  if (!error) std::filesystem::create_symlink(std::filesystem::absolute(configuration), usual, error);
  return error ? usual.native() + ": " + std::string(std::strerror(error.value())) : std::string();
}

/// The toolkit's own pickers, and boxes over them, run their own loops, and so does a menu; an answer ends them.
void EndPickersAndMenus() {
  GList* const windows = gtk_window_list_toplevels();
  for (const GList* each = windows; each != nullptr; each = each->next) g_object_ref(each->data);
  for (const GList* each = windows; each != nullptr; each = each->next) {
    GtkWidget* const child = gtk_bin_get_child(GTK_BIN(each->data));
    if (GTK_IS_MENU(child) && gtk_widget_get_mapped(child)) gtk_menu_shell_cancel(GTK_MENU_SHELL(child));
    if (GTK_IS_DIALOG(each->data)) gtk_dialog_response(GTK_DIALOG(each->data), GTK_RESPONSE_CANCEL);
  }
  g_list_free_full(windows, g_object_unref);
}

/// Of dialogs over dialogs only the last, whose loop is the one that runs: to end another would leave its loop running.
void EndLastDialog() {
  for (auto node = wxTopLevelWindows.GetLast(); node != nullptr; node = node->GetPrevious()) {
    auto* const dialog = dynamic_cast<wxDialog*>(node->GetData());
    if (dialog != nullptr && dialog->IsModal()) return dialog->EndModal(wxID_CANCEL);
  }
}

}  // namespace

int DesktopSession::Run(const std::string& configurationPath) {
  UseProgramIcon();
  try {
    DesktopHost host(configurationPath,
                     {.dialogs = dialogs_, .clock = clock_, .interruption = work_, .userPresent = true},
                     [this](const ComponentContext& context) { ShowWindow(context); });
    TellNotice(host.Component().Context());
    host.Component().VentanaImpExp({});
    return done;
  } catch (const HostError& error) {
    // The user has stopped the wait for the store: what there is to say he knows.
    if (error.Kind() == HostErrorKind::Interrupted) return done;
    const std::string text = TextForPeople(error);
    std::cerr << ReplaceAll(text, "\r\n", "\n") << '\n';
    dialogs_.ShowMessage(MessageIcon::Exclamation, ResourceText(text_id::windowCaption), text);
    return hostUnreachable;
  }
}

int DesktopSession::RunFirst(const std::string& usualPath) {
  UseProgramIcon();
  PosixFileHelper files("/");
  const char* const home = std::getenv("HOME");
  const std::string manual = ShareFolder() / "doc/tolvan-impexp/manual.es.md";
  FirstRun logic(dialogs_, files,
                 {.usual = usualPath,
                  .home = home == nullptr ? std::string() : home,
                  .manual = files.FileExists(manual) ? manual : std::string()},
                 {.makeDemo = [this](const std::string& folder) { return MakeDemoByCommand(folder, work_); },
                  .check = CannotBeRead,
                  .remember = [&](const std::string& configuration) { return LinkTo(configuration, usualPath); }});
  const auto ask = [&] {
    // Gone before the main window comes: the program ends with its last window.
    FirstRunDialog dialog(logic);
    return dialog.ShowModal() == wxID_OK ? dialog.Chosen() : std::string();
  };
  int code = done;
  do {
    const std::string chosen = ask();
    if (chosen.empty()) return done;
    code = Run(chosen);
  } while (code == hostUnreachable && !work_.SessionEnds());
  return code;
}

void DesktopSession::TellNotice(const ComponentContext& context) {
  const std::string notice = context.application.Settings().Notice();
  if (!notice.empty()) dialogs_.ShowMessage(MessageIcon::Exclamation, context.application.ProductName(), notice);
}

void DesktopSession::ShowWindow(const ComponentContext& context) {
  if (work_.SessionEnds()) return;
  DeferredSpreadsheetApplication spreadsheets(context.services.SystemClock(), context.Files(),
                                              context.services.ApplicationFolder() + "Exportar");
  FileHelper& files = context.Files();
  const std::string store = context.services.ApplicationFolder();
  dialogs_.BeginIn({files.Join(store, "ejemplos"), store}, {files.Join(store, "Exportar"), store});
  const NettleHashService hashes;
  DeferredXmlLibrary xml;
  OptionsFrame* frame = nullptr;
  const auto makeReview = [&]() -> std::unique_ptr<ImportReview> {
    return std::make_unique<frmStatusImportar>(context, [&](frmStatusImportar& logic) {
      return std::make_unique<ReviewDialog>(frame, context, work_, logic);
    });
  };
  frame = new OptionsFrame(context, work_, {{spreadsheets, hashes, makeReview}, xml});
  frame_ = frame;
  wxTheApp->SetTopWindow(frame);
  wxTheApp->SetExitOnFrameDelete(true);
  frame->Show();
  wxTheApp->MainLoop();
}

void DesktopSession::End() {
  work_.EndSession();
  CloseWindows();
  if (closing_ != nullptr) return;
  closing_ = std::make_unique<wxTimer>();
  closing_->Bind(wxEVT_TIMER, [this](wxTimerEvent&) { CloseWindows(); });
  closing_->Start(closingPause);
}

/// A frame that closed under the loop of a dialog would be deleted while that dialog, its child, still stands on the
/// stack. So it is closed once the main loop is the one that runs.
void DesktopSession::CloseWindows() {
  EndPickersAndMenus();
  EndLastDialog();
  const wxEventLoopBase* const loop = wxEventLoopBase::GetActive();
  if (frame_ != nullptr && loop != nullptr && loop->IsMain()) frame_->Close();
}

}  // namespace tolvan
