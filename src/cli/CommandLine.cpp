// The library splits the words; what is missing, unknown or not allowed is told here, in Spanish, so nothing is
// required of the library and whatever it does not know is kept for us to name.
#include "cli/CommandLine.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <map>

#include "cli/CommandFailure.h"

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

/// What is no option. Throws for a word that looks like one; "-" alone is an argument.
std::vector<std::string> GivenArguments(const CLI::App& app, const std::string& where) {
  std::vector<std::string> words = app.remaining(true);
  const auto unknown = std::ranges::find_if(words, [](const auto& word) { return word.size() > 1 && word[0] == '-'; });
  if (unknown != words.end()) throw Usage("Opción desconocida" + where + ": " + *unknown);
  return words;
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

/// "a, b o c".
std::string Listed(const std::vector<std::string>& choices) {
  std::string text = choices.front();
  for (std::size_t index = 1; index < choices.size(); ++index) {
    text += (index + 1 < choices.size() ? ", " : " o ") + choices[index];
  }
  return text;
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
  if (chosen.empty()) {
    if (command.help || command.version) return command;
    const std::vector<std::string> words = GivenArguments(app, "");
    throw Usage(words.empty() ? "Falta la orden" : "No existe la orden \"" + words.front() + "\"");
  }
  const auto order = std::ranges::find(orders, chosen.front()->get_name(), &OrderDefinition::name);
  command.order = order->name;
  command.help = command.help || chosen.front()->count("--help") > 0;
  if (command.help || command.version) return command;
  command.given = {.arguments = GivenArguments(app, " en la orden " + order->name),
                   .options = GivenOptions(*chosen.front())};
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
