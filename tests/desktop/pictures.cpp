// Takes pictures of the windows at work on a demo store, for documents and for the eye of whoever changes a window:
//
//   tests/desktop/with_display build/dev/bin/desktop_pictures FOLDER
//   GTK_THEME=Adwaita:dark GDK_SCALE=2 TOLVAN_SCREEN=2560x1800 tests/desktop/with_display ...
#include <filesystem>
#include <iostream>

#include "cli/demo/DemoStore.h"
#include "contract/TemporaryFolder.h"
#include "desktop/Toolkit.h"
#include "desktop/WindowDriver.h"
#include "support/CommandRunner.h"

namespace {

using tolvan::DemoPlaces;
using tolvan::test::WindowDriver;

void TakePanels(WindowDriver& driver) {
  driver.PictureOfWindow("frmOpciones", "inicio");
  const std::vector<std::string> names{"ventas", "movilnet", "colector", "excel", "rnc"};
  for (unsigned line = 0; line < names.size(); ++line) {
    driver.ClickLine("tvOpciones", line);
    driver.PictureOfWindow("frmOpciones", names[line]);
  }
}

void TakeMessage(WindowDriver& driver) {
  driver.ClickLine("tvOpciones", 0);
  driver.Click("bGuardar");
  driver.PictureOfWindow("mensaje", "mensaje");
  driver.Dismiss();
}

void TakeReview(WindowDriver& driver, const std::string& workbook) {
  driver.ClickLine("tvOpciones", 1);
  driver.Click("BAbrirArchivo0");
  driver.AnswerPicker("Seleccionar Archivo de Excel", workbook);
  driver.Click("bGuardar");
  driver.UntilShown("frmStatusImportar");
  driver.PictureOfWindow("frmStatusImportar", "revision");
  driver.ClickLine("lvStatus", 0, 3);
  driver.PictureOfScreen("menu");
  driver.Key("Down");
  driver.Key("Return");
  driver.UntilShown("buscarItem");
  driver.Type("a");
  driver.PictureOfWindow("buscarItem", "buscar");
  driver.Key("Escape");
  driver.UntilGone("buscarItem");
  driver.ClickLine("lvStatus", 0, 3);
  driver.Key("Up");
  driver.Key("Return");
  driver.UntilShown("pregunta");
  driver.PictureOfWindow("pregunta", "codigo");
  driver.Key("Escape");
  driver.UntilGone("pregunta");
  driver.Click("bCancelar");
  driver.UntilGone("frmStatusImportar");
}

int TakeAll(const std::string& pictures) {
  tolvan::test::TemporaryFolder folder;
  const DemoPlaces places = tolvan::PlacesOfDemo(folder.File("demo"));
  tolvan::test::CommandRunner runner;
  if (runner.Run({"demo", places.folder}).code != 0) return 1;
  WindowDriver driver(pictures);
  driver.Run(places.host, [&](WindowDriver& windows) {
    TakePanels(windows);
    TakeMessage(windows);
    TakeReview(windows, places.examples + "/movilnet.xlsx");
  });
  if (!driver.Failure().empty()) std::cerr << driver.Failure() << '\n';
  return driver.Failure().empty() ? 0 : 1;
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
