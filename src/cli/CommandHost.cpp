#include "cli/CommandHost.h"

#include "cli/CommandFailure.h"
#include "platform/assembly/ConfiguredHostFactory.h"

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

}  // namespace

CommandHost::CommandHost(const std::string& path, const HostFront& front)
    : factory_(Reaching([&] { return std::make_unique<ConfiguredHostFactory>(OpenHostConfiguration(path), front); })),
      component_(Reaching([&] { return std::make_unique<clsImpExp>(*factory_, OpcionesWindow()); })) {
  Reaching([&] { component_->DefineSettings(); });
}

CommandHost::~CommandHost() = default;

DatabaseServices& CommandHost::RequireDatabase() const {
  return *Reaching([&] { return &Context().application.Database(); });
}

std::string CommandHost::Notice() const {
  return Context().application.Settings().Notice();
}

}  // namespace tolvan
