#include "desktop/DemoProcess.h"

#include <wx/process.h>
#include <wx/sstream.h>
#include <wx/stream.h>
#include <wx/utils.h>

#include <array>
#include <chrono>
#include <filesystem>

#include "desktop/DesktopWork.h"
#include "desktop/DialogParent.h"
#include "desktop/ProgramPlaces.h"
#include "desktop/StatusDialog.h"
#include "desktop/WxText.h"

namespace tolvan {
namespace {

using namespace std::chrono_literals;

constexpr auto timeLimit = 2min;

class Process : public wxProcess {
 public:
  Process() : wxProcess(wxPROCESS_REDIRECT) {}
  void OnTerminate(int, int status) override {
    ended_ = true;
    status_ = status;
  }
  bool Ended() const { return ended_; }
  bool Succeeded() const { return ended_ && status_ == 0; }

 private:
  bool ended_ = false;
  int status_ = 0;
};

std::string ErrorsOf(wxProcess& process) {
  wxStringOutputStream text;
  if (process.GetErrorStream() != nullptr) process.GetErrorStream()->Read(text);
  return FromWx(text.GetString().Strip(wxString::both));
}

}  // namespace

std::string MakeDemoByCommand(const std::string& folder, DesktopWork& work) {
  const std::string command = (ProgramFolder() / "tolvan-impexp").native();
  std::error_code ignored;
  if (!std::filesystem::exists(command, ignored)) return "No está instalada la orden\r\n" + command;
  const WorkScope scope(work);
  StatusDialog status(DialogParent(), work);
  status.SetText("Creando la tienda de demostración…");
  Process process;
  const std::array<const char*, 4> words{command.c_str(), "demo", folder.c_str(), nullptr};
  const long id = wxExecute(words.data(), wxEXEC_ASYNC, &process);
  if (id <= 0) return "No se puede iniciar la orden\r\n" + command;
  const auto end = std::chrono::steady_clock::now() + timeLimit;
  bool stopped = false;
  while (!process.Ended()) {
    const bool late = std::chrono::steady_clock::now() > end;
    if (!stopped && (work.Requested() || late)) stopped = wxKill(static_cast<int>(id), wxSIGKILL) == 0;
    wxMilliSleep(10);
    wxYield();
  }
  if (stopped) return "Se detuvo antes de terminar.";
  if (process.Succeeded()) return {};
  const std::string errors = ErrorsOf(process);
  return errors.empty() ? "La orden terminó con un error." : errors;
}

}  // namespace tolvan
