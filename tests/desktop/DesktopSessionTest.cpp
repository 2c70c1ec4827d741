// The end of the session, whatever is open: pickers, boxes, menus, dialogs over dialogs. Everything closes, nobody is
// asked, and the layout is kept.
#include <filesystem>

#include "desktop/WindowTest.h"

namespace tolvan::test {
namespace {

class DesktopSession : public WindowTest {
 protected:
  void EndsBehind(const std::string& what, const WindowDriver::Script& open) {
    SCOPED_TRACE(what);
    const int code = Run([&](WindowDriver& driver) {
      open(driver);
      driver.EndSession();
      driver.UntilGone("frmOpciones");
    });
    EXPECT_EQ(code, 0);
  }

  void Review(WindowDriver& driver) const {
    Choose(driver, node::movilnet, 0, places.examples + "/movilnet.xlsx");
    driver.Click("bGuardar");
    driver.UntilShown("frmStatusImportar");
  }
};

TEST_F(DesktopSession, ClosesThePickersOfTheToolkit) {
  EndsBehind("a file picker", [](WindowDriver& driver) {
    driver.ClickLine("tvOpciones", node::excel);
    driver.Click("BAbrirArchivo0");
    WindowDriver::UntilPicker("Seleccionar Archivo de Excel");
  });
  EndsBehind("a folder picker", [](WindowDriver& driver) {
    driver.ClickLine("tvOpciones", node::dailySales);
    driver.Click("bC1_AbrirCarpeta");
    WindowDriver::UntilPicker("Seleccionar carpeta");
  });
  EndsBehind("a picker in the middle of an action", [](WindowDriver& driver) {
    driver.ClickLine("tvOpciones", node::collector);
    driver.Click("cmdDCExportarItems");
    WindowDriver::UntilPicker("Guardar Archivo de Transporte");
  });
}

TEST_F(DesktopSession, ClosesBoxesDialogsAndMenus) {
  EndsBehind("a message", [](WindowDriver& driver) {
    driver.Click("bGuardar");
    driver.UntilShown("mensaje");
  });
  EndsBehind("the search over the review", [&](WindowDriver& driver) {
    Review(driver);
    driver.ClickLine("lvStatus", 0);
    driver.Key("Menu");
    driver.UntilMenu();
    driver.Key("Down");
    driver.Key("Return");
    driver.UntilShown("buscarItem");
  });
  EndsBehind("the menu of a row", [&](WindowDriver& driver) {
    Review(driver);
    driver.ClickLine("lvStatus", 0, 3);
    driver.UntilMenu();
  });
}

}  // namespace
}  // namespace tolvan::test
