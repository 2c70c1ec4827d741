// The program from its words to its exit code. Everything it touches of the process comes in through
// ProgramEnvironment, so that tests run it in-process.
#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

#include "cli/Terminal.h"

namespace tolvan {

class Clock;
class Interruption;

struct ProgramEnvironment {
  std::istream& input;
  std::ostream& output;
  std::ostream& messages;
  Clock& clock;
  Interruption& interruption;
  std::string defaultHost;       ///< the configuration used without --host
  std::string windowProgram{};   ///< the program that shows the windows
  bool inputIsTerminal = false;  ///< a person can be asked
  bool messagesAreTerminal = false;
  TerminalColumns outputColumns{};
  TerminalColumns messagesColumns{};
  std::function<std::string()> outputFailure{};  ///< why `output` has become bad, Spanish; may be empty
};

/// Runs one call and returns its exit code. `words` are those after the program's name.
int RunProgram(const std::vector<std::string>& words, const ProgramEnvironment& environment);

}  // namespace tolvan
