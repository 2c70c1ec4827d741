// What an order of the command looks like from outside. Parsing, help, the manual page and the shell completion are all
// made from these definitions.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace tolvan {

/// A positional argument. A repeated one takes all that are left and stands last.
struct ArgumentDefinition {
  std::string name;     ///< upper case, as help shows it
  std::string summary;  ///< Spanish
  bool required = true;
  bool repeated = false;
  bool isPath = false;               ///< completed as a file name
  bool isOrder = false;              ///< completed as the name of an order
  std::vector<std::string> words{};  ///< what completes it; one that ends in "=" waits for a value
};

/// An option with a value, or a flag when `valueName` is empty.
struct OptionDefinition {
  std::string name;     ///< with its dashes: "--fecha"
  std::string summary;  ///< Spanish
  std::string valueName{};
  bool required = false;
  bool repeated = false;
  bool isPath = false;
  std::vector<std::string> choices{};  ///< the only values taken; empty for any
};

/// A call as it can be typed.
struct ExampleDefinition {
  std::string words;    ///< behind the program's name; blanks part words, nothing is quoted
  std::string summary;  ///< Spanish, what it does
};

struct OrderDefinition {
  std::string name;
  std::string summary;  ///< Spanish, one sentence without a point
  std::vector<ArgumentDefinition> arguments{};
  std::vector<OptionDefinition> options{};
  std::string notes{};  ///< further help, Spanish; may be empty
  std::vector<ExampleDefinition> examples{};
};

std::vector<std::string> OrderNames(std::span<const OrderDefinition> orders);

/// The options that every order takes.
std::vector<OptionDefinition> GlobalOptions();

/// One option given on the command line, in the order given. A flag has an empty value.
struct GivenOption {
  std::string name;
  std::string value;
};

/// The arguments of one call, checked against the definition of its order.
struct ParsedOrder {
  std::vector<std::string> arguments;
  std::vector<GivenOption> options;

  bool Has(const std::string& optionName) const;

  /// The last value given; `otherwise` when the option was not given.
  std::string Value(const std::string& optionName, const std::string& otherwise = {}) const;
};

}  // namespace tolvan
