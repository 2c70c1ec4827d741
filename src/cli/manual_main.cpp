// Prints the manual page or the completion of the program; the build calls it.
#include <iostream>
#include <string_view>
#include <vector>

#include "cli/Help.h"
#include "cli/commands/AllCommands.h"

int main(int count, char** arguments) {
  const std::vector<tolvan::Command> commands = tolvan::AllCommands();
  const bool completion = count > 1 && std::string_view(arguments[1]) == "completion";
  std::cout << (completion ? tolvan::BashCompletion(commands) : tolvan::ManualPage(commands));
  return std::cout.flush() ? 0 : 1;
}
