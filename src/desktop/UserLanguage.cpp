// The toolkit takes its texts and the names of days from the C library's locale. A Debian 12 may have no Spanish one,
// so the program brings its own for these two categories (data/idioma); the system's are only for where that is
// missing.
#include "desktop/UserLanguage.h"

#include <langinfo.h>

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <string>

#include "desktop/ProgramPlaces.h"

namespace tolvan {
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

}  // namespace

void SpeakSpanish() {
  std::setlocale(LC_CTYPE, "");
  if (std::strcmp(::nl_langinfo(CODESET), "UTF-8") != 0) std::setlocale(LC_CTYPE, "C.UTF-8");
  for (const int category : {LC_MESSAGES, LC_TIME}) {
    if (!SetOwn(category)) SetFirstThatIs(category, {"es_DO.UTF-8", "es_ES.UTF-8", "es_US.UTF-8", "C.UTF-8"});
  }
  // Goes before every locale's own language, and is all that leads to Spanish where the locale is of another.
  ::setenv("LANGUAGE", "es", 1);
}

}  // namespace tolvan
