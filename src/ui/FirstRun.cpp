#include "ui/FirstRun.h"

#include <utility>

#include "services/ResourceTexts.h"

namespace tolvan {
namespace {

constexpr std::string_view demoFolder = "tienda-demo";

std::string_view Title() {
  return ResourceText(text_id::windowCaption);
}

}  // namespace

FirstRun::FirstRun(Dialogs& dialogs, FileHelper& files, Places places, Steps steps)
    : dialogs_(&dialogs), files_(&files), places_(std::move(places)), steps_(std::move(steps)) {}

std::string FirstRun::Greeting() const {
  return "El programa todavía no sabe con qué tienda trabajar: no hay una configuración en\r\n" +
         files_->FormatForDisplay(places_.usual) + "\r\n\r\n¿Qué desea hacer?";
}

std::optional<std::string> FirstRun::bDemostracion_Click(bool remember) {
  const auto parent =
      dialogs_->PickFolder("Seleccionar dónde crear la carpeta de la tienda de demostración", places_.home);
  if (!parent || parent->empty()) return std::nullopt;
  const std::string folder = files_->Join(*parent, demoFolder);
  if (const std::string failure = steps_.makeDemo(folder); !failure.empty()) {
    Warn("No se pudo crear la tienda de demostración en " + files_->FormatForDisplay(folder) + ":\r\n" + failure);
    return std::nullopt;
  }
  return Take(files_->Join(folder, "tolvan.ini"), remember);
}

std::optional<std::string> FirstRun::bElegir_Click(bool remember) {
  const auto chosen =
      dialogs_->PickFileToOpen("Seleccionar la configuración de la tienda", "Configuración de Tolvan|*.ini");
  if (!chosen || chosen->empty()) return std::nullopt;
  return Take(*chosen, remember);
}

void FirstRun::bAyuda_Click() {
  std::string text =
      "Dónde están los datos de su tienda lo dice un archivo llamado tolvan.ini, que prepara su técnico. Si ya lo "
      "tiene, escoja \"Elegir la configuración\".\r\n\r\n"
      "Si solo quiere conocer el programa, escoja \"Crear una tienda de demostración\": se crea una carpeta "
      "tienda-demo con artículos, ventas y archivos de ejemplo inventados. Los datos de su tienda no se tocan.\r\n\r\n"
      "Con la casilla marcada, lo que escoja se abre también las próximas veces. Otra configuración se abre con la "
      "orden\r\ntolvan-ventana --host RUTA";
  if (!places_.manual.empty()) text += "\r\n\r\nEl manual está en\r\n" + places_.manual;
  dialogs_->ShowMessage(MessageIcon::Information, Title(), text);
}

std::optional<std::string> FirstRun::Take(const std::string& configuration, bool remember) {
  if (const std::string failure = steps_.check(configuration); !failure.empty()) {
    Warn(failure);
    return std::nullopt;
  }
  if (!remember) return configuration;
  const std::string failure = steps_.remember(configuration);
  // Not to be asked again is no cause to refuse the store now.
  if (!failure.empty()) Warn("La elección no se pudo recordar para la próxima vez:\r\n" + failure);
  return configuration;
}

void FirstRun::Warn(const std::string& text) {
  dialogs_->ShowMessage(MessageIcon::Exclamation, Title(), text);
}

}  // namespace tolvan
