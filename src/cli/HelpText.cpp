#include "cli/HelpText.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/Text.h"

namespace tolvan {
namespace {

using Lines = std::vector<std::pair<std::string, std::string>>;

/// Two columns, the second one aligned.
std::string Columns(const Lines& lines) {
  std::size_t width = 0;
  for (const auto& line : lines) width = std::max(width, CountCharacters(line.first));
  std::string text;
  for (const auto& [left, right] : lines) {
    text += "  " + left + std::string(width - CountCharacters(left) + 2, ' ') + right + '\n';
  }
  return text;
}

std::string Section(const std::string& title, const Lines& lines) {
  return lines.empty() ? std::string() : '\n' + title + ":\n" + Columns(lines);
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

}  // namespace

std::string VersionText() {
  return std::string(programName) + ' ' + TOLVAN_VERSION;
}

std::string UsageLine(const OrderDefinition& order) {
  std::string line = std::string(programName) + " [GENERALES] " + order.name;
  for (const ArgumentDefinition& argument : order.arguments) {
    line += ' ' + Bracketed(argument.name, argument.required, argument.repeated);
  }
  for (const OptionDefinition& option : order.options) {
    line += ' ' + Bracketed(WithValue(option), option.required, option.repeated);
  }
  return line;
}

std::string CommandHelp(std::span<const OrderDefinition> orders) {
  Lines lines;
  for (const OrderDefinition& order : orders) lines.emplace_back(order.name, order.summary);
  Lines general = GeneralLines();
  general.emplace_back("--version", "muestra la versión");
  return "Tolvan: Importar y Exportar Datos\n\nUso: " + std::string(programName) + " [GENERALES] ORDEN [ARGUMENTOS]\n" +
         Section("Órdenes", lines) + Section("Opciones generales", general) +
         "\nLa ayuda de una orden: " + std::string(programName) + " ORDEN --ayuda\n";
}

std::string OrderHelp(const OrderDefinition& order) {
  Lines arguments;
  for (const ArgumentDefinition& argument : order.arguments) arguments.emplace_back(argument.name, argument.summary);
  return "Uso: " + UsageLine(order) + "\n\n" + order.summary + ".\n" + Section("Argumentos", arguments) +
         Section("Opciones", OptionLines(order.options)) + Section("Opciones generales", GeneralLines()) +
         (order.notes.empty() ? std::string() : '\n' + order.notes + '\n');
}

}  // namespace tolvan
