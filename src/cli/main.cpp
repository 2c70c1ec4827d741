// The program's process: signals, streams and the place of the configuration.
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "cli/Process.h"
#include "cli/Program.h"
#include "cli/Terminal.h"
#include "store/HostConfiguration.h"
#include "system/posix/PosixFiles.h"
#include "system/posix/PosixServices.h"

namespace {

std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : value;
}

std::string DefaultHost() {
  const std::string named = tolvan::ConfigurationOfEnvironment();
  return named.empty() ? tolvan::UsualConfiguration() : named;
}

/// The window program lies where this one does.
std::string WindowProgram() {
  std::error_code ignored;
  return std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path() / "tolvan-ventana";
}

/// Colour and cursor movement are unwanted where NO_COLOR is set or the terminal cannot do them.
bool DrawsOnTerminal() {
  return isatty(STDERR_FILENO) != 0 && Environment("NO_COLOR").empty() && Environment("TERM") != "dumb";
}

}  // namespace

int main(int count, char** arguments) {
  tolvan::OccupyStandardDescriptors();
  const std::vector<std::string> words(arguments + 1, arguments + count);
  tolvan::SystemClock clock;
  const tolvan::TerminalColumns messagesColumns = tolvan::ColumnsOfDescriptor(STDERR_FILENO);
  tolvan::MessageBuffer messageBuffer(*std::cerr.rdbuf(), messagesColumns);
  std::ostream messages(&messageBuffer);
  tolvan::SignalInterruption interruption(messages, DrawsOnTerminal());
  tolvan::DescriptorBuffer buffer(STDOUT_FILENO);
  std::ostream output(&buffer);
  const auto outputFailure = [&] { return TextForPeople(tolvan::SystemFailure(buffer.ErrorNumber(), {})); };
  return tolvan::RunProgram(words, {.input = std::cin,
                                    .output = output,
                                    .messages = messages,
                                    .clock = clock,
                                    .interruption = interruption,
                                    .defaultHost = DefaultHost(),
                                    .windowProgram = WindowProgram(),
                                    .inputIsTerminal = isatty(STDIN_FILENO) != 0,
                                    .messagesAreTerminal = DrawsOnTerminal(),
                                    .outputColumns = tolvan::ColumnsOfDescriptor(STDOUT_FILENO),
                                    .messagesColumns = messagesColumns,
                                    .outputFailure = outputFailure});
}
