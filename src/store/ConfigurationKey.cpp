#include "store/ConfigurationKey.h"

#include <array>
#include <limits>

#include "store/ValueRules.h"

namespace tolvan {
namespace {

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
constexpr std::array keys{
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
    ConfigurationKey{"base_de_datos", "motor", "sqlite, sqlserver, postgresql o access",
                     [](Configuration& c, Value v) { return TakeEngine(v, c.database); },
                     [](const Configuration& c) { return std::string(c.database.engine->Traits().name); }},
    ConfigurationKey{"base_de_datos", "conexion", "archivo (sqlite) o cadena de conexión ODBC",
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
  return keys;
}

}  // namespace tolvan
