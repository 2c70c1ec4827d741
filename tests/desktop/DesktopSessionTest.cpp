// The end of the session, whatever is open: pickers, boxes, menus, dialogs over dialogs. Everything closes, nobody is
// asked, and the layout is kept.
#include "desktop/WindowTest.h"

namespace tolvan::test {
namespace {

using DesktopSession = WindowTest;

TEST_F(DesktopSession, ClosesWhateverIsOpen) {
  const auto review = [this](WindowDriver& driver) {
    Choose(driver, node::movilnet, 0, places.examples + "/movilnet.xlsx");
    driver.ClickUntilShown("bGuardar", "frmStatusImportar");
  };
  const std::vector<std::pair<const char*, WindowDriver::Script>> cases{
      {"a file picker",
       [](WindowDriver& driver) {
         driver.ClickLine("tvOpciones", node::excel);
         driver.ClickUntilPicker("BAbrirArchivo0", "Seleccionar Archivo de Excel");
       }},
      {"a picker in the middle of an action",
       [](WindowDriver& driver) {
         driver.ClickLine("tvOpciones", node::collector);
         driver.ClickUntilPicker("cmdDCExportarItems", "Guardar Archivo de Transporte");
       }},
      {"the search over the review",
       [&](WindowDriver& driver) {
         review(driver);
         driver.OpenMenu("lvStatus", 0, "Menu");
         driver.ChooseEntry(0);
         driver.UntilShown("buscarItem");
       }},
      {"the menu of a row", [&](WindowDriver& driver) {
         review(driver);
         driver.OpenMenu("lvStatus", 0, "");
       }}};
  for (const auto& [what, open] : cases) {
    SCOPED_TRACE(what);
    const int code = Run([&, &script = open](WindowDriver& driver) {
      script(driver);
      driver.EndSession();
      driver.UntilGone("frmOpciones");
    });
    EXPECT_EQ(code, 0);
  }
}

}  // namespace
}  // namespace tolvan::test
