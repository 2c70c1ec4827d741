// Takes the pictures of the manual (docs/manual.es.md): the windows at work on the demo store of 1 March 2024, the same
// each time. tools/make-pictures runs it and puts the pictures into docs/imagenes. For the eye of whoever changes a
// window:
//
//   tests/desktop/with_display build/dev/bin/desktop_pictures FOLDER
//   GTK_THEME=Adwaita:dark GDK_SCALE=2 TOLVAN_SCREEN=2560x1800 tests/desktop/with_display ...
//
// The store is made in the home folder of with_display, so that paths are shown as "~/tienda/…".
#include <wx/bookctrl.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <thread>

#include "cli/demo/DemoStore.h"
#include "desktop/Toolkit.h"
#include "desktop/WindowDriver.h"
#include "support/CommandRunner.h"

namespace {

using tolvan::DemoPlaces;
using tolvan::test::WindowDriver;

enum Node : unsigned { dailySales, movilnet, collector, excel, registry };

std::string pictureFolder;

/// One window by the name of a control in it, as NAME.png.
void TakeWindow(WindowDriver& driver, const std::string& control, const std::string& name) {
  driver.UntilShown(control);
  driver.Settle();
  std::this_thread::sleep_for(std::chrono::milliseconds(250));  // until what was asked to be drawn is on the screen
  std::string crop;
  driver.OnWindows([&] {
    const wxWindow* const top = wxGetTopLevelParent(&driver.Get(control));
    const wxRect rect = top->GetScreenRect();
    const int scale = static_cast<int>(top->GetContentScaleFactor());
    crop = std::to_string(rect.width * scale) + "x" + std::to_string(rect.height * scale) + "+" +
           std::to_string(rect.x * scale) + "+" + std::to_string(rect.y * scale);
  });
  std::filesystem::create_directories(pictureFolder);
  const std::string command = "import -window root -crop " + crop + " +repage '" + pictureFolder + "/" + name + ".png'";
  if (std::system(command.c_str()) != 0) throw std::runtime_error("failed: " + command);
}

void TakeMessage(WindowDriver& driver, const std::string& name) {
  TakeWindow(driver, "mensaje", name);
  driver.Dismiss();
}

void Choose(WindowDriver& driver, Node node, const std::string& button, const std::string& title,
            const std::string& path) {
  driver.ClickLine("tvOpciones", node);
  driver.ClickUntilPicker(button, title);
  driver.AnswerPicker(title, path);
  driver.Settle();
}

/// The panel of the daily sales, filled for the last day of the demo store and not for the day of taking pictures.
void FillDailySales(WindowDriver& driver) {
  driver.ClickLine("tvOpciones", dailySales);
  driver.Click("txtC1_CodigoTienda");
  driver.Key("Tab");
  driver.Settle();
  driver.Key("ctrl+a");
  driver.Type("29/02/2024");
  driver.Click("chk1");  // no caret in a picture that is to be the same each time
  driver.Settle();
  driver.Click("chk1");
  driver.Settle();
}

void TakeDailySales(WindowDriver& driver) {
  TakeWindow(driver, "frmOpciones", "inicio");
  FillDailySales(driver);
  TakeWindow(driver, "frmOpciones", "ventas");
  driver.Click("bGuardar");
  TakeMessage(driver, "exito");
}

/// The folder of the settings as they come: not one of this system.
void TakeError(WindowDriver& driver) {
  FillDailySales(driver);
  driver.Click("bGuardar");
  TakeMessage(driver, "error");
}

void TakeTab(WindowDriver& driver, int tab, const std::string& name) {
  driver.OnWindows(
      [&] { dynamic_cast<wxBookCtrlBase&>(driver.Get("tabFiltro")).SetSelection(static_cast<size_t>(tab)); });
  TakeWindow(driver, "frmStatusImportar", name);
}

void TakeUnprocessed(WindowDriver& driver) {
  driver.Key("ctrl+Next");
  driver.UntilShown("txtNota");
  driver.Settle();
  driver.ClickLine("lvStatus", 1);
  TakeWindow(driver, "frmStatusImportar", "excel-no-procesar");
}

void TakeExcel(WindowDriver& driver, const DemoPlaces& places) {
  Choose(driver, excel, "BAbrirArchivo0", "Seleccionar Archivo de Excel", places.examples + "/precios.xlsx");
  TakeWindow(driver, "frmOpciones", "excel");
  driver.Click("bGuardar");
  driver.UntilShown("frmStatusImportar");
  TakeTab(driver, 0, "excel-nuevos");
  TakeTab(driver, 1, "excel-actualizar");
  TakeUnprocessed(driver);
  driver.Click("Check1");
  driver.Click("bAceptar");
  TakeMessage(driver, "excel-resumen");
  driver.UntilGone("frmStatusImportar");
}

void TakeMovilnet(WindowDriver& driver, const DemoPlaces& places) {
  Choose(driver, movilnet, "BAbrirArchivo0", "Seleccionar Archivo de Excel", places.examples + "/movilnet.xlsx");
  TakeWindow(driver, "frmOpciones", "movilnet");
  driver.Click("bGuardar");
  driver.UntilShown("frmStatusImportar");
  driver.OpenMenu("lvStatus", 0, "");
  TakeWindow(driver, "frmStatusImportar", "movilnet-menu");
  driver.ChooseEntry(0);
  driver.UntilShown("buscarItem");
  driver.Type("arroz");
  TakeWindow(driver, "buscarItem", "movilnet-buscar");
  driver.KeyUntilGone("Escape", "buscarItem");
  driver.OpenMenu("lvStatus", 0, "");
  driver.ChooseEntry(2);
  driver.UntilShown("pregunta");
  TakeWindow(driver, "pregunta", "movilnet-codigo");
  driver.KeyUntilGone("Escape", "pregunta");
  driver.Click("bCancelar");
  driver.UntilGone("frmStatusImportar");
}

void TakeRegistry(WindowDriver& driver, const DemoPlaces& places) {
  const std::string path = places.examples + "/DGII_RNC.TXT";
  std::ofstream(path, std::ios::app) << "101012349|DIGITO EQUIVOCADO, SRL\n12345678|FALTA UN DIGITO\n";
  Choose(driver, registry, "BAbrirArchivo1", "Seleccionar Archivo de Texto RNC", path);
  TakeWindow(driver, "frmOpciones", "rnc");
  driver.Click("bGuardar");
  TakeMessage(driver, "rnc-resultado");
  TakeWindow(driver, "bMensajeNo", "rnc-rechazadas");
  driver.Click("bMensajeNo");
  driver.Settle();
}

void TakeCollector(WindowDriver& driver, const DemoPlaces& places) {
  driver.ClickLine("tvOpciones", collector);
  TakeWindow(driver, "frmOpciones", "colector");
  driver.ClickUntilPicker("cmdDCExportarItems", "Guardar Archivo de Transporte");
  driver.AnswerPicker("Guardar Archivo de Transporte", places.exportFolder + "/Articulos 20240301.tolpak");
  TakeMessage(driver, "colector-listo");
}

bool Run(const DemoPlaces& places, const WindowDriver::Script& script) {
  WindowDriver driver(pictureFolder);
  driver.Run(places.host, script);
  if (!driver.Failure().empty()) std::cerr << driver.Failure() << '\n';
  return driver.Failure().empty();
}

int TakeAll() {
  const char* home = std::getenv("HOME");
  const DemoPlaces places = tolvan::PlacesOfDemo(std::string(home == nullptr ? "." : home) + "/tienda");
  tolvan::test::CommandRunner runner;
  if (runner.Run({"demo", places.folder}).code != 0) return 1;
  const bool taken = Run(places, [&](WindowDriver& windows) {
    TakeDailySales(windows);
    TakeExcel(windows, places);
    TakeMovilnet(windows, places);
    TakeRegistry(windows, places);
    TakeCollector(windows, places);
  });
  runner.host = places.host;
  if (!taken || runner.Run({"opciones", "MicrosExp_CarpetaDestino=C:\\"}).code != 0) return 1;
  return Run(places, TakeError) ? 0 : 1;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::cerr << "usage: desktop_pictures FOLDER\n";
    return 2;
  }
  pictureFolder = std::filesystem::absolute(arguments[1]);
  return tolvan::test::RunWithToolkit(1, arguments, &TakeAll);
}
