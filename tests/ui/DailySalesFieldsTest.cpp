#include "ui/DailySalesFields.h"

#include "ui/OptionsFixture.h"

namespace tolvan {
namespace {

struct Fields : test::OptionsFixture {
  using Settings = std::map<std::string, std::string>;

  FieldRules& rules = form.Fields();

  std::int16_t Press(std::string_view name, std::int16_t key) {
    rules.KeyPress(name, key);
    return key;
  }
};

TEST_F(Fields, FillsAndSavesEveryFieldOfTheDailySalesPanel) {
  Settings changed{{"0", " 0001"},           {"1", "15"},        {"4", "21"}, {"5", "30"}, {"6", "/out/"}, {"7", "1"},
                   {"8", "ana@example.com"}, {"9", "ventas.txt"}};
  changed.merge(stored);
  stored = changed;
  form.Cargar();
  EXPECT_EQ(view.Text("txtC1_CodigoTienda"), " 0001");
  EXPECT_EQ(view.DateOf("dC1_FechaMovimiento"), Date::FromParts(2024, 2, 1)) << "today, not the stored day";
  EXPECT_EQ(view.TimeOf("dtC1_HoraFinJornada"), (TimeOfDay{21, 30}));
  EXPECT_EQ(view.Text("txtC1_CarpetaDestino"), "/out");
  EXPECT_TRUE(view.Checked("chk1") && view.Get("txtC1_Email").enabled);
  EXPECT_EQ(view.Text("txtC1_Email"), "ana@example.com");
  EXPECT_EQ(view.Text("txtC1_NombreArchivo"), "ventas.txt");

  view.SetText("txtC1_CodigoTienda", "0042");
  view.SetDate("dC1_FechaMovimiento", Date::FromParts(2023, 12, 31));
  view.SetTime("dtC1_HoraFinJornada", {8, 5});
  view.SetChecked("chk1", false);
  view.SetText("txtC1_Email", "eva@example.com");
  view.SetText("txtC1_NombreArchivo", "hoy.txt");
  form.bC1_AbrirCarpeta_Click();  // cancelled
  EXPECT_EQ(dialogs.questions.back(), "Seleccionar carpeta para guardar los archivos exportados. /out/");
  EXPECT_EQ(view.Text("txtC1_CarpetaDestino"), "/out");
  dialogs.answer = "/otra";
  form.bC1_AbrirCarpeta_Click();
  Settings expected{{"0", "0042"},   {"1", "31"}, {"2", "12"},
                    {"3", "2023"},   {"4", "8"},  {"5", "5"},
                    {"6", "/otra"},  {"7", "0"},  {"8", "eva@example.com"},
                    {"9", "hoy.txt"}};
  expected.merge(changed);
  form.bGuardar_Click();
  EXPECT_EQ(stored, expected);
}

TEST_F(Fields, AnEmptyFolderAnUnderscoreAndAnImpossibleTimeAreShownAsAgreed) {
  stored["4"] = "25";
  stored["6"] = "";
  stored["7"] = "2";  // only 1 is a tick
  stored["9"] = "_";
  view.SetTime("dtC1_HoraFinJornada", {18, 15});
  form.Cargar();
  EXPECT_EQ(view.Text("txtC1_CarpetaDestino"), "/app/Exportar/Archivo Ventas Vexlor");
  EXPECT_EQ(view.TimeOf("dtC1_HoraFinJornada"), (TimeOfDay{18, 15}));
  EXPECT_FALSE(view.Checked("chk1"));
  EXPECT_FALSE(view.Get("txtC1_Email").enabled);
  EXPECT_EQ(view.Text("txtC1_NombreArchivo"), "");
}

TEST_F(Fields, EnterGoesOnToTheNextField) {
  const std::vector<std::pair<const char*, std::string>> cases{{"txtC1_CodigoTienda", "tab"},
                                                               {"txtC1_NombreArchivo", "tab"},
                                                               {"txtC1_Email", "tab"},
                                                               {"dtC1_HoraFinJornada", "focus txtC1_NombreArchivo"}};
  for (const auto& [name, expected] : cases) {
    EXPECT_EQ(Press(name, 65), 65);
    EXPECT_TRUE(view.said.empty());
    EXPECT_EQ(Press(name, 13), 0);
    EXPECT_EQ(std::exchange(view.said, {}), std::vector{expected}) << name;
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
  EXPECT_TRUE(view.Get("txtC1_Email").enabled);
  EXPECT_EQ(Press("txtC1_Email", 13), 0);
  EXPECT_TRUE(view.said.empty());
  EXPECT_EQ(boxes.at(0), (Box{MessageIcon::Exclamation, "Importar/Exportar Datos",
                              "Favor indique una dirección de e-mail válida."}));
  view.SetText("txtC1_Email", "");
  EXPECT_TRUE(rules.Validate("txtC1_Email")) << "the recipient is asked for when the file is sent";
}

TEST_F(Fields, WhatCannotBeSavedIsRefusedAndStaysAsItWasTyped) {
  struct Case {
    const char* name;
    const char* typed;
    const char* text;
  };
  const std::vector<Case> cases{{"dC1_FechaMovimiento", "31/02/2026", "La fecha \"31/02/2026\" no existe. "},
                                {"dC1_FechaMovimiento", "", "La fecha \"\" no existe. "},
                                {"dtC1_HoraFinJornada", "24:00", "La hora \"24:00\" no existe. "},
                                {"txtC1_CodigoTienda", "0001-日本",
                                 "La opción MicrosExp_CodigoTienda (código de la empresa) tiene el carácter «日», que "
                                 "no existe en la codificación "
                                 "del archivo (Windows-1252)"}};
  for (const Case& each : cases) {
    view.SetText(each.name, each.typed);
    EXPECT_FALSE(rules.Validate(each.name));
    EXPECT_EQ(view.Text(each.name), each.typed);
    EXPECT_TRUE(boxes.back().text.starts_with(each.text)) << boxes.back().text;
  }
}

TEST(FieldTexts, ReadsDatesAsTheyAreTyped) {
  const Date expected = Date::FromParts(2024, 2, 29);
  for (const char* text : {"29/02/2024", " 29-2-24 ", "29.02.2024"}) EXPECT_EQ(ParseDateText(text), expected) << text;
  for (const char* text : {"", "29/02", "30/02/2024", "2024-02-29", "29/02/20244", "a/2/2024", "1/1/0150", "1//2024"}) {
    EXPECT_EQ(ParseDateText(text), std::nullopt) << text;
  }
  EXPECT_EQ(DateText(expected), "29/02/2024");
}

TEST(FieldTexts, ReadsTimesAsTheyAreTyped) {
  EXPECT_EQ(ParseTimeText("7.5"), (TimeOfDay{7, 5}));
  EXPECT_EQ(ParseTimeText(" 19"), (TimeOfDay{19, 0}));
  for (const char* text : {"", "24:00", "10:60", "1:2:3", "x", "-1:00", "123:00"}) {
    EXPECT_EQ(ParseTimeText(text), std::nullopt) << text;
  }
  EXPECT_EQ(TimeText({7, 5}), "07:05");
  EXPECT_EQ(Moved({0, 0}, -1), (TimeOfDay{23, 59}));
  EXPECT_EQ(Moved({23, 30}, 60), (TimeOfDay{0, 30}));
}

}  // namespace
}  // namespace tolvan
