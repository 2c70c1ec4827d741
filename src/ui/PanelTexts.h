// The texts of the options window's panels that are not in the string table, as the user sees them.
#pragma once

#include <string_view>

namespace tolvan::panel_text {

inline constexpr std::string_view browse = "E&xaminar…";
inline constexpr std::string_view workbookLabel = "Ruta archivo de Excel";
inline constexpr std::string_view nothingSelected = "(ningún archivo seleccionado)";
inline constexpr std::string_view openTemplate = "Abrir &plantilla";
inline constexpr std::string_view movilnetHelp =
    "Utilice esta sección para importar la lista de precios de teléfonos y módems de Movilnet:";
inline constexpr std::string_view excelHelp =
    "Utilice esta sección para importar Items, precios y costos desde un libro de Excel con el formato de la "
    "plantilla:";
inline constexpr std::string_view templateHelp =
    "Si aún no tiene el libro, abra la plantilla, llénela y guárdela con otro nombre:";
inline constexpr std::string_view collectorHelp =
    "Utilice el siguiente botón para crear un nuevo archivo a transferir al dispositivo colector, de tal manera que "
    "éste reconozca los códigos de barras de los artículos registrados como inventario en Tolvan.";
inline constexpr std::string_view purposeCount = "Conteo físico de inventario por áreas.";
inline constexpr std::string_view purposeReceiving = "Tomas para recepción de mercancía.";
inline constexpr std::string_view createFile = "&Crear nuevo archivo";
inline constexpr std::string_view registryHelp =
    "Utilice esta sección para importar el archivo del Registro Nacional de Contribuyentes a la tabla de clientes:";
inline constexpr std::string_view registryWarning =
    "ADVERTENCIA: Este proceso puede durar varios minutos, inclusive horas dependiendo de la velocidad del procesador.";
inline constexpr std::string_view registryLabel = "Ruta archivo de Texto RNC";
inline constexpr std::string_view stop = "&Detener";

}  // namespace tolvan::panel_text
