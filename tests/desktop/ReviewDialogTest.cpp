// The review window on real workbooks, down to the database.
#include <gtk/gtk.h>
#include <wx/dataview.h>

#include "database/sqlite/SqliteDatabaseServices.h"
#include "desktop/ListColumns.h"
#include "desktop/WindowTest.h"

namespace tolvan::test {
namespace {

class ReviewDialog : public WindowTest {
 protected:
  static void Accept(WindowDriver& driver) {
    driver.Click("Check1");
    driver.Click("bAceptar");
  }

  /// A list of new items.
  std::string LargeList(int rows) {
    std::vector<std::string> codes;
    std::vector<std::vector<NewCell>> cells;
    for (int row = 0; row < rows; ++row) codes.push_back("GRANDE" + std::to_string(row));
    for (const std::string& code : codes) cells.push_back({code, "Articulo", {}, {}, 10.5, 15.25});
    return Workbook("grande.xlsx", 4, cells);
  }
};

TEST_F(ReviewDialog, AnExcelListIsReviewedAndApplied) {
  const std::string book = Workbook(
      "lista.xlsx", 4,
      {{"NUEVO-1", "Uno", {}, {}, 10.5, 15.25}, {"ALI0001", "Conocido", {}, {}, 7.5, 99.0}, {"NUEVO-1", "Otra vez"}});
  Run([&](WindowDriver& driver) {
    Choose(driver, node::excel, 0, book);
    driver.ClickUntilShown("bGuardar", "frmStatusImportar");
    EXPECT_EQ(driver.Text("frmStatusImportar"), "Resultados Lectura Archivo");
    EXPECT_EQ(driver.Text("lCant0") + driver.Text("lCant1") + driver.Text("lCant2"),
              "3 renglones en total.2 renglones nuevos o sin asociar.1 renglon previamente asociado.");
    EXPECT_EQ(driver.Line("lvStatus", 0), (std::vector<std::string>{"NUEVO-1", "", "Sí", "UNO", "10.50", "15.25",
                                                                    driver.Line("lvStatus", 0).at(6), "Agregar"}));
    EXPECT_FALSE(driver.Enabled("bAceptar"));
    driver.Key("ctrl+Tab");
    EXPECT_TRUE(driver.Text("lbExp").starts_with("Estos renglones ya estan enlazados"));
    driver.Key("ctrl+Next");
    EXPECT_EQ(driver.Text("txtNota"),
              "Los títulos de las filas 3 y 4 no son los de la plantilla; compruebe que cada columna es la que se "
              "espera. Escoja un renglón para ver por qué no se procesa.");
    driver.Key("Down");
    EXPECT_EQ(driver.Text("txtNota"), "Fila 7 del libro: el código se repite: ya está en la fila 5 de la hoja.");
    for (const char* next : {"txtNota", "Check1", "bCancelar", "tabFiltro", "lvStatus"}) {
      driver.KeyUntilFocused("Tab", next);
    }
    Accept(driver);
    EXPECT_EQ(
        driver.Dismiss(),
        "Operación realizada con éxito: \n\nNuevos Items: 1\nPrecios Actualizados: 1\nRenglones no procesados: 1");
    driver.UntilGone("frmStatusImportar");
    driver.ClickUntilShown("bGuardar", "frmStatusImportar");  // nothing is announced twice, and the window goes on
    driver.Click("bCancelar");
  });
  EXPECT_EQ(Query("SELECT Descripcion FROM Items WHERE idItem = 'NUEVO-1'"), "UNO");
}

TEST_F(ReviewDialog, RowsAreCorrectedByMenuKeyAndSearch) {
  Run([&](WindowDriver& driver) {
    Choose(driver, node::movilnet, 0, places.examples + "/movilnet.xlsx");
    driver.ClickUntilShown("bGuardar", "frmStatusImportar");
    const unsigned before = driver.Lines("lvStatus");
    const std::string code = driver.Line("lvStatus", 0).front();
    driver.OpenMenu("lvStatus", 0, "shift+F10");
    driver.ChooseEntry(0);
    driver.UntilShown("buscarItem");
    driver.Type("ali0002");
    driver.Settle();
    EXPECT_EQ(driver.Line("lvItems", 0), (std::vector<std::string>{"ALI0002", "ARROZ 1 LB CAOBA", "60.00"}));
    EXPECT_TRUE(driver.Text("lbRenglon").starts_with("Para el renglón «" + code + "»"));
    driver.Key("Return");
    EXPECT_TRUE(driver.Dismiss().starts_with("Esta acción hizo que el Item/Renglón se borrara de esta pestaña."));
    EXPECT_EQ(driver.Lines("lvStatus"), before - 1);
    EXPECT_EQ(driver.Text("lCant2"), "1 renglon previamente asociado.");
    driver.OpenMenu("lvStatus", 0, "");
    driver.ChooseEntry(2);
    driver.UntilShown("pregunta");
    EXPECT_EQ(driver.Text("txtRespuesta"), driver.Line("lvStatus", 0).front());
    driver.Type("mi codigo 1");
    driver.KeyUntilGone("Return", "pregunta");
    driver.Settle();
    EXPECT_EQ(driver.Line("lvStatus", 0).front(), "MICODIGO1");
    driver.Key("Escape");
    EXPECT_TRUE(driver.Text("textoMensaje").starts_with("Usted corrigió renglones a mano"));
    driver.KeyUntilGone("Return", "mensaje");  // which is No
    Accept(driver);
    EXPECT_TRUE(driver.Dismiss().starts_with("Operación realizada con éxito"));
    driver.UntilGone("frmStatusImportar");
  });
  EXPECT_EQ(Query("SELECT count(*) FROM Items WHERE idItem = 'MICODIGO1'"), "1");
  EXPECT_EQ(runner.Run({"opciones", "15"}).output, "PreciosMovilnet_RutaUltimoArchivo=\n");
}

TEST_F(ReviewDialog, ALargeListIsShownAtOnceSortedAndStoppedWithoutATrace) {
  constexpr int rows = 150'000;
  const std::string book = LargeList(rows);
  const std::string items = Query("SELECT count(*) FROM Items");
  Run([&](WindowDriver& driver) {
    Choose(driver, node::excel, 0, book);
    driver.ClickUntilShown("bGuardar", "lvStatus");
    EXPECT_EQ(driver.Lines("lvStatus"), static_cast<unsigned>(rows));
    driver.ClickHeader("lvStatus", 0);
    driver.UntilLine("lvStatus", 2, "GRANDE10");
    driver.ClickHeader("lvStatus", 0);
    driver.UntilLine("lvStatus", 0, "GRANDE99999");
    Accept(driver);
    driver.UntilShown("estado");
    driver.KeyUntilShown("Escape", "mensaje");
    EXPECT_EQ(driver.Dismiss(), "La operación no pudo concluirse\nOperación interrumpida. No se cambió nada.");
    EXPECT_TRUE(driver.Shown("frmStatusImportar"));
    driver.KeyUntilGone("Escape", "frmStatusImportar");
  });
  EXPECT_EQ(Query("SELECT count(*) FROM Items"), items);
}

TEST_F(ReviewDialog, AWaitForAnotherProgramIsToldAndStopped) {
  Run([&](WindowDriver& driver) {
    Choose(driver, node::movilnet, 0, places.examples + "/movilnet.xlsx");
    driver.ClickUntilShown("bGuardar", "frmStatusImportar");
    SqliteDatabaseServices other({.path = places.database});
    auto writing = other.BeginTransaction();
    Accept(driver);
    driver.UntilShown("estado");
    EXPECT_EQ(driver.Text("lbEstado"), "Otro programa está usando la base de datos; esperando…");
    driver.Click("bDetener");
    EXPECT_EQ(driver.Dismiss(), "La operación no pudo concluirse\nOperación interrumpida. No se cambió nada.");
    driver.Settle();
    EXPECT_FALSE(driver.Shown("mensaje"));
    driver.Click("bAceptar");
    driver.UntilShown("estado");
    writing.reset();
    EXPECT_TRUE(driver.Dismiss().starts_with("Operación realizada con éxito"));
  });
}

TEST_F(ReviewDialog, IsAsLargeAsItWasEachTimeItIsOpened) {
  std::vector<int> heights;
  Run([&](WindowDriver& driver) {
    Choose(driver, node::movilnet, 0, places.examples + "/movilnet.xlsx");
    for (int time = 0; time < 3; ++time) {
      driver.ClickUntilShown("bGuardar", "lvStatus");
      driver.Settle();
      const auto height = [&] { return driver.Get("frmStatusImportar").GetSize().y; };
      driver.Until("the size of before", [&] { return heights.empty() || height() == heights.front(); });
      driver.OnWindows([&] { heights.push_back(height()); });
      driver.Click("bCancelar");
      driver.UntilGone("frmStatusImportar");
    }
  });
  ASSERT_EQ(heights.size(), 3U);
  EXPECT_EQ(heights, std::vector<int>(3, heights.front()));
}

TEST_F(ReviewDialog, HoldsThreeTabsAndFiveLinesAtTwiceTheTextSize) {
  const auto setTextSize = [](WindowDriver& driver, int percent) {
    driver.OnWindows([&] { g_object_set(gtk_settings_get_default(), "gtk-xft-dpi", percent * 96 * 1024 / 100, NULL); });
  };
  Run([&](WindowDriver& driver) {
    setTextSize(driver, 200);
    Choose(driver, node::excel, 0, places.examples + "/precios.xlsx");
    driver.ClickUntilShown("bGuardar", "lvStatus");
    driver.Settle();
    driver.OnWindows([&] {
      auto* const tabs = GTK_NOTEBOOK(driver.Get("tabFiltro").GetHandle());
      for (int page = 0; page < 3; ++page) {
        GtkWidget* const label = gtk_notebook_get_tab_label(tabs, gtk_notebook_get_nth_page(tabs, page));
        EXPECT_TRUE(gtk_widget_get_child_visible(label)) << page;
        EXPECT_LT(gtk_widget_get_allocated_height(label), gtk_widget_get_allocated_height(GTK_WIDGET(tabs))) << page;
      }
      auto* const tree = dynamic_cast<wxDataViewCtrl&>(driver.Get("lvStatus")).GtkGetTreeView();
      GtkTreePath* last = nullptr;
      gtk_tree_view_get_visible_range(GTK_TREE_VIEW(tree), nullptr, &last);
      EXPECT_GE(gtk_tree_path_get_indices(last)[0], 5);
      gtk_tree_path_free(last);
    });
    driver.Click("bCancelar");
    driver.UntilGone("frmStatusImportar");
    setTextSize(driver, 100);
  });
}

TEST_F(ReviewDialog, ColumnsComeBackAsTheyWereLeft) {
  const auto columns = [](WindowDriver& driver) {
    std::vector<std::pair<std::int32_t, int>> found;
    driver.OnWindows([&] {
      const auto& list = dynamic_cast<wxDataViewCtrl&>(driver.Get("lvStatus"));
      for (const std::int32_t column : ColumnsOnScreen(list)) {
        for (unsigned number = 0; number < list.GetColumnCount(); ++number) {
          const wxDataViewColumn& each = *list.GetColumn(number);
          if (static_cast<std::int32_t>(each.GetModelColumn()) == column) found.emplace_back(column, WidthOf(each));
        }
      }
    });
    return found;
  };
  const auto review = [&](WindowDriver& driver) {
    Choose(driver, node::movilnet, 0, places.examples + "/movilnet.xlsx");
    driver.ClickUntilShown("bGuardar", "lvStatus");
    driver.Settle();
  };
  std::vector<std::pair<std::int32_t, int>> left;
  Run([&](WindowDriver& driver) {
    review(driver);
    const std::string first = driver.Line("lvStatus", 0).front();
    driver.Drag("lvStatus", {120, 12}, {180, 12});  // the border after the first column
    driver.Drag("lvStatus", {40, 12}, {350, 12});   // the first column after the third
    EXPECT_EQ(driver.Line("lvStatus", 0).front(), first) << "a dragged header does not sort";
    left = columns(driver);
    driver.ClickHeader("lvStatus", 2);
    driver.UntilLine("lvStatus", 0, "MORC5120");
    driver.Click("bCancelar");
    driver.UntilGone("frmStatusImportar");
  });
  ASSERT_EQ(left.size(), 8U);
  EXPECT_EQ(left[2].first, 0);
  EXPECT_NEAR(left[2].second, 180, 3);
  Run([&](WindowDriver& driver) {
    review(driver);
    EXPECT_EQ(columns(driver), left);
    EXPECT_EQ(driver.Line("lvStatus", 0).front(), "MORC5120");
  });
}

}  // namespace
}  // namespace tolvan::test
