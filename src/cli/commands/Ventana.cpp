// Starts the program of the windows, which lies beside this one, and waits for its end.
#include <spawn.h>
#include <sys/wait.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "cli/CommandCall.h"
#include "cli/commands/AllCommands.h"
#include "host/UserInterface.h"

// The system's own. NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
extern char** environ;

namespace tolvan {
namespace {

bool HasDisplay() {
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY"}) {
    const char* value = std::getenv(name);
    if (value != nullptr && *value != '\0') return true;
  }
  return false;
}

/// Without a host the program looks for one itself.
pid_t Start(const std::string& program, const std::string& host) {
  std::array<std::string, 3> words{program, "--host", host};
  std::array<char*, 4> arguments{words[0].data(), words[1].data(), words[2].data(), nullptr};
  if (host.empty()) arguments[1] = nullptr;
  pid_t child = 0;
  const int failure = ::posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments.data(), environ);
  if (failure == 0) return child;
  throw CommandFailure(ExitCode::Failed, "No se puede iniciar el programa de ventanas\r\n" + program + ": " +
                                             std::generic_category().message(failure));
}

/// The status of the ended child. The user's wish to stop is passed on to it.
int WaitFor(pid_t child, const Interruption& interruption) {
  int status = 0;
  while (::waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) throw CommandFailure(ExitCode::Failed, "Se perdió el programa de ventanas");
    if (interruption.Requested()) ::kill(child, SIGTERM);
  }
  return status;
}

ExitCode RunVentana(CommandCall& call) {
  // Where there is no configuration yet, the program offers ways to one.
  const bool first = !call.HostIsNamed() && !std::filesystem::exists(call.HostPath());
  if (!first) static_cast<void>(call.Host().RequireDatabase());
  if (!HasDisplay()) {
    throw CommandFailure(ExitCode::Failed, "No hay pantalla donde abrir la ventana (revise DISPLAY o WAYLAND_DISPLAY)");
  }
  const std::string program = call.WindowProgram();
  if (!std::filesystem::exists(program)) {
    throw CommandFailure(ExitCode::Failed, "El programa de ventanas no está instalado; falta\r\n" + program);
  }
  const int status = WaitFor(Start(program, first ? std::string() : call.HostPath()), call.UserInterruption());
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return ExitCode::Done;
  const bool unreachable = WIFEXITED(status) && WEXITSTATUS(status) == static_cast<int>(ExitCode::Unreachable);
  throw CommandFailure(unreachable ? ExitCode::Unreachable : ExitCode::Failed,
                       "El programa de ventanas terminó con un error");
}

}  // namespace

Command VentanaCommand() {
  return {.name = "ventana",
          .summary = "Abre la ventana de opciones",
          .notes = "Necesita una pantalla y el programa tolvan-ventana junto a esta orden.",
          .examples = {{"--host tienda/tolvan.ini ventana", "la abre con la tienda de la carpeta tienda"}},
          .run = &RunVentana};
}

}  // namespace tolvan
