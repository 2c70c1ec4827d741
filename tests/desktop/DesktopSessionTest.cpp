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
    driver.ClickUntilShown("bGuardar", "frmStatusImportar");
  }
};

TEST_F(DesktopSession, ClosesThePickersOfTheToolkit) {
  EndsBehind("a file picker", [](WindowDriver& driver) {
    driver.ClickLine("tvOpciones", node::excel);
    driver.ClickUntilPicker("BAbrirArchivo0", "Seleccionar Archivo de Excel");
  });
  EndsBehind("a folder picker", [](WindowDriver& driver) {
    driver.ClickLine("tvOpciones", node::dailySales);
    driver.ClickUntilPicker("bC1_AbrirCarpeta", "Seleccionar carpeta");
  });
  EndsBehind("a picker in the middle of an action", [](WindowDriver& driver) {
    driver.ClickLine("tvOpciones", node::collector);
    driver.ClickUntilPicker("cmdDCExportarItems", "Guardar Archivo de Transporte");
  });
}

TEST_F(DesktopSession, ClosesBoxesDialogsAndMenus) {
  EndsBehind("a message", [](WindowDriver& driver) { driver.ClickUntilShown("bGuardar", "mensaje"); });
  EndsBehind("the search over the review", [&](WindowDriver& driver) {
    Review(driver);
    driver.OpenMenu("lvStatus", 0, "Menu");
    driver.ChooseEntry(0);
    driver.UntilShown("buscarItem");
  });
  EndsBehind("the menu of a row", [&](WindowDriver& driver) {
    Review(driver);
    driver.OpenMenu("lvStatus", 0, "");
  });
}

}  // namespace
}  // namespace tolvan::test
