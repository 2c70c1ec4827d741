// Prints the manual page or the completion of the command; the build calls it.
#include <iostream>
#include <string_view>
#include <vector>

#include "cli/ManualPage.h"
#include "cli/Order.h"

int main(int count, char** arguments) {
  std::vector<tolvan::OrderDefinition> definitions;
  for (const auto& order : tolvan::AllOrders()) definitions.push_back(order->Definition());
  const bool completion = count > 1 && std::string_view(arguments[1]) == "completion";
  std::cout << (completion ? tolvan::BashCompletion(definitions) : tolvan::ManualPage(definitions));
  return std::cout.flush() ? 0 : 1;
}
