#include "ui/FieldRules.h"

#include <gtest/gtest.h>

#include "support/FakeHost.h"
#include "ui/FakeOptionsView.h"

namespace tolvan {
namespace {

struct Fields : ::testing::Test {
  test::FakeHost host;
  test::FakeOptionsView view;
  FieldRules rules{host.context, view};

  std::int16_t Press(std::string_view name, std::int16_t key) {
    rules.KeyPress(name, key);
    return key;
  }
};

TEST_F(Fields, EnterGoesOnToTheNextField) {
  struct Case {
    std::string_view name;
    std::vector<std::string> expected;
  };
  const std::vector<Case> cases{{"txtC1_CodigoTienda", {"tab"}},
                                {"txtC1_NombreArchivo", {"tab"}},
                                {"txtC1_Email", {"tab"}},
                                {"dtC1_HoraFinJornada", {"focus txtC1_NombreArchivo"}}};
  for (const Case& each : cases) {
    view.said.clear();
    EXPECT_EQ(Press(each.name, 65), 65);
    EXPECT_TRUE(view.said.empty());
    EXPECT_EQ(Press(each.name, 13), 0);
    EXPECT_EQ(view.said, each.expected) << each.name;
  }
}

TEST_F(Fields, OnlyTextBoxesSelectTheirText) {
  for (const std::string_view name : {"txtC1_CodigoTienda", "txtC1_NombreArchivo", "txtC1_Email", "chk1"}) {
    rules.GotFocus(name);
  }
  EXPECT_EQ(view.said, (std::vector<std::string>{"select txtC1_CodigoTienda", "select txtC1_NombreArchivo",
                                                 "select txtC1_Email"}));
}

TEST_F(Fields, LeavingPutsCodeAndFileNameInOrder) {
  view.SetText("txtC1_CodigoTienda", "  0001 ");
  view.SetText("txtC1_NombreArchivo", "_");
  view.SetText("dC1_FechaMovimiento", "28-2-24");
  view.SetText("dtC1_HoraFinJornada", "7");
  EXPECT_FALSE(rules.FirstObjection());
  EXPECT_EQ(view.Text("dC1_FechaMovimiento"), "28/02/2024");
  EXPECT_EQ(view.Text("dtC1_HoraFinJornada"), "07:00");
  EXPECT_EQ(view.Text("txtC1_CodigoTienda"), "0001");
  EXPECT_EQ(view.Text("txtC1_NombreArchivo"), "") << "what cleaning makes of nothing is nothing";
}

TEST_F(Fields, AnAddressThatIsNoneKeepsTheFocusOnlyWhereItIsNeeded) {
  view.SetText("txtC1_Email", "nadie");
  EXPECT_TRUE(rules.Validate("txtC1_Email")) << "nothing is sent";
  view.SetChecked("chk1", true);
  rules.chk_Click();
  EXPECT_TRUE(view.controls.Enabled("txtC1_Email"));
  EXPECT_EQ(Press("txtC1_Email", 13), 0);
  EXPECT_TRUE(view.said.empty());
  EXPECT_EQ(host.services.dialogs.boxes.at(0),
            (test::FakeDialogs::Box{MessageIcon::Exclamation, "Importar/Exportar Datos",
                                    "Favor indique una dirección de e-mail válida."}));
  view.SetText("txtC1_Email", "");
  EXPECT_TRUE(rules.Validate("txtC1_Email")) << "the recipient is asked for when the file is sent";
}

TEST_F(Fields, ADayOrHourThatDoesNotExistIsRefusedAndStaysAsItWasTyped) {
  const std::vector<std::pair<std::string, std::string>> cases{
      {"dC1_FechaMovimiento", "31/02/2026"}, {"dC1_FechaMovimiento", ""}, {"dtC1_HoraFinJornada", "24:00"}};
  for (const auto& [name, typed] : cases) {
    view.SetText(name, typed);
    EXPECT_FALSE(rules.Validate(name));
    EXPECT_EQ(view.Text(name), typed);
    EXPECT_NE(host.services.dialogs.boxes.back().text.find("\"" + typed + "\" no existe"), std::string::npos);
  }
}

}  // namespace
}  // namespace tolvan
