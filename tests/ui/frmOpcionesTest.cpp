#include "ui/frmOpciones.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "support/FakeHost.h"
#include "ui/HeadlessOpcionesView.h"

namespace tolvan {
namespace {

using test::FakeDialogs;
using test::FakeHost;

struct Window {
  FakeHost host;
  HeadlessOpcionesView view;
  frmOpciones form{host.context, view};
  std::vector<FakeDialogs::Box>& boxes = host.services.dialogs.boxes;
};

TEST(frmOpciones, FillsAndSavesEveryFieldOfTheDailySalesPanel) {
  Window window;
  auto& stored = window.host.application.settings.values;
  for (const auto& [index, value] : {std::pair{"0", " 0001"},
                                     {"1", "15"},
                                     {"4", "21"},
                                     {"5", "30"},
                                     {"6", "/out/"},
                                     {"7", "1"},
                                     {"8", "ana@example.com"},
                                     {"9", "ventas.txt"}}) {
    stored[index] = value;
  }
  window.form.Cargar();
  HeadlessOpcionesView& view = window.view;
  EXPECT_EQ(view.Text("txtC1_CodigoTienda"), " 0001");
  EXPECT_EQ(view.DateOf("dC1_FechaMovimiento"), Date::FromParts(2024, 2, 1)) << "today, not the stored day";
  EXPECT_EQ(view.TimeOf("dtC1_HoraFinJornada"), (TimeOfDay{21, 30}));
  EXPECT_EQ(view.Text("txtC1_CarpetaDestino"), "/out");
  EXPECT_TRUE(view.Checked("chk1") && view.Enabled("txtC1_Email"));
  EXPECT_EQ(view.Text("txtC1_Email"), "ana@example.com");
  EXPECT_EQ(view.Text("txtC1_NombreArchivo"), "ventas.txt");

  view.SetText("txtC1_CodigoTienda", "0042");
  view.SetDate("dC1_FechaMovimiento", Date::FromParts(2023, 12, 31));
  view.SetTime("dtC1_HoraFinJornada", {8, 5});
  view.SetChecked("chk1", false);
  view.SetText("txtC1_Email", "eva@example.com");
  view.SetText("txtC1_NombreArchivo", "hoy.txt");
  auto expected = stored;
  for (const auto& [index, value] : {std::pair{"0", "0042"},
                                     {"1", "31"},
                                     {"2", "12"},
                                     {"3", "2023"},
                                     {"4", "8"},
                                     {"5", "5"},
                                     {"7", "0"},
                                     {"8", "eva@example.com"},
                                     {"9", "hoy.txt"}}) {
    expected[index] = value;
  }
  window.form.SavePanel(0);
  EXPECT_EQ(stored, expected);
}

TEST(frmOpciones, AnEmptyFolderAnUnderscoreAndAnImpossibleTimeAreShownAsAgreed) {
  Window window;
  auto& stored = window.host.application.settings.values;
  stored["4"] = "25";
  stored["6"] = "";
  stored["7"] = "2";  // only 1 is a tick
  stored["9"] = "_";
  window.view.SetTime("dtC1_HoraFinJornada", {18, 15});
  window.form.Cargar();
  EXPECT_EQ(window.view.Text("txtC1_CarpetaDestino"), "/app/Exportar/Archivo Ventas Vexlor");
  EXPECT_EQ(window.view.TimeOf("dtC1_HoraFinJornada"), (TimeOfDay{18, 15}));
  EXPECT_FALSE(window.view.Checked("chk1"));
  EXPECT_FALSE(window.view.Enabled("txtC1_Email"));
  EXPECT_EQ(window.view.Text("txtC1_NombreArchivo"), "");
}

TEST(frmOpciones, TheDispatcherReportsOnceAndOnlyWhenInteractive) {
  Window window;
  bool succeeds = true;
  bool wantsSilence = false;
  std::string messages = "\r\nUno\r\nDos";
  window.form.SetRoutine(3, [&](bool, std::string& errorText, bool& silent) {
    if (!succeeds) errorText += messages;
    silent = wantsSilence;
    return succeeds;
  });
  window.form.SelectAction(3);
  window.form.ImpExp(true);
  succeeds = false;
  window.form.ImpExp(true);
  wantsSilence = true;
  window.form.ImpExp(true);  // silence is for success only
  messages.clear();
  window.form.ImpExp(true);  // and for what the routine has told itself
  window.form.ImpExp(false);
  succeeds = true;
  window.form.ImpExp(true);
  const FakeDialogs::Box failure{MessageIcon::Exclamation, "Importar/Exportar Datos",
                                 "Ocurrió uno o más errores en la operación:\r\n\r\nUno\r\nDos"};
  const std::vector<FakeDialogs::Box> expected = {
      {MessageIcon::Information, "Importar/Exportar Datos", "La operación finalizó con éxito."}, failure, failure};
  EXPECT_EQ(window.boxes, expected);
  EXPECT_TRUE(window.form.LastOutcome().succeeded);
}

TEST(frmOpciones, TheUploadHasAHandlerThoughNoNode) {
  Window window;
  window.host.application.http.response = {.succeeded = true, .statusText = "200", .body = "1", .failure = {}};
  window.form.SelectAction(2);
  window.form.ImpExp(false);
  EXPECT_TRUE(window.form.LastOutcome().ran);
  EXPECT_EQ(window.form.LastOutcome().errorText, "\r\nNo hay días pendientes: el servidor de ventas no pidió ninguno.");
  EXPECT_EQ(window.boxes.size(), 0U);
}

TEST(frmOpciones, WithoutAnActionAcceptWarnsAndRunsNothing) {
  Window window;
  window.form.Cargar();
  window.form.bGuardar_Click();
  ASSERT_EQ(window.boxes.size(), 1U);
  EXPECT_EQ(window.boxes[0].text,
            "Seleccione primero una categoría a la izquierda de la ventana para Importar/Exportar datos.");
  EXPECT_FALSE(window.form.LastOutcome().ran);
  window.form.ImpExp(false);
  EXPECT_EQ(window.boxes.size(), 1U);
  EXPECT_THROW(window.form.SelectAction(7), std::out_of_range);
}

TEST(frmOpciones, SettingsThatCannotBeSavedAreToldAndTheActionIsNotRun) {
  for (const bool refused : {true, false}) {
    Window window;
    int runs = 0;
    window.form.SetRoutine(1, [&](bool, std::string&, bool&) { return ++runs > 0; });
    window.form.Cargar();
    window.form.SelectAction(1);
    window.host.application.settings.refuses = refused;
    window.host.application.settings.saveFailure = HostError(HostErrorKind::Access, "sin permiso");
    window.form.bGuardar_Click();
    EXPECT_EQ(runs, 0);
    ASSERT_EQ(window.boxes.size(), 1U);
    EXPECT_EQ(window.boxes[0].text.find("Error al intentar guardar opciones del sistema"), 0U);
  }
}

TEST(frmOpciones, APickedFolderReplacesTheFolderAndACancelledOneKeepsIt) {
  Window window;
  window.host.application.settings.values["6"] = "/out/";
  window.form.Cargar();
  window.form.ChooseFolder();
  EXPECT_EQ(window.host.services.dialogs.questions.back(),
            "Seleccionar carpeta para guardar los archivos exportados. /out/");
  EXPECT_EQ(window.view.Text("txtC1_CarpetaDestino"), "/out");
  window.host.services.dialogs.answer = "/otra";
  window.form.ChooseFolder();
  window.form.SavePanel(1);
  EXPECT_EQ(window.host.application.settings.values["6"], "/otra");
}

}  // namespace
}  // namespace tolvan
