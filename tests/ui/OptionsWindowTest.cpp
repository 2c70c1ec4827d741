#include "ui/OptionsWindow.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "support/FakeHost.h"
#include "ui/FakeOptionsView.h"
#include "ui/MissingTools.h"

namespace tolvan {
namespace {

using test::FakeDialogs;

struct WholeWindow : ::testing::Test {
  test::FakeHost host;
  test::FakeOptionsView view;
  test::MissingTools tools;
  test::MissingXmlLibrary xml;
  std::vector<FakeDialogs::Box>& boxes = host.services.dialogs.boxes;
  OptionsWindow window{host.context, view, OptionsTools{tools.imports, xml}};

  /// Makes the daily sales action do `work`.
  void Runs(const std::function<void()>& work) {
    window.Form().SetRoutine(action::dailySalesFile, [work](bool, std::string&, bool& silent) {
      work();
      return silent = true;
    });
    window.tvOpciones_NodeClick("_1");
  }
};

TEST_F(WholeWindow, BeginsWithTheIntroductionAndTheTree) {
  host.settings.SetText(Setting::RutaUltimoArchivo, "/listas/movilnet.xlsx");
  host.services.files.contents["/listas/movilnet.xlsx"] = "";
  view.progressShown = true;
  window.Iniciar();
  EXPECT_EQ(view.panel, 0);
  EXPECT_EQ(view.nodes.size(), 5U);
  EXPECT_EQ(view.Text("lblExpl"),
            "Esta ventana permite exportar ciertos datos desde Tolvan a otros formatos que se utilizan en otros "
            "sistemas de información.\r\n\r\nSeleccione a la izquierda de la ventana la operación que desea realizar.");
  EXPECT_FALSE(view.progressShown);
  EXPECT_EQ(view.files[3], "/listas/movilnet.xlsx");
  EXPECT_EQ(view.files[5], "(ningún archivo seleccionado)");
  EXPECT_EQ(window.Form().CurrentAction(), 0);
}

TEST_F(WholeWindow, ANodeShowsItsPanelAndABadKeyIsTold) {
  window.tvOpciones_NodeClick("_4");
  EXPECT_FALSE(view.acceptAllowed) << "this panel has a button of its own";
  window.tvOpciones_NodeClick("_6");
  EXPECT_TRUE(view.acceptAllowed);
  EXPECT_EQ(view.panel, 6);
  EXPECT_EQ(view.Text("lblTituloCategoria"), "RNC a Clientes (Rep. Dom.)");
  EXPECT_EQ(window.Form().CurrentAction(), 6);
  window.tvOpciones_NodeClick("_7");
  EXPECT_EQ(boxes.size(), 1U);
  EXPECT_EQ(window.Form().CurrentAction(), 6);
}

TEST_F(WholeWindow, EventsThatArriveDuringWorkBeginNothing) {
  int runs = 0;
  Runs([&] {
    ++runs;
    window.bGuardar_Click();
    window.tvOpciones_NodeClick("_6");
    window.BAbrirArchivo_Click(0);
    window.cmdAbrirPlantilla_Click();
    window.cmdDCExportarItems_Click();
    window.bCancelar_Click();
  });
  window.bGuardar_Click();
  EXPECT_EQ(runs, 1);
  EXPECT_TRUE(host.services.dialogs.questions.empty());
  EXPECT_EQ(window.Form().CurrentAction(), 1);
  EXPECT_EQ(view.said, (std::vector<std::string>{"busy", "stop", "idle"}));
}

TEST_F(WholeWindow, TheCloseBoxStopsTheWorkAndClosesBehindIt) {
  Runs([&] { EXPECT_FALSE(window.QueryUnload()); });
  window.bGuardar_Click();
  EXPECT_EQ(view.said, (std::vector<std::string>{"busy", "stop", "idle", "close"}));
  EXPECT_TRUE(window.QueryUnload());
}

TEST_F(WholeWindow, WhatAnActionThrowsIsToldAndTheWindowGoesOn) {
  Runs([] { throw HostError(HostErrorKind::Unreachable, "la base de datos no responde"); });
  window.bGuardar_Click();
  Runs([] { throw std::runtime_error("sin memoria"); });
  window.bGuardar_Click();
  ASSERT_EQ(boxes.size(), 2U);
  EXPECT_EQ(boxes[0].text.find("Ocurrió uno o más errores en la operación:\r\n"), 0U);
  EXPECT_NE(boxes[0].text.find("la base de datos no responde"), std::string::npos);
  EXPECT_NE(boxes[1].text.find("sin memoria"), std::string::npos);
  EXPECT_FALSE(window.IsBusy());
}

TEST_F(WholeWindow, AFieldThatCannotBeSavedIsLedToWhateverTheActionAndNothingIsSavedOrRun) {
  window.tvOpciones_NodeClick("_6");
  view.SetChecked("chk1", true);
  view.SetText("txtC1_Email", "nadie");
  window.bGuardar_Click();
  EXPECT_EQ(view.said, (std::vector<std::string>{"node _1", "focus txtC1_Email", "focus txtC1_Email"}));
  EXPECT_EQ(view.panel, 1);
  EXPECT_EQ(window.Form().CurrentAction(), 1);
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_EQ(boxes[0].text, "Favor indique una dirección de e-mail válida.");
  EXPECT_NE(host.settings.Text(Setting::EnviarDireccionEmail), "nadie");
}

TEST_F(WholeWindow, TheRegistryNeedsAFileThatIsThere) {
  window.tvOpciones_NodeClick("_6");
  window.bGuardar_Click();
  host.services.dialogs.answer = "/no/hay.txt";
  host.application.databaseFailure = HostError(HostErrorKind::Unreachable, "sin base");
  window.BAbrirArchivo_Click(1);
  EXPECT_EQ(view.files[6], "/no/hay.txt");
  window.bGuardar_Click();
  ASSERT_EQ(boxes.size(), 2U);
  EXPECT_EQ(boxes[0].text,
            "Ocurrió uno o más errores en la operación:\r\n\r\nDebe seleccionar primero el archivo de texto");
  EXPECT_NE(boxes[1].text.find("sin base"), std::string::npos);
  EXPECT_EQ(host.services.dialogs.questions.back(), "Seleccionar Archivo de Texto RNC Archivo de Texto RNC|*.txt");
}

TEST_F(WholeWindow, MakingTheTemplateIsWork) {
  window.cmdAbrirPlantilla_Click();
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_EQ(boxes[0].text,
            "No se encuentra el archivo de plantilla. Favor actualice Tolvan para reponer el archivo de plantilla");
  // A wish to stop something earlier is forgotten when work begins, and only then.
  EXPECT_EQ(view.said, (std::vector<std::string>{"busy", "idle"}));
}

}  // namespace
}  // namespace tolvan
