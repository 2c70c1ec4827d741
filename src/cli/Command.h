// A command of the program, as a value: what help, the manual page, the completion and the parser have to know of it,
// and the function that does its work. In a shop an order is a purchase, so in code the program's "órdenes" are
// commands.
#pragma once

#include <functional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace tolvan {

class CommandCall;

/// The exit codes of the program.
enum class ExitCode {
  Done = 0,
  Failed = 1,       ///< nothing was applied, or the message says what was
  Usage = 2,        ///< wrong usage
  Rejected = 3,     ///< done, but some input was rejected
  Unreachable = 4,  ///< the host's configuration or database
};

/// Ends a command. The text is for people; it may hold CR LF.
class CommandFailure : public std::runtime_error {
 public:
  CommandFailure(ExitCode code, const std::string& text) : std::runtime_error(text), code_(code) {}

  ExitCode Code() const noexcept { return code_; }

 private:
  ExitCode code_;
};

/// A positional argument. A repeated one takes all that are left and comes last.
struct ArgumentDefinition {
  std::string name;     ///< upper case, as help shows it
  std::string summary;  ///< Spanish
  bool required = true;
  bool repeated = false;
  bool isPath = false;               ///< completed as a file name
  bool isCommand = false;            ///< completed as the name of a command
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
  std::string words;    ///< after the program's name; blanks part words, nothing is quoted
  std::string summary;  ///< Spanish, what it does
};

struct Command {
  std::string name;
  std::string summary;  ///< Spanish, one sentence without a full stop
  std::vector<ArgumentDefinition> arguments{};
  std::vector<OptionDefinition> options{};
  std::string notes{};  ///< further help, Spanish; may be empty
  std::vector<ExampleDefinition> examples{};
  /// Does the work. Throws CommandFailure, or HostError, which ends with exit code 1.
  std::function<ExitCode(CommandCall& call)> run{};
};

std::vector<std::string> NamesOf(std::span<const Command> commands);

/// The options that every command takes.
std::vector<OptionDefinition> GlobalOptions();

}  // namespace tolvan
