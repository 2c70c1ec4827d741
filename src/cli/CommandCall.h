// One call of a command: what the user gave, where results and messages go, and the host that the command works on.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/Calendar.h"
#include "cli/CommandLine.h"
#include "cli/Terminal.h"
#include "component/clsImpExp.h"
#include "store/ConfiguredHostFactory.h"

namespace tolvan {

class ConfiguredHostFactory;
struct ProgramEnvironment;

/// A value of a result. As text a list is the number of its elements, a boolean "sí" or "no".
using ResultValue = std::variant<std::nullptr_t, bool, std::int64_t, std::string, std::vector<std::string>>;

struct ResultField {
  std::string key;  ///< in JSON
  ResultValue value;
  std::string label{};  ///< in text; where it is empty the field is in JSON only
};
using Result = std::vector<ResultField>;

/// A JSON object of the fields, over several lines, without an end of line. Bytes that are not UTF-8 are replaced.
std::string JsonText(const Result& result);

/// The host of one call: the configuration read, the component attached to it, its settings loaded.
class CommandHost {
 public:
  /// Reads the configuration at `path` and makes the component. Throws CommandFailure Unreachable.
  CommandHost(const std::string& path, const HostFront& front);
  ~CommandHost();
  CommandHost(const CommandHost&) = delete;
  CommandHost& operator=(const CommandHost&) = delete;

  clsImpExp& Component() { return *component_; }
  const ComponentContext& Context() const { return component_->Context(); }

  /// Opens the database now, so that one that cannot be reached ends the call before anything else is done. Throws
  /// CommandFailure Unreachable.
  DatabaseServices& RequireDatabase() const;

  /// What the user should be told about the configuration and the settings; empty when all was well.
  std::string Notice() const;

 private:
  std::unique_ptr<ConfiguredHostFactory> factory_;
  std::unique_ptr<clsImpExp> component_;
};

class CommandCall {
 public:
  /// Both must outlive the call.
  CommandCall(const ParsedCommandLine& line, const ProgramEnvironment& environment);

  const ParsedWords& Given() const { return line_.given; }

  /// The first argument, or the value of an option, as an absolute path: seen from the current folder, and without
  /// "." and "..". Empty when nothing was given.
  std::string PathArgument() const;
  std::string PathOption(const std::string& name) const;

  /// The day that --fecha gives, if it is given. Throws CommandFailure Usage for what is no date.
  std::optional<Date> GivenDate() const;

  bool WantsJson() const { return line_.global.Has("--json"); }

  /// Whether progress may be drawn: standard error is a terminal and nobody asked for silence or plain output.
  bool ShowsProgress() const;

  /// Standard output; nothing goes there but the result. With --json only the Print functions may be used.
  std::ostream& Out();

  /// Prints the result of the call: JSON when that is wanted, else a line for each field with a label, the values
  /// aligned.
  void Print(const Result& result);

  /// Print the one JSON document of the call. A command still throws or returns a failure that the document
  /// reports.
  void PrintJson(const Result& object) { PrintJsonText(JsonText(object)); }
  void PrintJson(const std::vector<Result>& array);
  void PrintJsonText(std::string_view document);
  bool JsonPrinted() const { return jsonPrinted_; }

  /// Standard error: a line of text for people. CR LF becomes LF.
  void PrintMessage(std::string_view text);
  std::ostream& Messages();

  /// The terminal that shows standard output, and standard error.
  const TerminalColumns& OutColumns() const;
  const TerminalColumns& MessagesColumns() const;

  Clock& SystemClock();
  Interruption& UserInterruption();

  /// The configured host with the component on it, opened at the first call. Throws CommandFailure Unreachable.
  CommandHost& Host();

  /// A host of the command's own making, from the configuration at `path`. Throws CommandFailure Unreachable.
  std::unique_ptr<CommandHost> OpenHost(const std::string& path);

  /// The path of the configuration that Host() opens, and of the program that shows the windows; both absolute.
  std::string HostPath() const;
  std::string WindowProgram() const;

  /// Whether the call itself names the configuration; else it is the usual one, which may not be there yet.
  bool HostIsNamed() const { return line_.global.Has("--host"); }

 private:
  const ParsedCommandLine& line_;
  const ProgramEnvironment& environment_;
  ConsoleDialogs dialogs_;
  std::unique_ptr<CommandHost> host_;
  bool jsonPrinted_ = false;
};

}  // namespace tolvan
