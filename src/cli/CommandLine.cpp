// The library splits the words; what is missing, unknown or not allowed is reported here, in Spanish. So the library is
// asked to require nothing, and keeps whatever it does not know for us to name.
#include "cli/CommandLine.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <map>
#include <utility>

#include "base/Text.h"

namespace tolvan {
namespace {

/// How many letters are missing, added, changed or swapped with their neighbour.
std::size_t Distance(std::string_view left, std::string_view right) {
  std::vector<std::size_t> beforeLast(right.size() + 1);
  std::vector<std::size_t> last(right.size() + 1);
  std::vector<std::size_t> row(right.size() + 1);
  for (std::size_t column = 0; column <= right.size(); ++column) row[column] = column;
  for (std::size_t line = 1; line <= left.size(); ++line) {
    beforeLast = std::exchange(last, row);
    row[0] = line;
    for (std::size_t column = 1; column <= right.size(); ++column) {
      const std::size_t changed = left[line - 1] == right[column - 1] ? 0 : 1;
      row[column] = std::min({last[column] + 1, row[column - 1] + 1, last[column - 1] + changed});
      const bool swapped =
          line > 1 && column > 1 && left[line - 1] == right[column - 2] && left[line - 2] == right[column - 1];
      if (swapped) row[column] = std::min(row[column], beforeLast[column - 2] + 1);
    }
  }
  return row.back();
}

/// "a, b o c". `choices` is not empty.
std::string Listed(const std::vector<std::string>& choices) {
  std::string text = choices.front();
  for (std::size_t index = 1; index < choices.size(); ++index) {
    text += (index + 1 < choices.size() ? ", " : " o ") + choices[index];
  }
  return text;
}

CommandFailure Usage(const std::string& text) {
  return {ExitCode::Usage, text};
}

void AddOption(CLI::App& app, const OptionDefinition& option) {
  if (option.valueName.empty()) {
    app.add_flag(option.name);
  } else {
    app.add_option(option.name)->expected(1)->take_all()->allow_extra_args(false);
  }
}

void AddHelp(CLI::App& app) {
  app.set_help_flag();
  app.add_flag("-h,--help,--ayuda");
}

void AddCommand(CLI::App& app, const Command& command) {
  CLI::App* sub = app.add_subcommand(command.name);
  AddHelp(*sub);
  sub->fallthrough()->allow_extras();
  for (const OptionDefinition& option : command.options) AddOption(*sub, option);
}

/// The named options of `app` in the order in which they were given.
std::vector<GivenOption> GivenOptions(const CLI::App& app) {
  std::vector<GivenOption> given;
  std::map<const CLI::Option*, std::size_t> seen;
  for (const CLI::Option* option : app.parse_order()) {
    const std::size_t occurrence = seen[option]++;
    const bool isFlag = option->get_expected_max() == 0;
    const auto& results = option->results();
    const std::string value = isFlag || occurrence >= results.size() ? std::string() : results[occurrence];
    given.push_back({.name = "--" + option->get_lnames().front(), .value = value});
  }
  return given;
}

/// "-" alone is an argument.
bool LooksLikeOption(const std::string& word) {
  return word.size() > 1 && word[0] == '-';
}

/// The name in "--name=value" and in "--name".
std::string NameOfOption(const std::string& word) {
  return word.substr(0, word.find('='));
}

std::vector<std::string> OptionNames(std::span<const OptionDefinition> options) {
  std::vector<std::string> names{"--ayuda", "--help", "--version"};
  for (const OptionDefinition& option : options) names.push_back(option.name);
  for (const OptionDefinition& option : GlobalOptions()) names.push_back(option.name);
  return names;
}

/// What is no option. Throws for a word that looks like one.
std::vector<std::string> GivenArguments(const CLI::App& app, const Command& command) {
  std::vector<std::string> words = app.remaining(true);
  const auto unknown = std::ranges::find_if(words, &LooksLikeOption);
  if (unknown == words.end()) return words;
  throw Usage("Opción desconocida en la orden " + command.name + ": " + *unknown +
              DidYouMean(NameOfOption(*unknown), OptionNames(command.options)));
}

[[noreturn]] void RefuseOptionBeforeCommand(const std::string& name, std::span<const Command> commands) {
  for (const Command& command : commands) {
    if (std::ranges::find(command.options, name, &OptionDefinition::name) == command.options.end()) continue;
    throw Usage("La opción " + name + " va detrás de su orden");
  }
  throw Usage("Opción desconocida: " + name + DidYouMean(name, OptionNames({})));
}

/// Throws unless the first word that is neither a general option nor its value is a command.
void CheckBeginsWithCommand(std::span<const std::string> words, std::span<const Command> commands) {
  const std::vector<OptionDefinition> globals = GlobalOptions();
  for (auto word = words.begin(); word != words.end(); ++word) {
    if (!LooksLikeOption(*word)) {
      const std::vector<std::string> names = NamesOf(commands);
      if (std::ranges::find(names, *word) != names.end()) return;
      const auto command = std::find_first_of(word, words.end(), names.begin(), names.end());
      if (command == words.end() || !DidYouMean(*word, names).empty()) throw Usage(UnknownCommand(*word, names));
      throw Usage("La orden va delante de sus argumentos: \"" + *word + "\" está antes de " + *command);
    }
    const auto global = std::ranges::find(globals, NameOfOption(*word), &OptionDefinition::name);
    if (global == globals.end()) RefuseOptionBeforeCommand(NameOfOption(*word), commands);
    if (!global->valueName.empty() && word->find('=') == std::string::npos) ++word;
  }
  throw Usage("Falta la orden");
}

void CheckCount(const ParsedWords& given, const Command& command) {
  const bool unlimited = !command.arguments.empty() && command.arguments.back().repeated;
  if (unlimited || given.arguments.size() <= command.arguments.size()) return;
  throw Usage("Argumento de más en la orden " + command.name + ": " + given.arguments[command.arguments.size()]);
}

void CheckRequired(const ParsedWords& given, const Command& command) {
  const auto required =
      std::ranges::count_if(command.arguments, [](const auto& argument) { return argument.required; });
  const auto count = std::ssize(given.arguments);
  if (count < required) {
    throw Usage("La orden " + command.name + " requiere " + command.arguments[static_cast<std::size_t>(count)].name);
  }
  for (std::size_t index = 0; index < command.arguments.size() && index < given.arguments.size(); ++index) {
    const ArgumentDefinition& argument = command.arguments[index];
    if (argument.isPath && given.arguments[index].empty()) throw Usage("El argumento " + argument.name + " está vacío");
  }
  for (const OptionDefinition& option : command.options) {
    if (option.required && !given.Has(option.name)) {
      throw Usage("La orden " + command.name + " requiere " + option.name + " " + option.valueName);
    }
  }
}

void CheckOptions(const ParsedWords& given, std::span<const OptionDefinition> options) {
  for (const OptionDefinition& option : options) {
    const auto count = std::ranges::count(given.options, option.name, &GivenOption::name);
    if (count > 1 && !option.repeated && !option.valueName.empty()) {
      throw Usage("La opción " + option.name + " se indicó más de una vez");
    }
    if (count == 0 || option.choices.empty()) continue;
    const std::string value = given.Value(option.name);
    if (std::ranges::find(option.choices, value) == option.choices.end()) {
      throw Usage("La opción " + option.name + " no admite el valor \"" + value + "\": use " + Listed(option.choices));
    }
  }
}

/// The library's own refusals: an option without its value, or a flag with one.
CommandFailure Translated(const CLI::ParseError& error) {
  const std::string text = error.what();
  const std::string name = text.substr(0, text.find_first_of(": "));
  if (name.starts_with("-")) return Usage("Falta el valor de la opción " + name + ", o no admite ninguno");
  return Usage("No se entienden los argumentos: " + text);
}

void Parse(CLI::App& app, std::vector<std::string> arguments) {
  std::ranges::reverse(arguments);  // the library takes the words last to first
  try {
    app.parse(std::move(arguments));
  } catch (const CLI::ParseError& error) {
    throw Translated(error);
  }
}

}  // namespace

std::vector<OptionDefinition> GlobalOptions() {
  return {
      {.name = "--host",
       .summary = "configuración del host; si falta, la de $TOLVAN_HOST o tolvan/tolvan.ini en la carpeta XDG",
       .valueName = "RUTA",
       .isPath = true},
      {.name = "--json", .summary = "un documento JSON en la salida estándar y nada más en ella"},
      {.name = "--silencio", .summary = "sin indicación de progreso"},
      {.name = "--si", .summary = "responde que sí a las preguntas"},
  };
}

std::vector<std::string> NamesOf(std::span<const Command> commands) {
  std::vector<std::string> names;
  for (const Command& command : commands) names.push_back(command.name);
  return names;
}

bool ParsedWords::Has(const std::string& optionName) const {
  return std::ranges::any_of(options, [&](const GivenOption& given) { return given.name == optionName; });
}

std::string ParsedWords::Value(const std::string& optionName, const std::string& otherwise) const {
  std::string value = otherwise;
  for (const GivenOption& given : options) {
    if (given.name == optionName) value = given.value;
  }
  return value;
}

std::string DidYouMean(std::string_view word, const std::vector<std::string>& known) {
  constexpr std::size_t shortestPart = 3;
  const std::string wanted = ToLower(word);
  std::size_t nearest = std::max<std::size_t>(1, wanted.size() / 3);
  std::vector<std::string> found;
  for (const std::string& candidate : known) {
    const std::string lower = ToLower(candidate);
    const bool contains = wanted.size() >= shortestPart && lower.find(wanted) != std::string::npos;
    const std::size_t distance = contains ? 0 : Distance(wanted, lower);
    if (distance > nearest) continue;
    if (distance < nearest) found.clear();
    nearest = distance;
    found.push_back(candidate);
  }
  return found.empty() ? std::string() : "; ¿quiso decir " + Listed(found) + "?";
}

std::string UnknownCommand(const std::string& word, const std::vector<std::string>& commands) {
  return "No existe la orden \"" + word + '"' + DidYouMean(word, commands);
}

ParsedCommandLine ParseCommandLine(const std::vector<std::string>& words, std::span<const Command> commands) {
  const std::vector<OptionDefinition> globals = GlobalOptions();
  CLI::App app;
  AddHelp(app);
  app.add_flag("--version");
  app.allow_extras()->require_subcommand(0, 1);  // an argument may be called like a command
  for (const OptionDefinition& option : globals) AddOption(app, option);
  for (const Command& command : commands) AddCommand(app, command);
  // What follows "--" is arguments, whatever it looks like; the library would not hand it to the command.
  const auto end = std::ranges::find(words, "--");
  Parse(app, {words.begin(), end});

  ParsedCommandLine line;
  line.global.options = GivenOptions(app);
  line.help = app.count("--help") > 0;
  line.version = app.count("--version") > 0;
  const std::vector<CLI::App*> chosen = app.get_subcommands();
  if (!chosen.empty()) {
    line.command = chosen.front()->get_name();
    line.help = line.help || chosen.front()->count("--help") > 0;
  }
  if (line.help || line.version) return line;
  CheckBeginsWithCommand({words.begin(), end}, commands);
  const auto command = std::ranges::find(commands, line.command, &Command::name);
  line.given = {.arguments = GivenArguments(app, *command), .options = GivenOptions(*chosen.front())};
  if (end != words.end()) {
    line.given.arguments.insert(line.given.arguments.end(), std::next(end), words.end());
  }
  CheckCount(line.given, *command);
  CheckRequired(line.given, *command);
  CheckOptions(line.given, command->options);
  CheckOptions(line.global, globals);
  return line;
}

}  // namespace tolvan
