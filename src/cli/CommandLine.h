// The words of a call: parsed and checked against the commands' definitions, and what a user who mistyped one may have
// meant.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Command.h"

namespace tolvan {

/// One option given on the command line. A flag has an empty value.
struct GivenOption {
  std::string name;
  std::string value;
};

/// The arguments and options of one call, in the order in which they were given.
struct ParsedWords {
  std::vector<std::string> arguments;
  std::vector<GivenOption> options;

  bool Has(const std::string& optionName) const;

  /// The last value given; `otherwise` when the option was not given.
  std::string Value(const std::string& optionName, const std::string& otherwise = {}) const;
};

struct ParsedCommandLine {
  std::string command;  ///< empty when none was given
  ParsedWords given;    ///< the command's own arguments and options
  ParsedWords global;   ///< the options of GlobalOptions
  bool help = false;
  bool version = false;
};

/// Throws CommandFailure Usage, in Spanish, for what is unknown, missing or not one of the choices. With `help` or
/// `version` nothing else is checked.
ParsedCommandLine ParseCommandLine(const std::vector<std::string>& words, std::span<const Command> commands);

/// "; ¿quiso decir a o b?" with the known words nearest to `word`, or nothing when none is near: those that contain it,
/// else those that differ in the fewest letters missing, added, changed or swapped, at most one in three. Case does not
/// matter.
std::string DidYouMean(std::string_view word, const std::vector<std::string>& known);

/// "No existe la orden …", with what may have been meant.
std::string UnknownCommand(const std::string& word, const std::vector<std::string>& commands);

}  // namespace tolvan
