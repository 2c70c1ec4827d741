#include "store/ConfigurationKeys.h"

#include <array>
#include <cstdint>
#include <limits>
#include <vector>

#include "base/Addresses.h"
#include "base/Text.h"

namespace tolvan {
namespace {

/// Why a value cannot be used, in Spanish; nothing when it was taken.
using Complaint = std::optional<std::string>;

Complaint TakeIf(bool usable, std::string_view value, std::string& target, std::string_view complaint) {
  if (!usable) return std::string(complaint);
  target = value;
  return std::nullopt;
}

Complaint TakeNumber(std::string_view value, std::int32_t least, std::int32_t most, std::int32_t& target) {
  const std::optional<std::int32_t> number = ParseInteger(value);
  if (!number || *number < least || *number > most) {
    return "debe ser un número entero de " + std::to_string(least) + " a " + std::to_string(most);
  }
  target = *number;
  return std::nullopt;
}

Complaint TakeFlag(std::string_view value, bool& target) {
  if (value != "0" && value != "1") return "debe ser 0 o 1";
  target = value == "1";
  return std::nullopt;
}

Complaint TakeFilledText(std::string_view value, std::string& target) {
  return TakeIf(!value.empty(), value, target, "no puede quedar vacío");
}

/// Digits 0 and #, one point at most, commas for grouping, anything else before and after.
Complaint TakeMoneyFormat(std::string_view value, std::string& target) {
  const std::size_t first = value.find_first_of("0#");
  if (first == std::string_view::npos) return "no es un formato de número, por ejemplo #,##0.00";
  const std::size_t last = value.find_last_of("0#");
  const std::string_view digits = value.substr(first, last - first + 1);
  const bool onePattern = digits.find_first_not_of("0#,.") == std::string_view::npos;
  const bool onePoint = digits.find('.') == digits.rfind('.');
  return TakeIf(onePattern && onePoint, value, target, "no es un formato de número, por ejemplo #,##0.00");
}

/// Empty or a text without digits and signs, which are parts of the amounts it is removed from.
Complaint TakeSeparator(std::string_view value, std::string& target) {
  const bool usable = value.find_first_of("0123456789+-") == std::string_view::npos;
  return TakeIf(usable, value, target, "no puede tener cifras ni signos");
}

/// Names separated by commas or blanks.
Complaint TakeNames(std::string_view value, std::vector<std::string>& target) {
  const std::string separated = ReplaceAll(ReplaceAll(value, "\t", ","), " ", ",");
  target.clear();
  for (const std::string_view name : Split(separated, ',')) {
    if (!name.empty()) target.emplace_back(name);
  }
  return std::nullopt;
}

Complaint TakeEngine(std::string_view value, DatabaseConfiguration& target) {
  for (const DatabaseEngine& engine : target.known) {
    if (engine.Traits().name != value) continue;
    target.engine = &engine;
    return std::nullopt;
  }
  return "debe ser " + NamesOf(target.known);
}

/// A mail address, or empty where `mayBeEmpty`.
Complaint TakeAddress(std::string_view value, bool mayBeEmpty, std::string& target) {
  const bool usable = value.empty() ? mayBeEmpty : IsEmailAddress(value);
  return TakeIf(usable, value, target, "debe ser una dirección de correo, por ejemplo tienda@example.com");
}

/// Empty, or smtp:// or smtps:// with host and optional port.
Complaint TakeMailServer(std::string_view value, std::string& target) {
  std::string_view host = value;
  for (const std::string_view scheme : {"smtp://", "smtps://"}) {
    if (value.starts_with(scheme)) host = value.substr(scheme.size());
  }
  const bool hasScheme = host.size() != value.size();
  return TakeIf(value.empty() || (hasScheme && ServerAddress::Parse(host)), value, target,
                "debe ser smtp:// o smtps:// con el servidor y, si hace falta, el puerto");
}

/// Empty, or host[:port] without a scheme.
Complaint TakeHost(std::string_view value, std::string& target) {
  return TakeIf(value.empty() || ServerAddress::Parse(value), value, target,
                "debe ser un servidor y, si hace falta, dos puntos y el puerto");
}

/// Empty, or an address that begins with http:// or https://.
Complaint TakeWebAddress(std::string_view value, std::string& target) {
  const bool hasScheme = value.starts_with("http://") || value.starts_with("https://");
  const bool hasBlank = value.find_first_of(" \t\"<>") != std::string_view::npos;
  return TakeIf(value.empty() || (hasScheme && !hasBlank), value, target,
                "debe ser una dirección que comience por http:// o https://");
}

using Configuration = HostConfiguration;
using Value = std::string_view;

constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t secondsOfADay = 86'400;

Complaint TakeText(Value value, std::string& target) {
  target = value;
  return std::nullopt;
}

Complaint TakeSeconds(Value value, std::chrono::seconds& target) {
  std::int32_t seconds = 0;
  const Complaint complaint = TakeNumber(value, 1, secondsOfADay, seconds);
  if (!complaint) target = std::chrono::seconds(seconds);
  return complaint;
}

std::string Joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text.append(text.empty() ? "" : ", ").append(name);
  return text;
}

// The lambdas without captures become the plain functions of the table.
constexpr std::array configurationKeys{
    ConfigurationKey{"host", "producto", "nombre del producto en textos y títulos",
                     [](Configuration& c, Value v) { return TakeFilledText(v, c.product); },
                     [](const Configuration& c) { return c.product; }},
    ConfigurationKey{"host", "carpeta", "carpeta de la aplicación (plantillas, Exportar), relativa a este archivo",
                     [](Configuration& c, Value v) { return TakeText(v, c.applicationFolder); },
                     [](const Configuration& c) { return c.applicationFolder; }},
    ConfigurationKey{"host", "compania", "número de la compañía",
                     [](Configuration& c, Value v) { return TakeNumber(v, 0, largest, c.companyId); },
                     [](const Configuration& c) { return std::to_string(c.companyId); }},
    ConfigurationKey{"host", "sede", "número de la sede",
                     [](Configuration& c, Value v) { return TakeNumber(v, 0, largest, c.siteId); },
                     [](const Configuration& c) { return std::to_string(c.siteId); }},
    ConfigurationKey{"host", "tienda", "identificador de la tienda",
                     [](Configuration& c, Value v) { return TakeFilledText(v, c.storeId); },
                     [](const Configuration& c) { return c.storeId; }},
    ConfigurationKey{"host", "inventario", "inventario que miran las consultas de artículos",
                     [](Configuration& c, Value v) { return TakeNumber(v, 0, largest, c.inventoryFlag); },
                     [](const Configuration& c) { return std::to_string(c.inventoryFlag); }},
    ConfigurationKey{"host", "formato_dinero", "formato de los montos en pantalla",
                     [](Configuration& c, Value v) { return TakeMoneyFormat(v, c.moneyFormat); },
                     [](const Configuration& c) { return c.moneyFormat; }},
    ConfigurationKey{"host", "diagnostico", "1 = mostrar los mensajes de diagnóstico",
                     [](Configuration& c, Value v) { return TakeFlag(v, c.diagnostic); },
                     [](const Configuration& c) { return std::string(c.diagnostic ? "1" : "0"); }},
    ConfigurationKey{"host", "permisos", "lo que el usuario puede hacer; vacío = nada",
                     [](Configuration& c, Value v) { return TakeNames(v, c.permissions); },
                     [](const Configuration& c) { return Joined(c.permissions); }},
    ConfigurationKey{"host", "separador", "separador de miles, se quita de los montos que se envían",
                     [](Configuration& c, Value v) { return TakeSeparator(v, c.separator); },
                     [](const Configuration& c) { return c.separator; }},
    ConfigurationKey{"host", "ajustes", "carpeta de ajustes y posiciones de ventanas; vacío = la del usuario",
                     [](Configuration& c, Value v) { return TakeText(v, c.settingsFolder); },
                     [](const Configuration& c) { return c.settingsFolder; }},
    ConfigurationKey{"base_de_datos", "motor", "{motores}",
                     [](Configuration& c, Value v) { return TakeEngine(v, c.database); },
                     [](const Configuration& c) { return std::string(c.database.engine->Traits().name); }},
    ConfigurationKey{"base_de_datos", "conexion", "archivo ({motores de archivo}) o cadena de conexión ODBC",
                     [](Configuration& c, Value v) { return TakeFilledText(v, c.database.connection); },
                     [](const Configuration& c) { return c.database.connection; }},
    ConfigurationKey{"base_de_datos", "espera", "segundos que puede tardar una instrucción",
                     [](Configuration& c, Value v) { return TakeSeconds(v, c.database.statementLimit); },
                     [](const Configuration& c) { return std::to_string(c.database.statementLimit.count()); }},
    ConfigurationKey{"correo", "servidor", "smtp://servidor:puerto o smtps://servidor:puerto; vacío = sin correo",
                     [](Configuration& c, Value v) { return TakeMailServer(v, c.mail.server); },
                     [](const Configuration& c) { return c.mail.server; }},
    ConfigurationKey{"correo", "usuario", "usuario del servidor; vacío = sin inicio de sesión",
                     [](Configuration& c, Value v) { return TakeText(v, c.mail.user); },
                     [](const Configuration& c) { return c.mail.user; }},
    ConfigurationKey{"correo", "clave", "clave del usuario",
                     [](Configuration& c, Value v) { return TakeText(v, c.mail.password); },
                     [](const Configuration& c) { return c.mail.password; }},
    ConfigurationKey{"correo", "remitente", "dirección de quien envía",
                     [](Configuration& c, Value v) { return TakeAddress(v, false, c.mail.sender); },
                     [](const Configuration& c) { return c.mail.sender; }},
    ConfigurationKey{"correo", "destinatario", "dirección inicial de quien recibe",
                     [](Configuration& c, Value v) { return TakeAddress(v, true, c.mail.defaultRecipient); },
                     [](const Configuration& c) { return c.mail.defaultRecipient; }},
    ConfigurationKey{"dgii", "servidor", "servidor[:puerto] de la consulta de contribuyentes",
                     [](Configuration& c, Value v) { return TakeHost(v, c.lookup.host); },
                     [](const Configuration& c) { return c.lookup.host; }},
    ConfigurationKey{"dgii", "viewstate", "valor capturado del formulario de la consulta",
                     [](Configuration& c, Value v) { return TakeText(v, c.lookup.viewState); },
                     [](const Configuration& c) { return c.lookup.viewState; }},
    ConfigurationKey{"dgii", "eventvalidation", "valor capturado del formulario de la consulta",
                     [](Configuration& c, Value v) { return TakeText(v, c.lookup.eventValidation); },
                     [](const Configuration& c) { return c.lookup.eventValidation; }},
    ConfigurationKey{"xml", "descarga", "dirección de descarga de la biblioteca XML (Windows)",
                     [](Configuration& c, Value v) { return TakeWebAddress(v, c.xmlDownload); },
                     [](const Configuration& c) { return c.xmlDownload; }},
};

}  // namespace

std::span<const ConfigurationKey> ConfigurationKeys() {
  return configurationKeys;
}

}  // namespace tolvan
