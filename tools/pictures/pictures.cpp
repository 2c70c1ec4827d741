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

#include "cli/demo/DemoStore.h"
#include "desktop/Toolkit.h"
#include "desktop/WindowDriver.h"
#include "support/CommandRunner.h"

namespace {

using tolvan::DemoPlaces;
using tolvan::test::WindowDriver;

enum Node : unsigned { dailySales, movilnet, collector, excel, registry };

void TakeMessage(WindowDriver& driver, const std::string& name) {
  driver.PictureOfWindow("mensaje", name);
  driver.Dismiss();
}

void Choose(WindowDriver& driver, Node node, const std::string& button, const std::string& title,
            const std::string& path) {
  driver.ClickLine("tvOpciones", node);
  driver.Click(button);
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
  driver.PictureOfWindow("frmOpciones", "inicio");
  FillDailySales(driver);
  driver.PictureOfWindow("frmOpciones", "ventas");
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
  driver.PictureOfWindow("frmStatusImportar", name);
}

void TakeUnprocessed(WindowDriver& driver) {
  driver.Key("ctrl+Next");
  driver.UntilShown("txtNota");
  driver.Settle();
  driver.ClickLine("lvStatus", 1);
  driver.PictureOfWindow("frmStatusImportar", "excel-no-procesar");
}

void TakeExcel(WindowDriver& driver, const DemoPlaces& places) {
  Choose(driver, excel, "BAbrirArchivo0", "Seleccionar Archivo de Excel", places.examples + "/precios.xlsx");
  driver.PictureOfWindow("frmOpciones", "excel");
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
  driver.PictureOfWindow("frmOpciones", "movilnet");
  driver.Click("bGuardar");
  driver.UntilShown("frmStatusImportar");
  driver.ClickLine("lvStatus", 0, 3);
  driver.UntilMenu();
  driver.PictureOfWindow("frmStatusImportar", "movilnet-menu");
  driver.Key("Down");
  driver.Key("Return");
  driver.UntilShown("buscarItem");
  driver.Type("arroz");
  driver.PictureOfWindow("buscarItem", "movilnet-buscar");
  driver.Key("Escape");
  driver.UntilGone("buscarItem");
  driver.ClickLine("lvStatus", 0, 3);
  driver.UntilMenu();
  driver.Key("Up");
  driver.Key("Return");
  driver.UntilShown("pregunta");
  driver.PictureOfWindow("pregunta", "movilnet-codigo");
  driver.Key("Escape");
  driver.UntilGone("pregunta");
  driver.Click("bCancelar");
  driver.UntilGone("frmStatusImportar");
}

void TakeRegistry(WindowDriver& driver, const DemoPlaces& places) {
  const std::string path = places.examples + "/DGII_RNC.TXT";
  std::ofstream(path, std::ios::app) << "101012349|DIGITO EQUIVOCADO, SRL\n12345678|FALTA UN DIGITO\n";
  Choose(driver, registry, "BAbrirArchivo1", "Seleccionar Archivo de Texto RNC", path);
  driver.PictureOfWindow("frmOpciones", "rnc");
  driver.Click("bGuardar");
  TakeMessage(driver, "rnc-resultado");
  driver.PictureOfWindow("bMensajeNo", "rnc-rechazadas");
  driver.Click("bMensajeNo");
  driver.Settle();
}

void TakeCollector(WindowDriver& driver, const DemoPlaces& places) {
  driver.ClickLine("tvOpciones", collector);
  driver.PictureOfWindow("frmOpciones", "colector");
  driver.Click("cmdDCExportarItems");
  driver.AnswerPicker("Guardar Archivo de Transporte", places.exportFolder + "/Articulos 20240301.tolpak");
  TakeMessage(driver, "colector-listo");
}

bool Run(const std::string& pictures, const DemoPlaces& places, const WindowDriver::Script& script) {
  WindowDriver driver(pictures);
  driver.Run(places.host, script);
  if (!driver.Failure().empty()) std::cerr << driver.Failure() << '\n';
  return driver.Failure().empty();
}

int TakeAll(const std::string& pictures) {
  const char* home = std::getenv("HOME");
  const DemoPlaces places = tolvan::PlacesOfDemo(std::string(home == nullptr ? "." : home) + "/tienda");
  tolvan::test::CommandRunner runner;
  if (runner.Run({"demo", places.folder}).code != 0) return 1;
  const bool taken = Run(pictures, places, [&](WindowDriver& windows) {
    TakeDailySales(windows);
    TakeExcel(windows, places);
    TakeMovilnet(windows, places);
    TakeRegistry(windows, places);
    TakeCollector(windows, places);
  });
  runner.host = places.host;
  if (!taken || runner.Run({"opciones", "MicrosExp_CarpetaDestino=C:\\"}).code != 0) return 1;
  return Run(pictures, places, TakeError) ? 0 : 1;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::cerr << "usage: desktop_pictures FOLDER\n";
    return 2;
  }
  const std::string pictures = std::filesystem::absolute(arguments[1]);
  return tolvan::test::RunWithToolkit(1, arguments, [&] { return TakeAll(pictures); });
}
