#include "cli/HelpText.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/Text.h"
#include "base/TextColumns.h"

namespace tolvan {
namespace {

using Lines = std::vector<std::pair<std::string, std::string>>;

constexpr const char* noBreakSpace = "\u00A0";

/// The text at words in lines of `columns`, all but the first behind `indent` blanks.
std::string Wrapped(std::string_view text, std::size_t columns, std::size_t indent = 0) {
  std::string wrapped;
  for (const std::string& line : WrapAtWords(text, columns - std::min(columns - 1, indent))) {
    wrapped += (wrapped.empty() ? std::string() : '\n' + std::string(indent, ' ')) + line;
  }
  return ReplaceAll(wrapped, noBreakSpace, " ");
}

/// Two columns, the second one aligned. Where it would be too narrow to read, it goes below the first.
std::string Columns(const Lines& lines, std::size_t columns) {
  constexpr std::size_t narrowest = 24;
  constexpr std::size_t indent = 6;
  std::size_t width = 0;
  for (const auto& line : lines) width = std::max(width, CountColumns(line.first));
  const bool beside = width + 4 + narrowest <= columns;
  const std::size_t start = beside ? width + 4 : indent;
  std::string text;
  for (const auto& [left, right] : lines) {
    const std::string gap = beside ? std::string(width - CountColumns(left) + 2, ' ') : '\n' + std::string(indent, ' ');
    text += "  " + left + gap + Wrapped(right, columns, start) + '\n';
  }
  return text;
}

std::string Section(const std::string& title, const Lines& lines, std::size_t columns) {
  return lines.empty() ? std::string() : '\n' + title + ":\n" + Columns(lines, columns);
}

std::string WithValue(const OptionDefinition& option) {
  return option.valueName.empty() ? option.name : option.name + ' ' + option.valueName;
}

Lines OptionLines(std::span<const OptionDefinition> options) {
  Lines lines;
  for (const OptionDefinition& option : options) lines.emplace_back(WithValue(option), option.summary);
  return lines;
}

Lines GeneralLines() {
  Lines lines = OptionLines(GlobalOptions());
  lines.emplace_back("-h, --help, --ayuda", "muestra esta ayuda");
  return lines;
}

std::string Bracketed(const std::string& text, bool required, bool repeated) {
  return (required ? text : '[' + text + ']') + (repeated ? "…" : "");
}

/// The words of the usage line; what belongs together is one.
std::vector<std::string> UsageWords(const OrderDefinition& order) {
  std::vector<std::string> words{"[GENERALES]", order.name};
  for (const ArgumentDefinition& argument : order.arguments) {
    words.push_back(Bracketed(argument.name, argument.required, argument.repeated));
  }
  for (const OptionDefinition& option : order.options) {
    words.push_back(Bracketed(WithValue(option), option.required, option.repeated));
  }
  return words;
}

std::string WrappedUsage(const OrderDefinition& order, std::size_t columns) {
  std::string line = "Uso: " + std::string(programName);
  for (const std::string& word : UsageWords(order)) line += ' ' + ReplaceAll(word, " ", noBreakSpace);
  constexpr std::size_t indent = 7;
  return Wrapped(line, columns, indent) + '\n';
}

/// A call stands on a line of its own, whole, so that it can be copied.
std::string Examples(const OrderDefinition& order, std::size_t columns) {
  constexpr std::size_t indent = 6;
  std::string text;
  for (const ExampleDefinition& example : order.examples) {
    text += "  " + ExampleLine(example) + '\n' + std::string(indent, ' ') + Wrapped(example.summary, columns, indent) +
            '\n';
  }
  return text.empty() ? text : "\nEjemplos:\n" + text;
}

}  // namespace

std::string VersionText() {
  return std::string(programName) + ' ' + TOLVAN_VERSION;
}

std::string UsageLine(const OrderDefinition& order) {
  std::string line{programName};
  for (const std::string& word : UsageWords(order)) line += ' ' + word;
  return line;
}

std::string ExampleLine(const ExampleDefinition& example) {
  return std::string(programName) + ' ' + example.words;
}

std::string CommandHelp(std::span<const OrderDefinition> orders, std::size_t columns) {
  Lines lines;
  for (const OrderDefinition& order : orders) lines.emplace_back(order.name, order.summary);
  Lines general = GeneralLines();
  general.emplace_back("--version", "muestra la versión");
  return "Tolvan: Importar y Exportar Datos\n\n" +
         Wrapped("Uso: " + std::string(programName) + " [GENERALES] ORDEN [ARGUMENTOS]", columns) + '\n' +
         Section("Órdenes", lines, columns) + Section("Opciones generales", general, columns) + '\n' +
         Wrapped("La ayuda de una orden, con ejemplos: " + std::string(programName) + " ayuda ORDEN", columns) + '\n';
}

std::string OrderHelp(const OrderDefinition& order, std::size_t columns) {
  Lines arguments;
  for (const ArgumentDefinition& argument : order.arguments) arguments.emplace_back(argument.name, argument.summary);
  return WrappedUsage(order, columns) + '\n' + Wrapped(order.summary + '.', columns) + '\n' +
         Section("Argumentos", arguments, columns) + Section("Opciones", OptionLines(order.options), columns) +
         Section("Opciones generales", GeneralLines(), columns) +
         (order.notes.empty() ? std::string() : '\n' + Wrapped(order.notes, columns) + '\n') + Examples(order, columns);
}

}  // namespace tolvan
