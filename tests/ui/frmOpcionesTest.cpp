#include "ui/frmOpciones.h"

#include <functional>
#include <stdexcept>

#include "services/ResourceTexts.h"
#include "ui/OptionsFixture.h"

namespace tolvan {
namespace {

struct OptionsWindowTest : test::OptionsFixture {
  /// Makes the daily sales action of `made` do `work`.
  void Runs(const ActionRoutine& work) {
    actions.front().routine = work;
    made.tvOpciones_NodeClick("_1");
  }

  void Launch(int number) {
    form.tvOpciones_NodeClick(NodeKeyOf(number));
    form.ImpExp(true);
  }

  /// The component's own actions and one more, for which there is nothing but its row.
  std::vector<Action> actions = [] {
    std::vector<Action> rows(ComponentActions().begin(), ComponentActions().end());
    rows.push_back({.number = 7,
                    .captionId = text_id::salesServer,
                    .parent = action::excelPrices,
                    .panel = PanelKind::File,
                    .check = rows.back().check,
                    .routine = [](ActionRun& run) {
                      run.context.settings.SetText(Setting::DireccionServidor, run.file);
                      return ActionReport{.done = true};
                    }});
    return rows;
  }();
  frmOpciones made{host.context, view, tools, actions};
};

TEST_F(OptionsWindowTest, BeginsWithTheIntroductionAndTheTree) {
  stored["15"] = "/listas/movilnet.xlsx";
  host.services.files.contents["/listas/movilnet.xlsx"] = "";
  view.progressShown = true;
  form.Iniciar();
  EXPECT_EQ(view.panel, 0);
  std::string tree;
  for (const ActionNode& node : view.nodes) tree += node.parentKey + node.key + " " + node.caption + "\n";
  EXPECT_EQ(tree,
            "_1 Archivo Ventas Vexlor\n_3 Precios Movilnet 2010\n_4 Terminal de Datos Tolvan\n"
            "_5 Datos desde Hoja de Excel\n_6 RNC a Clientes (Rep. Dom.)\n");
  EXPECT_EQ(view.Text("lblExpl"),
            "Esta ventana permite exportar ciertos datos desde Tolvan a otros formatos que se utilizan en otros "
            "sistemas de información.\r\n\r\nSeleccione a la izquierda de la ventana la operación que desea realizar.");
  EXPECT_FALSE(view.progressShown);
  EXPECT_EQ(view.files[3], "/listas/movilnet.xlsx");
  EXPECT_EQ(view.files[5], "(ningún archivo seleccionado)");
  EXPECT_EQ(form.CurrentAction(), 0);
  host.services.files.contents.clear();
  frmOpciones later(host.context, view, tools);
  later.Iniciar();
  EXPECT_EQ(view.files[3], "(ningún archivo seleccionado)") << "the file is gone";
}

TEST_F(OptionsWindowTest, ANewRowOfTheTableHasNodePanelFileAndRoutine) {
  made.Iniciar();
  ASSERT_EQ(view.nodes.size(), 6U);
  EXPECT_EQ(view.nodes[4].parentKey + view.nodes[4].key, "_5_7") << "after its parent";
  EXPECT_EQ(view.nodes[5].key, "_6");
  for (const char* key : {"_8", "_0", "_-1", "_", "", "_x", "_99999999999"}) {
    boxes.clear();
    made.tvOpciones_NodeClick(key);
    EXPECT_EQ(boxes.size(), 1U) << key << " names no action";
  }
  boxes.clear();
  made.tvOpciones_NodeClick("_7");
  EXPECT_EQ(view.panel, 7);
  EXPECT_EQ(view.Text("lblTituloCategoria"), "Servidor Central de Ventas");
  dialogs.answer = "/datos/nuevo.txt";
  made.BAbrirArchivo_Click();
  EXPECT_EQ(view.files[7], "/datos/nuevo.txt");
  made.bGuardar_Click();
  EXPECT_EQ(
      boxes,
      (std::vector<Box>{{MessageIcon::Information, "Importar/Exportar Datos", "La operación finalizó con éxito."}}));
  EXPECT_EQ(stored["10"], "/datos/nuevo.txt");
}

TEST_F(OptionsWindowTest, EventsThatArriveDuringWorkBeginNothing) {
  int runs = 0;
  Runs([&](ActionRun&) {
    ++runs;
    made.bGuardar_Click();
    made.tvOpciones_NodeClick("_6");
    made.BAbrirArchivo_Click();
    made.cmdAbrirPlantilla_Click();
    made.cmdDCExportarItems_Click();
    made.bCancelar_Click();
    EXPECT_FALSE(made.QueryUnload());
    return ActionReport{.done = true, .told = true};
  });
  made.bGuardar_Click();
  EXPECT_EQ(runs, 1);
  EXPECT_TRUE(dialogs.questions.empty());
  EXPECT_EQ(made.CurrentAction(), 1);
  EXPECT_EQ(view.said, (std::vector<std::string>{"busy", "stop", "stop", "idle", "close"}))
      << "the close box stops the work and closes after it";
  EXPECT_TRUE(made.QueryUnload());
}

TEST_F(OptionsWindowTest, WhatAnActionThrowsIsToldAndTheWindowGoesOn) {
  Runs([](ActionRun&) -> ActionReport { throw HostError(HostErrorKind::Unreachable, "la base de datos no responde"); });
  made.bGuardar_Click();
  Runs([](ActionRun&) -> ActionReport { throw std::runtime_error("sin memoria"); });
  made.bGuardar_Click();
  ASSERT_EQ(boxes.size(), 2U);
  EXPECT_EQ(boxes[0].text.find("Ocurrió uno o más errores en la operación:\r\n"), 0U);
  EXPECT_NE(boxes[0].text.find("la base de datos no responde"), std::string::npos);
  EXPECT_NE(boxes[1].text.find("sin memoria"), std::string::npos);
  EXPECT_FALSE(made.IsBusy());
}

TEST_F(OptionsWindowTest, AFieldThatCannotBeSavedIsLedToWhateverTheActionAndNothingIsSavedOrRun) {
  form.tvOpciones_NodeClick("_6");
  view.SetChecked("chk1", true);
  view.SetText("txtC1_Email", "nadie");
  form.bGuardar_Click();
  EXPECT_EQ(view.said, (std::vector<std::string>{"node _1", "focus txtC1_Email", "focus txtC1_Email"}));
  EXPECT_EQ(view.panel, 1);
  EXPECT_EQ(form.CurrentAction(), 1);
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_EQ(boxes[0].text, "Favor indique una dirección de e-mail válida.");
  EXPECT_NE(stored["8"], "nadie");
}

TEST_F(OptionsWindowTest, TheDispatcherReportsOnceAndOnlyWhenInteractive) {
  ActionReport result;
  Runs([&](ActionRun&) { return result; });
  const Box success{MessageIcon::Information, "Importar/Exportar Datos", "La operación finalizó con éxito."};
  const Box failure{MessageIcon::Exclamation, "Importar/Exportar Datos",
                    "Ocurrió uno o más errores en la operación:\r\n\r\nUno\r\nDos"};
  for (const bool done : {true, false}) {
    for (const bool told : {true, false}) {
      result = {.done = done, .text = done ? "" : "\r\nUno\r\nDos", .told = told};
      boxes.clear();
      made.ImpExp(false);
      EXPECT_TRUE(boxes.empty());
      made.ImpExp(true);
      EXPECT_EQ(boxes, told ? std::vector<Box>() : std::vector{done ? success : failure}) << done << told;
    }
  }
}

TEST_F(OptionsWindowTest, TheUploadHasARoutineThoughNoNode) {
  host.application.http.response = {.succeeded = true, .statusText = "200", .body = "1", .failure = {}};
  Launch(action::salesUpload);
  EXPECT_EQ(view.panel, 0);
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_TRUE(boxes[0].text.ends_with("\r\nNo hay días pendientes: el servidor de ventas no pidió ninguno."));
}

TEST_F(OptionsWindowTest, SettingsThatCannotBeSavedAreToldAndTheActionIsNotRun) {
  int runs = 0;
  Runs([&](ActionRun&) {
    ++runs;
    return ActionReport();
  });
  host.application.settings.saveFailure = HostError(HostErrorKind::Access, "sin permiso");
  made.bGuardar_Click();
  host.application.settings.refuses = true;
  made.bGuardar_Click();
  EXPECT_EQ(runs, 0);
  ASSERT_EQ(boxes.size(), 2U);
  EXPECT_TRUE(boxes[0].text.starts_with("Error al intentar guardar opciones del sistema\r\n"));
  EXPECT_EQ(boxes[1].text, "Error al intentar guardar opciones del sistema");
}

TEST_F(OptionsWindowTest, AnActionAsksForItsFileAndRefusesOneThatCannotBeUsed) {
  struct Case {
    int action;
    const char* question;
    const char* nothingChosen;
    const char* unusable;
  };
  host.application.databaseFailure = HostError(HostErrorKind::Unreachable, "sin base");
  const std::vector<Case> cases{
      {action::excelPrices, "Seleccionar Archivo de Excel Libro de Excel|*.xls;*.xlsx",
       "\r\n\r\nDebe seleccionar primero el archivo de Excel",
       "El archivo /listas/ida no existe, favor seleccione la ubicación correcta del archivo"},
      {action::taxpayerRegistry, "Seleccionar Archivo de Texto RNC Archivo de Texto RNC|*.txt",
       "\r\n\r\nDebe seleccionar primero el archivo de texto", "sin base"}};
  for (const Case& each : cases) {
    boxes.clear();
    dialogs.answer.reset();
    Launch(each.action);
    EXPECT_EQ(dialogs.questions.back(), each.question);
    dialogs.answer = "/listas/ida";
    Launch(each.action);
    ASSERT_EQ(boxes.size(), 2U);
    EXPECT_TRUE(boxes[0].text.ends_with(each.nothingChosen)) << boxes[0].text;
    EXPECT_NE(boxes[1].text.find(each.unusable), std::string::npos) << boxes[1].text;
  }
  EXPECT_EQ(stored["15"], "") << "a file that is gone is not remembered";
}

TEST_F(OptionsWindowTest, TheFileOfAnImportThatFailedIsRemembered) {
  host.services.files.contents["/listas/precios.xlsx"] = "x";
  dialogs.answer = "/listas/precios.xlsx";
  Launch(action::movilnetPrices);
  ASSERT_EQ(boxes.size(), 1U) << "told once";
  EXPECT_TRUE(boxes[0].text.starts_with(
      "Error al conectar con Microsoft Excel, verifique que Excel está instalado en su sistema\r\n"));
  EXPECT_EQ(stored["15"], "/listas/precios.xlsx");
  EXPECT_EQ(host.application.settings.saves, 1);
}

TEST_F(OptionsWindowTest, MakingTheTemplateIsWork) {
  form.cmdAbrirPlantilla_Click();
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_EQ(boxes[0].text,
            "No se encuentra el archivo de plantilla. Favor actualice Tolvan para reponer el archivo de plantilla");
  // A wish to stop something earlier is forgotten when work begins, and only then.
  EXPECT_EQ(view.said, (std::vector<std::string>{"busy", "idle"}));
}

}  // namespace
}  // namespace tolvan
