#include "desktop/Program.h"

#include <gtk/gtk.h>
#include <langinfo.h>
#include <wx/bmpbndl.h>
#include <wx/process.h>
#include <wx/sstream.h>
#include <wx/stream.h>
#include <wx/utils.h>

#include <array>
#include <chrono>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <string>
#include <string_view>

#include "desktop/Controls.h"
#include "desktop/DesktopWork.h"
#include "desktop/ProgressDisplays.h"
#include "desktop/WindowParts.h"

namespace tolvan {
namespace data {
extern const std::string_view programIcon;
}

namespace {

/// The locales that come with the program, beside it in a build folder as under /usr.
std::string OwnLocales() {
  return ShareFolder() / "tolvan-impexp/idioma";
}

void SetFirstThatIs(int category, std::initializer_list<const char*> names) {
  for (const char* name : names) {
    if (std::setlocale(category, name) != nullptr) return;
  }
}

/// Where the C library looks for locales while this lives.
class LocalePath {
 public:
  explicit LocalePath(const std::string& folder) {
    if (const char* before = std::getenv(name)) before_ = before;
    ::setenv(name, folder.c_str(), 1);
  }
  ~LocalePath() {
    if (before_.empty()) {
      ::unsetenv(name);
    } else {
      ::setenv(name, before_.c_str(), 1);
    }
  }
  LocalePath(const LocalePath&) = delete;
  LocalePath& operator=(const LocalePath&) = delete;

 private:
  static constexpr const char* name = "LOCPATH";
  std::string before_;
};

bool SetOwn(int category) {
  const LocalePath path(OwnLocales());
  return std::setlocale(category, "es_DO.UTF-8") != nullptr;
}

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

std::filesystem::path ProgramFolder() {
  std::error_code ignored;
  return std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path();
}

std::filesystem::path ShareFolder() {
  return ProgramFolder().parent_path() / "share";
}

// The toolkit takes its texts and the names of days from the C library's locale. A Debian 12 may have no Spanish one,
// so the program brings its own for these two categories (data/idioma); the system's are only for where that is
// missing.
void SpeakSpanish() {
  std::setlocale(LC_CTYPE, "");
  if (std::strcmp(::nl_langinfo(CODESET), "UTF-8") != 0) std::setlocale(LC_CTYPE, "C.UTF-8");
  for (const int category : {LC_MESSAGES, LC_TIME}) {
    if (!SetOwn(category)) SetFirstThatIs(category, {"es_DO.UTF-8", "es_ES.UTF-8", "es_US.UTF-8", "C.UTF-8"});
  }
  // Goes before every locale's own language, and is all that leads to Spanish where the locale is of another.
  ::setenv("LANGUAGE", "es", 1);
}

void UseProgramIcon() {
  GList* icons = nullptr;
  for (const int side : {16, 24, 32, 48, 64, 128}) {
    const wxSize size(side, side);
    const wxBitmap drawn = wxBitmapBundle::FromSVG(std::string(data::programIcon).c_str(), size).GetBitmap(size);
    if (drawn.IsOk()) icons = g_list_append(icons, gdk_pixbuf_copy(drawn.GetPixbuf()));
  }
  gtk_window_set_default_icon_list(icons);
  g_list_free_full(icons, g_object_unref);
}

std::string MakeDemoByCommand(const std::string& folder, DesktopWork& work) {
  const std::string command = (ProgramFolder() / "tolvan-impexp").native();
  std::error_code ignored;
  if (!std::filesystem::exists(command, ignored)) return "No está instalada la orden\r\n" + command;
  const WorkScope scope(work);
  WaitDialog status(DialogParent(), work);
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
