#include "cli/Help.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/Text.h"

namespace tolvan {
namespace {

using Lines = std::vector<std::pair<std::string, std::string>>;

constexpr const char* noBreakSpace = "\u00A0";

/// The text wrapped at words to `columns`, with `indent` blanks before every line but the first.
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
std::vector<std::string> UsageWords(const Command& command) {
  std::vector<std::string> words{"[GENERALES]", command.name};
  for (const ArgumentDefinition& argument : command.arguments) {
    words.push_back(Bracketed(argument.name, argument.required, argument.repeated));
  }
  for (const OptionDefinition& option : command.options) {
    words.push_back(Bracketed(WithValue(option), option.required, option.repeated));
  }
  return words;
}

/// "tolvan-impexp [GENERALES] ORDEN ARGUMENTOS…".
std::string UsageLine(const Command& command) {
  std::string line{programName};
  for (const std::string& word : UsageWords(command)) line += ' ' + word;
  return line;
}

std::string WrappedUsage(const Command& command, std::size_t columns) {
  std::string line = "Uso: " + std::string(programName);
  for (const std::string& word : UsageWords(command)) line += ' ' + ReplaceAll(word, " ", noBreakSpace);
  constexpr std::size_t indent = 7;
  return Wrapped(line, columns, indent) + '\n';
}

std::string ExampleLine(const ExampleDefinition& example) {
  return std::string(programName) + ' ' + example.words;
}

/// A call has a line of its own and is never broken, so that it can be copied.
std::string Examples(const Command& command, std::size_t columns) {
  constexpr std::size_t indent = 6;
  std::string text;
  for (const ExampleDefinition& example : command.examples) {
    text += "  " + ExampleLine(example) + '\n' + std::string(indent, ' ') + Wrapped(example.summary, columns, indent) +
            '\n';
  }
  return text.empty() ? text : "\nEjemplos:\n" + text;
}

/// Text that roff takes literally: hyphens as minus signs, no line that begins a request.
std::string Roff(std::string_view text) {
  std::string escaped = ReplaceAll(ReplaceAll(text, "\\", "\\e"), "-", "\\-");
  if (escaped.starts_with('.') || escaped.starts_with('\'')) escaped.insert(0, "\\&");
  return escaped;
}

std::string Item(std::string_view term, std::string_view text) {
  return ".TP\n\\fB" + Roff(term) + "\\fR\n" + Roff(text) + ".\n";
}

std::string OptionItems(std::span<const OptionDefinition> options) {
  std::string text;
  for (const OptionDefinition& option : options) {
    text += Item(option.valueName.empty() ? option.name : option.name + ' ' + option.valueName, option.summary);
  }
  return text;
}

std::string CommandSection(const Command& command) {
  std::string text =
      ".SS " + Roff(command.name) + "\n.B " + Roff(UsageLine(command)) + "\n.PP\n" + Roff(command.summary) + ".\n";
  for (const ArgumentDefinition& argument : command.arguments) text += Item(argument.name, argument.summary);
  text += OptionItems(command.options);
  if (!command.notes.empty()) text += ".PP\n" + Roff(command.notes) + '\n';
  for (const ExampleDefinition& example : command.examples) text += Item(ExampleLine(example), example.summary);
  return text;
}

std::string ExitStatus() {
  return ".SH ESTADO DE SALIDA\n" + Item("0", "hecho") +
         Item("1", "la operación falló; nada se aplicó, o el mensaje dice qué se aplicó") +
         Item("2", "uso incorrecto") + Item("3", "hecho, pero parte de la entrada se rechazó") +
         Item("4", "no se pudo llegar al host: su configuración o su base de datos");
}

}  // namespace

std::string VersionText() {
  return std::string(programName) + ' ' + TOLVAN_VERSION;
}

std::string HelpOfAll(std::span<const Command> commands, std::size_t columns) {
  Lines lines;
  for (const Command& command : commands) lines.emplace_back(command.name, command.summary);
  Lines general = GeneralLines();
  general.emplace_back("--version", "muestra la versión");
  return "Tolvan: Importar y Exportar Datos\n\n" +
         Wrapped("Uso: " + std::string(programName) + " [GENERALES] ORDEN [ARGUMENTOS]", columns) + '\n' +
         Section("Órdenes", lines, columns) + Section("Opciones generales", general, columns) + '\n' +
         Wrapped("La ayuda de una orden, con ejemplos: " + std::string(programName) + " ayuda ORDEN", columns) + '\n';
}

std::string HelpOf(const Command& command, std::size_t columns) {
  Lines arguments;
  for (const ArgumentDefinition& argument : command.arguments) arguments.emplace_back(argument.name, argument.summary);
  return WrappedUsage(command, columns) + '\n' + Wrapped(command.summary + '.', columns) + '\n' +
         Section("Argumentos", arguments, columns) + Section("Opciones", OptionLines(command.options), columns) +
         Section("Opciones generales", GeneralLines(), columns) +
         (command.notes.empty() ? std::string() : '\n' + Wrapped(command.notes, columns) + '\n') +
         Examples(command, columns);
}

std::string ManualPage(std::span<const Command> commands) {
  std::string text = ".TH TOLVAN\\-IMPEXP 1\n.SH NOMBRE\ntolvan\\-impexp \\- importa y exporta datos de Tolvan\n";
  text += ".SH SINOPSIS\n.B tolvan\\-impexp\n[GENERALES] ORDEN [ARGUMENTOS]\n";
  text += ".SH OPCIONES GENERALES\n" + OptionItems(GlobalOptions());
  text += Item("-h, --help, --ayuda", "muestra la ayuda, también la de una orden") +
          Item("--version", "muestra la versión");
  text += ".SH ÓRDENES\n";
  for (const Command& command : commands) text += CommandSection(command);
  text += ExitStatus();
  return text + ".SH ARCHIVOS\n" +
         Item("tolvan/tolvan.ini", "configuración del host, en la carpeta XDG de configuración") + ".SH ENTORNO\n" +
         Item("TOLVAN_HOST", "ruta de la configuración del host cuando falta --host");
}

}  // namespace tolvan
