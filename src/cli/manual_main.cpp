// Prints the manual page or the completion of the command; the build calls it.
#include <iostream>
#include <string_view>
#include <vector>

#include "cli/BashCompletion.h"
#include "cli/ManualPage.h"
#include "cli/Order.h"

int main(int count, char** arguments) {
  const std::vector<tolvan::OrderDefinition> definitions = tolvan::AllDefinitions();
  const bool completion = count > 1 && std::string_view(arguments[1]) == "completion";
  std::cout << (completion ? tolvan::BashCompletion(definitions) : tolvan::ManualPage(definitions));
  return std::cout.flush() ? 0 : 1;
}
