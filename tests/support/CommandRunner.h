// Runs the program in this process on streams of memory, with a clock and an interruption of the test's own.
#pragma once

#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "cli/Program.h"
#include "support/FakeHost.h"

namespace tolvan::test {

struct CommandResult {
  int code = -1;
  std::string output;
  std::string messages;
};

/// The clock says 1 March 2024, 09:00.
struct CommandRunner {
  CommandRunner() { clock.now.date = Date::FromParts(2024, 3, 1); }

  CommandResult Run(std::vector<std::string> arguments) {
    if (!host.empty()) arguments.insert(arguments.begin(), {"--host", host});
    std::istringstream input(typed);
    std::ostringstream output;
    std::ostringstream messages;
    const int code = RunProgram(arguments, {.input = input,
                                            .output = output,
                                            .messages = messages,
                                            .clock = clock,
                                            .interruption = interruption,
                                            .defaultHost = "/no/such/tolvan.ini",
                                            .windowProgram = windowProgram,
                                            .inputIsTerminal = terminal,
                                            .messagesAreTerminal = false,
                                            .outputColumns = [this] { return columns; }});
    return {code, output.str(), messages.str()};
  }

  FakeClock clock;
  FakeInterruption interruption;
  std::string host;                    ///< passed as --host when not empty
  std::string windowProgram;           ///< started by the command ventana
  std::string typed;                   ///< what the person types
  bool terminal = false;               ///< whether a person is there
  std::optional<std::size_t> columns;  ///< of the terminal that shows the output
};

}  // namespace tolvan::test
