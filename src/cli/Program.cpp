#include "cli/Program.h"

#include <algorithm>
#include <exception>
#include <ostream>

#include "cli/CommandCall.h"
#include "cli/Help.h"
#include "cli/commands/AllCommands.h"
#include "host/HostError.h"

namespace tolvan {
namespace {

ExitCode Fail(CommandCall& call, ExitCode code, const std::string& componentText) {
  call.PrintMessage(componentText);
  if (call.WantsJson() && !call.JsonPrinted()) call.PrintJson(Result{{"error", ForTerminal(componentText)}});
  return code;
}

ExitCode RunCommand(const Command& command, CommandCall& call) {
  try {
    return command.run(call);
  } catch (const CommandFailure& failure) {
    return Fail(call, failure.Code(), failure.what());
  } catch (const HostError& error) {
    return Fail(call, ExitCode::Failed, TextForPeople(error));
  } catch (const std::exception& error) {
    return Fail(call, ExitCode::Failed, std::string("Error inesperado: ") + error.what());
  }
}

/// "X --ayuda" is "ayuda X".
void TurnIntoHelp(ParsedCommandLine& line) {
  line.given = {};
  if (!line.command.empty()) line.given.arguments = {line.command};
  line.command = helpCommandName;
}

ExitCode UsageFailure(const std::vector<std::string>& words, const ProgramEnvironment& environment,
                      const std::string& text) {
  environment.messages << text << "\nLa ayuda: " << programName << " --ayuda\n";
  if (std::ranges::find(words, "--json") != words.end()) {
    environment.output << JsonText({{"error", text}}) << '\n';
  }
  return ExitCode::Usage;
}

ExitCode Run(const std::vector<std::string>& words, const ProgramEnvironment& environment) {
  const std::vector<Command> commands = AllCommands();
  ParsedCommandLine line;
  try {
    line = ParseCommandLine(words, commands);
  } catch (const CommandFailure& failure) {
    return UsageFailure(words, environment, failure.what());
  }
  if (line.version) {
    const bool json = line.global.Has("--json");
    environment.output << (json ? JsonText({{"version", VersionText()}}) : VersionText()) << '\n';
    return ExitCode::Done;
  }
  if (line.help) TurnIntoHelp(line);
  CommandCall call(line, environment);
  return RunCommand(*std::ranges::find(commands, line.command, &Command::name), call);
}

/// A result that did not reach the user is a failure, whatever it said.
ExitCode AfterOutput(ExitCode code, const ProgramEnvironment& environment) {
  if (environment.output.flush()) return code;
  const bool wasDone = code == ExitCode::Done || code == ExitCode::Rejected;
  environment.messages << (wasDone ? "La orden terminó, pero no" : "No")
                       << " se pudo escribir el resultado en la salida estándar\n";
  if (environment.outputFailure) environment.messages << environment.outputFailure() << '\n';
  return wasDone ? ExitCode::Failed : code;
}

}  // namespace

int RunProgram(const std::vector<std::string>& words, const ProgramEnvironment& environment) {
  return static_cast<int>(AfterOutput(Run(words, environment), environment));
}

}  // namespace tolvan
