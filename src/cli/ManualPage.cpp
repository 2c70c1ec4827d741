#include "cli/ManualPage.h"

#include "base/Text.h"
#include "cli/HelpText.h"

namespace tolvan {
namespace {

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

std::string OrderSection(const OrderDefinition& order) {
  std::string text =
      ".SS " + Roff(order.name) + "\n.B " + Roff(UsageLine(order)) + "\n.PP\n" + Roff(order.summary) + ".\n";
  for (const ArgumentDefinition& argument : order.arguments) text += Item(argument.name, argument.summary);
  text += OptionItems(order.options);
  if (!order.notes.empty()) text += ".PP\n" + Roff(order.notes) + '\n';
  return text;
}

std::string ExitStatus() {
  return ".SH ESTADO DE SALIDA\n" + Item("0", "hecho") +
         Item("1", "la operación falló; nada se aplicó, o el mensaje dice qué se aplicó") +
         Item("2", "uso incorrecto") + Item("3", "hecho, pero parte de la entrada se rechazó") +
         Item("4", "no se pudo llegar al host: su configuración o su base de datos");
}

/// The words of `options` that complete, and the case branches of those that take a value.
std::string OptionWords(std::span<const OptionDefinition> options) {
  std::string words;
  for (const OptionDefinition& option : options) words += ' ' + option.name;
  return words;
}

std::string ValueBranches(std::span<const OptionDefinition> options) {
  std::string branches;
  for (const OptionDefinition& option : options) {
    if (option.valueName.empty()) continue;
    std::string choices;
    for (const std::string& choice : option.choices) choices += (choices.empty() ? "" : " ") + choice;
    const std::string generator = option.isPath ? "-f" : "-W '" + choices + "'";
    branches += "    " + option.name + ") COMPREPLY=($(compgen " + generator + " -- \"$cur\")); return ;;\n";
  }
  return branches;
}

std::string OrderBranch(const OrderDefinition& order) {
  std::string text =
      "    " + order.name + ") words='" + OptionWords(order.options).substr(order.options.empty() ? 0 : 1) + "'; ";
  bool takesPath = false;
  for (const ArgumentDefinition& argument : order.arguments) takesPath = takesPath || argument.isPath;
  return text + (takesPath ? "files=1 ;;\n" : "files= ;;\n");
}

}  // namespace

std::string ManualPage(std::span<const OrderDefinition> orders) {
  std::string text = ".TH TOLVAN\\-IMPEXP 1\n.SH NOMBRE\ntolvan\\-impexp \\- importa y exporta datos de Tolvan\n";
  text += ".SH SINOPSIS\n.B tolvan\\-impexp\n[GENERALES] ORDEN [ARGUMENTOS]\n";
  text += ".SH OPCIONES GENERALES\n" + OptionItems(GlobalOptions());
  text += Item("-h, --help, --ayuda", "muestra la ayuda, también la de una orden") +
          Item("--version", "muestra la versión");
  text += ".SH ÓRDENES\n";
  for (const OrderDefinition& order : orders) text += OrderSection(order);
  text += ExitStatus();
  return text + ".SH ARCHIVOS\n" +
         Item("tolvan/tolvan.ini", "configuración del host, en la carpeta XDG de configuración") + ".SH ENTORNO\n" +
         Item("TOLVAN_HOST", "ruta de la configuración del host cuando falta --host");
}

std::string BashCompletion(std::span<const OrderDefinition> orders) {
  std::string names;
  std::string branches;
  std::string values = ValueBranches(GlobalOptions());
  for (const OrderDefinition& order : orders) {
    names += (names.empty() ? "" : " ") + order.name;
    branches += OrderBranch(order);
    values += ValueBranches(order.options);
  }
  return "# bash completion for tolvan-impexp\n"
         "_tolvan_impexp() {\n"
         "  local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]} order= words= files= word\n"
         "  case $prev in\n" +
         values +
         "  esac\n"
         "  for word in \"${COMP_WORDS[@]:1:COMP_CWORD-1}\"; do\n"
         "    case \" " +
         names +
         " \" in *\" $word \"*) order=$word; break ;; esac\n"
         "  done\n"
         "  case $order in\n"
         "    '') words='" +
         names + " --version' ;;\n" + branches +
         "  esac\n"
         "  COMPREPLY=($(compgen -W \"$words --ayuda" +
         OptionWords(GlobalOptions()) +
         "\" -- \"$cur\"))\n"
         "  [ -n \"$files\" ] && COMPREPLY+=($(compgen -f -- \"$cur\"))\n"
         "}\n"
         "complete -o filenames -F _tolvan_impexp tolvan-impexp\n";
}

}  // namespace tolvan
