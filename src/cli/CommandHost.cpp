#include "cli/CommandHost.h"

#include <filesystem>

#include "cli/CommandFailure.h"
#include "store/ConfiguredHostFactory.h"

namespace tolvan {
namespace {

/// Runs what reaches for the host; its failure is that the host cannot be reached, unless the user did not want to wait
/// for it.
template <class Work>
auto Reaching(const Work& work) {
  try {
    return work();
  } catch (const HostError& error) {
    const bool stopped = error.Kind() == HostErrorKind::Interrupted;
    throw CommandFailure(stopped ? ExitCode::Failed : ExitCode::Unreachable, TextForPeople(error));
  }
}

/// Reads the configuration; where there is none, the failure names the next step.
HostConfiguration Configuration(const std::string& path) {
  try {
    return OpenHostConfiguration(path);
  } catch (const HostError& error) {
    const std::filesystem::path inFolder = std::filesystem::path(path) / "tolvan.ini";
    std::error_code ignored;
    std::string next;
    if (std::filesystem::exists(inFolder, ignored)) {
      next = "\r\nIndique el archivo de esa carpeta: --host " + inFolder.native();
    } else if (!std::filesystem::exists(path, ignored)) {
      next =
          "\r\nIndique la configuración de su tienda con --host RUTA o en la variable TOLVAN_HOST, o cree una tienda "
          "de demostración: tolvan-impexp demo CARPETA";
    }
    throw CommandFailure(ExitCode::Unreachable, TextForPeople(error) + next);
  }
}

}  // namespace

CommandHost::CommandHost(const std::string& path, const HostFront& front)
    : factory_(Reaching([&] { return std::make_unique<ConfiguredHostFactory>(Configuration(path), front); })),
      component_(Reaching([&] { return std::make_unique<clsImpExp>(*factory_, OpcionesWindow()); })) {
  Reaching([&] { component_->DefineSettings(); });
}

CommandHost::~CommandHost() = default;

DatabaseServices& CommandHost::RequireDatabase() const {
  return *Reaching([&] { return &Context().application.Database(); });
}

std::string CommandHost::Notice() const {
  const std::string ofConfiguration = factory_->Notice();
  const std::string ofSettings = Context().application.Settings().Notice();
  return ofConfiguration + (ofConfiguration.empty() || ofSettings.empty() ? "" : "\r\n") + ofSettings;
}

}  // namespace tolvan
