// The options window: the daily sales file with mouse and keyboard, the collector's file, where the window was left.
#include <gmock/gmock.h>
#include <langinfo.h>
#include <libintl.h>
#include <wx/clipbrd.h>
#include <wx/display.h>
#include <wx/frame.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <regex>

#include "desktop/Controls.h"
#include "desktop/WindowTest.h"
#include "desktop/WxLayoutWindow.h"
#include "support/FileContent.h"
#include "ui/OptionsView.h"

namespace tolvan::test {
namespace {

using OptionsFrame = WindowTest;

struct QuickFrame : wxFrame {
  QuickFrame() : wxFrame(nullptr, wxID_ANY, "Breve") {}
  WxLayoutWindow layout{*this, "breve"};
};

TEST_F(OptionsFrame, TheDailySalesFileByKeyboardAlone) {
  const int code = Run([&](WindowDriver& driver) {
    driver.KeyUntilShown("Home", "txtC1_CodigoTienda");  // the first node
    driver.KeyUntilFocused("Tab", "txtC1_CodigoTienda");
    driver.Type(" 0042 ");
    driver.KeyUntilFocused("Return", "dC1_FechaMovimiento");
    EXPECT_EQ(driver.Text("txtC1_CodigoTienda"), "0042");
    driver.Key("ctrl+a");
    driver.Type("31/02/2024");
    driver.Key("alt+Down");  // the calendar
    driver.Key("Left");
    driver.Settle();
    EXPECT_NE(driver.Text("texto_dC1_FechaMovimiento"), "31/02/2024");
    driver.Key("Escape");  // closes the calendar, and nothing else
    driver.Settle();
    EXPECT_EQ(driver.Text("texto_dC1_FechaMovimiento"), "31/02/2024");
    driver.KeyUntilShown("Return", "mensaje");
    driver.Dismiss();
    driver.Settle();
    EXPECT_EQ(driver.Focused(), "dC1_FechaMovimiento");
    driver.Key("ctrl+a");
    driver.Type("28-2-24");
    driver.Key("Up");  // the next day, in the usual form
    EXPECT_EQ(driver.Text("texto_dC1_FechaMovimiento"), "29/02/2024");
    driver.KeyUntilFocused("Return", "texto_dtC1_HoraFinJornada");
    driver.Key("ctrl+a");
    driver.Type("20.30");
    driver.KeyUntilFocused("Return", "txtC1_NombreArchivo");
    EXPECT_EQ(driver.Text("texto_dtC1_HoraFinJornada"), "20:30");
    driver.Type("hoy/ayer.txt");
    driver.Key("Return");
    driver.KeyUntilShown("alt+a", "mensaje");
    EXPECT_EQ(driver.Dismiss(), "La operación finalizó con éxito.");
    EXPECT_EQ(driver.Text("txtC1_NombreArchivo"), "hoy_ayer.txt");
    driver.KeyUntilGone("Escape", "frmOpciones");
  });
  EXPECT_EQ(code, 0);
  const std::string written = ReadFile(places.exportFolder + "/hoy_ayer.txt");
  EXPECT_TRUE(written.starts_with("0042,")) << written;
  EXPECT_TRUE(written.ends_with(",\"20:30\",\"29/02/2024\",")) << written;
  EXPECT_EQ(runner.Run({"opciones", "0", "4", "3"}).output,
            "MicrosExp_CodigoTienda=0042\nMicrosExp_HoraFinalVenta_Horas=20\nMicrosExp_FechaReporte_Anno=2024\n");
}

// As the host's other programs and their manuals name them.
TEST_F(OptionsFrame, EveryWindowSaysWhatIsAgreed) {
  using Texts = std::vector<std::string>;
  const auto expectShown = [](WindowDriver& driver, const char* window, const Texts& agreed) {
    EXPECT_THAT(driver.Texts(window), testing::IsSupersetOf(agreed));
  };
  const std::vector<std::pair<const char*, Texts>> panels{
      {"panel1",
       {"Código de la empresa:", "Fecha Movimiento:", "Hora de fin de Jornada:",
        "Guardar archivo en la siguiente carpeta destino:", "Enviar archivo generado por e-mail", "Dirección e-mail:",
        "Forzar Nombre Archivo:", "Archivo Ventas Vexlor", "Importar/Exportar Datos", "&Aceptar", "&Cancelar"}},
      {"panel3", {"Precios Movilnet 2010"}},
      {"panel4",
       {"Terminal de Datos Tolvan", "Conteo físico de inventario por áreas.", "Tomas para recepción de mercancía.",
        "&Crear nuevo archivo",
        "Utilice el siguiente botón para crear un nuevo archivo a transferir al dispositivo colector, de tal manera "
        "que éste reconozca los códigos de barras de los artículos registrados como inventario en Tolvan."}},
      {"panel5", {"Datos desde Hoja de Excel"}},
      {"panel6",
       {"RNC a Clientes (Rep. Dom.)", "Ruta archivo de Texto RNC",
        "Utilice esta sección para importar el archivo del Registro Nacional de Contribuyentes a la tabla de clientes:",
        "ADVERTENCIA: Este proceso puede durar varios minutos, inclusive horas dependiendo de la velocidad del "
        "procesador."}}};
  Run([&](WindowDriver& driver) {
    for (unsigned line = 0; line < panels.size(); ++line) {
      driver.ClickLine("tvOpciones", line);
      driver.UntilShown(panels[line].first);
      expectShown(driver, "frmOpciones", panels[line].second);
    }
    Choose(driver, node::movilnet, 0, places.examples + "/movilnet.xlsx");
    driver.ClickUntilShown("bGuardar", "frmStatusImportar");
    driver.OpenMenu("lvStatus", 0, "");
    expectShown(driver, "frmStatusImportar",
                {"Favor revise detenidamente las tres pestañas antes de proceder con la operación.",
                 "Nuevos Items que se crearán", "Items que se actualizarán", "Renglones que no se procesarán", "Excel",
                 "Tolvan", "Libre", "Descripción", "Costo", "PVP", "Dif", "Acción",
                 "Ya he revisado y verificado que todos los renglones están en orden", "&Proceder", "&Cancelar",
                 "Asociar a un Item Existente", "Quitar asociación (Crear como nuevo Item)",
                 "Establecer código para crear nuevo Item (Código Excel)"});
    driver.ChooseEntry(2);
    driver.UntilShown("pregunta");
    expectShown(driver, "pregunta",
                {"Nuevo Código", "Establezca el código del nuevo Item (12 Caracteres Max, Sin Espacios)"});
    driver.KeyUntilGone("Escape", "pregunta");
    driver.KeyUntilGone("Escape", "frmStatusImportar");
  });
}

TEST_F(OptionsFrame, ABoxCanBeCopied) {
  Run([&](WindowDriver& driver) {
    driver.ClickUntilShown("bGuardar", "mensaje");
    wxTextDataObject copied;
    const auto isCopied = [&] {
      const wxClipboardLocker lock;
      return wxTheClipboard->GetData(copied);
    };
    driver.ActUntil(
        "the text is copied", [&] { driver.Key("ctrl+c"); }, isCopied);
    EXPECT_EQ(FromWx(copied.GetText()), driver.Text("textoMensaje"));
    EXPECT_EQ(driver.Dismiss(),
              "Seleccione primero una categoría a la izquierda de la ventana para Importar/Exportar datos.");
  });
}

TEST_F(OptionsFrame, TheFolderIsChosenInSpanishAndKept) {
  const std::string other = folder.File("otra");
  std::filesystem::create_directory(other);
  Run([&](WindowDriver& driver) {
    EXPECT_STREQ(dgettext("gtk30", "_Cancel"), "_Cancelar");
    EXPECT_STREQ(nl_langinfo(DAY_2), "lunes");
    EXPECT_EQ(*nl_langinfo(_NL_TIME_FIRST_WEEKDAY), 2);
    EXPECT_STREQ(std::localeconv()->decimal_point, ".");
    driver.ClickLine("tvOpciones", node::dailySales);
    driver.ClickUntilPicker("bC1_AbrirCarpeta", "Seleccionar carpeta");
    driver.AnswerPicker("Seleccionar carpeta para guardar los archivos exportados.", other);
    driver.Settle();
    EXPECT_EQ(driver.Text("txtC1_CarpetaDestino"), other);
    driver.ClickUntilShown("bGuardar", "mensaje");
    EXPECT_TRUE(driver.Enabled("bGuardar")) << "nothing runs any more";
    driver.Dismiss();
  });
  EXPECT_EQ(NamesIn(other).size(), 1U);
}

TEST_F(OptionsFrame, TheCollectorsFileIsWritten) {
  const std::string path = folder.File("Articulos.tolpak");
  Run([&](WindowDriver& driver) {
    driver.ClickLine("tvOpciones", node::collector);
    driver.Click("opProposito0");
    EXPECT_FALSE(driver.Enabled("bGuardar")) << "it would run nothing";
    driver.Key("Return");  // the button of the panel, wherever the focus is
    driver.AnswerPicker("Guardar Archivo de Transporte", path);
    EXPECT_TRUE(driver.Dismiss().starts_with("Archivo guardado con éxito\n"));
  });
  EXPECT_NE(ReadFile(path).find("<MultiplesAreas>0</MultiplesAreas>"), std::string::npos);
}

TEST_F(OptionsFrame, TheTemplateIsMadeAndOpened) {
  const std::string opened = folder.File("opened");
  WriteFile(folder.File("xdg-open"), "#!/bin/sh\nprintf %s \"$1\" > " + opened + "\n");
  std::filesystem::permissions(folder.File("xdg-open"), std::filesystem::perms::owner_all);
  const std::string before = std::getenv("PATH");
  setenv("PATH", (folder.File("") + ":" + before).c_str(), 1);
  Run([&](WindowDriver& driver) {
    driver.ClickLine("tvOpciones", node::excel);
    driver.ClickUntilShown("cmdAbrirPlantilla", "mensaje");
    EXPECT_EQ(driver.Dismiss(), "¿Desea incluir los datos?");
    driver.Until("it is opened", [&] { return std::filesystem::exists(opened); });
  });
  setenv("PATH", before.c_str(), 1);
  EXPECT_TRUE(std::filesystem::exists(ReadFile(opened)));
}

TEST_F(OptionsFrame, ReopensWhereItWasLeft) {
  wxRect left;
  const auto frame = [](const WindowDriver& driver) -> wxTopLevelWindow& {
    return dynamic_cast<wxTopLevelWindow&>(driver.Get("frmOpciones"));
  };
  const auto layout = [](const WindowDriver& driver) -> LayoutWindow& {
    return dynamic_cast<OptionsView&>(driver.Get("frmOpciones")).StoredLayout();
  };
  Run([&](WindowDriver& driver) {
    driver.OnWindows([&] { layout(driver).SetBounds({1500, 1800, 13500, 9000}); });
    driver.Until("moved", [&] { return layout(driver).Bounds().width == 13500; });
    driver.Settle();
    driver.OnWindows([&] { left = frame(driver).GetRect(); });
    driver.KeyUntilGone("Escape", "frmOpciones");
  });
  Run([&](WindowDriver& driver) {
    // A window that is closed before its frame is known.
    driver.OnWindows([&] {
      auto* const quick = new QuickFrame;
      const Rectangle asked{1500, 1800, 13500, 9000};
      quick->layout.SetBounds(asked);
      EXPECT_EQ(quick->layout.Bounds(), asked);
      quick->Show();
      EXPECT_EQ(quick->layout.Bounds(), asked);
      quick->Destroy();
    });
    driver.Until("placed", [&] { return frame(driver).GetRect() == left; });
    driver.OnWindows([&] { frame(driver).Maximize(); });
    driver.Until("maximised", [&] { return frame(driver).IsMaximized(); });
    driver.Settle();
    driver.KeyUntilGone("Escape", "frmOpciones");
  });
  Run([&](WindowDriver& driver) {
    driver.Until("maximised again", [&] { return frame(driver).IsMaximized(); });
    driver.OnWindows([&] { frame(driver).Maximize(false); });
    driver.Until("as it was before", [&] { return frame(driver).GetRect() == left; });
  });
  // As on a screen that is no longer there.
  for (const auto& file : std::filesystem::directory_iterator(places.folder + "/ajustes")) {
    if (file.path().extension() != ".ventanas") continue;
    const std::regex place("(frmOpciones_[LT])=[0-9]+");
    WriteFile(file.path(), std::regex_replace(ReadFile(file.path()), place, "$1=90000"));
  }
  Run([&](WindowDriver& driver) {
    driver.Until("it is on the screen",
                 [&] { return wxDisplay(0U).GetClientArea().Contains(frame(driver).GetRect()); });
  });
}

}  // namespace
}  // namespace tolvan::test
