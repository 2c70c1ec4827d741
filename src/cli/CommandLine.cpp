// The library splits the words; what is missing, unknown or not allowed is told here, in Spanish, so nothing is
// required of the library and whatever it does not know is kept for us to name.
#include "cli/CommandLine.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <map>

#include "cli/CommandFailure.h"
#include "cli/Suggestion.h"

namespace tolvan {
namespace {

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

void AddOrder(CLI::App& app, const OrderDefinition& order) {
  CLI::App* sub = app.add_subcommand(order.name);
  AddHelp(*sub);
  sub->fallthrough()->allow_extras();
  for (const OptionDefinition& option : order.options) AddOption(*sub, option);
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

std::vector<std::string> NamesOf(std::span<const OptionDefinition> options) {
  std::vector<std::string> names{"--ayuda", "--help", "--version"};
  for (const OptionDefinition& option : options) names.push_back(option.name);
  for (const OptionDefinition& option : GlobalOptions()) names.push_back(option.name);
  return names;
}

/// What is no option. Throws for a word that looks like one.
std::vector<std::string> GivenArguments(const CLI::App& app, const OrderDefinition& order) {
  std::vector<std::string> words = app.remaining(true);
  const auto unknown = std::ranges::find_if(words, &LooksLikeOption);
  if (unknown == words.end()) return words;
  throw Usage("Opción desconocida en la orden " + order.name + ": " + *unknown +
              DidYouMean(NameOfOption(*unknown), NamesOf(order.options)));
}

[[noreturn]] void RefuseOptionBeforeOrder(const std::string& name, std::span<const OrderDefinition> orders) {
  for (const OrderDefinition& order : orders) {
    if (std::ranges::find(order.options, name, &OptionDefinition::name) == order.options.end()) continue;
    throw Usage("La opción " + name + " va detrás de su orden");
  }
  throw Usage("Opción desconocida: " + name + DidYouMean(name, NamesOf({})));
}

/// Throws unless the first word that is neither a general option nor its value is an order.
void CheckBeginsWithOrder(std::span<const std::string> words, std::span<const OrderDefinition> orders) {
  const std::vector<OptionDefinition> globals = GlobalOptions();
  for (auto word = words.begin(); word != words.end(); ++word) {
    if (!LooksLikeOption(*word)) {
      const std::vector<std::string> names = OrderNames(orders);
      if (std::ranges::find(names, *word) != names.end()) return;
      const auto order = std::find_first_of(word, words.end(), names.begin(), names.end());
      if (order == words.end() || !DidYouMean(*word, names).empty()) throw Usage(UnknownOrder(*word, names));
      throw Usage("La orden va delante de sus argumentos: \"" + *word + "\" está antes de " + *order);
    }
    const auto global = std::ranges::find(globals, NameOfOption(*word), &OptionDefinition::name);
    if (global == globals.end()) RefuseOptionBeforeOrder(NameOfOption(*word), orders);
    if (!global->valueName.empty() && word->find('=') == std::string::npos) ++word;
  }
  throw Usage("Falta la orden");
}

void CheckCount(const ParsedOrder& given, const OrderDefinition& order) {
  const bool unlimited = !order.arguments.empty() && order.arguments.back().repeated;
  if (unlimited || given.arguments.size() <= order.arguments.size()) return;
  throw Usage("Argumento de más en la orden " + order.name + ": " + given.arguments[order.arguments.size()]);
}

void CheckRequired(const ParsedOrder& given, const OrderDefinition& order) {
  const auto required = std::ranges::count_if(order.arguments, [](const auto& argument) { return argument.required; });
  const auto count = std::ssize(given.arguments);
  if (count < required) {
    throw Usage("La orden " + order.name + " requiere " + order.arguments[static_cast<std::size_t>(count)].name);
  }
  for (std::size_t index = 0; index < order.arguments.size() && index < given.arguments.size(); ++index) {
    const ArgumentDefinition& argument = order.arguments[index];
    if (argument.isPath && given.arguments[index].empty()) throw Usage("El argumento " + argument.name + " está vacío");
  }
  for (const OptionDefinition& option : order.options) {
    if (option.required && !given.Has(option.name)) {
      throw Usage("La orden " + order.name + " requiere " + option.name + " " + option.valueName);
    }
  }
}

void CheckOptions(const ParsedOrder& given, std::span<const OptionDefinition> options) {
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

ParsedCommand ParseCommandLine(const std::vector<std::string>& arguments, std::span<const OrderDefinition> orders) {
  const std::vector<OptionDefinition> globals = GlobalOptions();
  CLI::App app;
  AddHelp(app);
  app.add_flag("--version");
  app.allow_extras()->require_subcommand(0, 1);  // an argument may be called like an order
  for (const OptionDefinition& option : globals) AddOption(app, option);
  for (const OrderDefinition& order : orders) AddOrder(app, order);
  // What stands behind "--" is arguments, whatever it looks like; the library would not hand it to the order.
  const auto end = std::ranges::find(arguments, "--");
  Parse(app, {arguments.begin(), end});

  ParsedCommand command;
  command.global.options = GivenOptions(app);
  command.help = app.count("--help") > 0;
  command.version = app.count("--version") > 0;
  const std::vector<CLI::App*> chosen = app.get_subcommands();
  if (!chosen.empty()) {
    command.order = chosen.front()->get_name();
    command.help = command.help || chosen.front()->count("--help") > 0;
  }
  if (command.help || command.version) return command;
  CheckBeginsWithOrder({arguments.begin(), end}, orders);
  const auto order = std::ranges::find(orders, command.order, &OrderDefinition::name);
  command.given = {.arguments = GivenArguments(app, *order), .options = GivenOptions(*chosen.front())};
  if (end != arguments.end()) {
    command.given.arguments.insert(command.given.arguments.end(), std::next(end), arguments.end());
  }
  CheckCount(command.given, *order);
  CheckRequired(command.given, *order);
  CheckOptions(command.given, order->options);
  CheckOptions(command.global, globals);
  return command;
}

}  // namespace tolvan
