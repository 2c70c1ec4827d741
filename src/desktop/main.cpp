// The window program's process: its arguments, the place of the configuration, the toolkit, and the system's signals.
#include <glib-unix.h>
#include <wx/app.h>
#include <wx/log.h>

#include <csignal>
#include <filesystem>
#include <iostream>
#include <string>

#include "desktop/DesktopSession.h"
#include "desktop/Program.h"
#include "store/HostConfiguration.h"
#include "system/posix/PosixServices.h"

namespace {

constexpr int failed = 1;
constexpr int wrongUsage = 2;

class Application : public wxApp {
 public:
  /// Without a host it is the one at the usual place.
  explicit Application(std::string host) : host_(std::move(host)) {
    SetAppName("tolvan-ventana");
    SetClassName("tolvan-ventana");
  }

  int OnRun() override {
    g_unix_signal_add(SIGTERM, &Application::OnSignal, &session_);
    g_unix_signal_add(SIGINT, &Application::OnSignal, &session_);
    g_unix_signal_add(SIGHUP, &Application::OnSignal, &session_);
    if (!host_.empty()) return session_.Run(host_);
    const std::string usual = tolvan::UsualConfiguration();
    std::error_code ignored;
    return std::filesystem::exists(usual, ignored) ? session_.Run(usual) : session_.RunFirst(usual);
  }

 private:
  static gboolean OnSignal(gpointer session) {
    static_cast<tolvan::DesktopSession*>(session)->End();
    return G_SOURCE_CONTINUE;
  }

  std::string host_;
  tolvan::SystemClock clock_;
  tolvan::DesktopSession session_{clock_};
};

/// The configuration named on the command line or in the environment, empty when none is; nothing when the arguments
/// are not understood.
std::optional<std::string> HostOf(int count, char** arguments) {
  if (count == 1) return tolvan::ConfigurationOfEnvironment();
  if (count == 3 && std::string(arguments[1]) == "--host") return arguments[2];
  return std::nullopt;
}

}  // namespace

int main(int count, char** arguments) {
  const std::optional<std::string> host = HostOf(count, arguments);
  if (!host) {
    std::cerr << "Uso: tolvan-ventana [--host RUTA]\n";
    return wrongUsage;
  }
  std::signal(SIGPIPE, SIG_IGN);
  wxApp::SetInstance(new Application(*host));
  tolvan::SpeakSpanish();
  const wxLogNull silentStart;
  int toolkitArguments = 1;
  if (!wxEntryStart(toolkitArguments, arguments)) {
    std::cerr << "No hay pantalla donde abrir la ventana (revise DISPLAY o WAYLAND_DISPLAY).\n";
    return failed;
  }
  const int code = wxTheApp->CallOnInit() ? wxTheApp->OnRun() : failed;
  wxEntryCleanup();
  return code;
}
