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
  for (const ExampleDefinition& example : order.examples) text += Item(ExampleLine(example), example.summary);
  return text;
}

std::string ExitStatus() {
  return ".SH ESTADO DE SALIDA\n" + Item("0", "hecho") +
         Item("1", "la operación falló; nada se aplicó, o el mensaje dice qué se aplicó") +
         Item("2", "uso incorrecto") + Item("3", "hecho, pero parte de la entrada se rechazó") +
         Item("4", "no se pudo llegar al host: su configuración o su base de datos");
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

}  // namespace tolvan
