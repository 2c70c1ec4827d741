#include "ui/frmStatusImportar.h"

#include <gtest/gtest.h>

#include <array>

#include "support/FakeHost.h"
#include "support/FakeReviewView.h"

namespace tolvan {
namespace {

/// Five rows; associating works for the first three.
class FakeImporter : public IClaseImportar, public ReviewLineSource {
 public:
  ReviewLine LineOf(std::int32_t row) const override { return {"C" + std::to_string(row)}; }
  std::string NoteOf(std::int32_t row) const override { return row == 2 ? "repetido" : ""; }
  std::string NoteOfAll() const override { return note; }
  std::string NoteOfChange() const override { return "También cambió otra. "; }
  std::string UntoldFailure() const override { return failure; }
  std::optional<Currency> AmountOf(std::int32_t row, std::size_t column) const override {
    if (column != review_column::price || row % 5 == 0) return std::nullopt;
    return Currency::FromUnits(row % 3);
  }

  std::vector<std::string> calls;
  std::string note;
  std::string failure;
  std::array<std::int32_t, 3> counts{};
  bool succeeds = true;
  std::function<void()> whileApplying = [] {};

 private:
  bool IClaseImportar_Iniciar(StatusWindow&) override {
    calls.emplace_back("iniciar");
    whileApplying();
    return succeeds;
  }
  std::int32_t IClaseImportar_NumeroRenglones() const override { return counts[0]; }
  std::int32_t IClaseImportar_NumeroNuevos() const override { return counts[1]; }
  std::int32_t IClaseImportar_NumeroAsociados() const override { return counts[2]; }
  void IClaseImportar_PintarLV(ReviewList&, std::int32_t row, int tab) override {
    calls.push_back("pintar " + std::to_string(row) + " " + std::to_string(tab));
  }
  void IClaseImportar_DeterminarAtributosMenu(std::int32_t row, bool& a, bool& b, bool& c) const override {
    a = row <= 3;
    b = row == 2;
    c = row != 2;
  }
  bool IClaseImportar_AsignarItem(std::int32_t row, std::string_view item) override {
    calls.push_back("item " + std::to_string(row) + " " + std::string(item));
    return succeeds;
  }
  bool IClaseImportar_AsignarNuevoItem(std::int32_t row, std::string_view code) override {
    calls.push_back("codigo " + std::to_string(row) + " " + std::string(code));
    return succeeds;
  }
};

class StatusImportar : public ::testing::Test {
 protected:
  using Box = test::FakeDialogs::Box;

  StatusImportar() { form.SetClase(importer); }

  test::FakeHost host;
  test::FakeDialogs& dialogs = host.services.dialogs;
  FakeImporter importer;
  test::FakeReviewWindow window{host.context};
  test::FakeReviewView& view = window.view;
  frmStatusImportar& form = window.form;
};

TEST_F(StatusImportar, CountsInSingularAndPlural) {
  const auto summary = [this](std::int32_t rows, std::int32_t fresh, std::int32_t associated) {
    importer.counts = {rows, fresh, associated};
    form.RefrescarSumario();
    return view.summary[0] + view.summary[1] + view.summary[2];
  };
  EXPECT_EQ(summary(5, 1, 3), "5 renglones en total.1 renglon nuevo o sin asociar.3 renglones previamente asociados.");
  EXPECT_EQ(summary(1, 3, 0), "1 renglon en total.3 renglones nuevos o sin asociar.0 renglones previamente asociados.");
}

TEST_F(StatusImportar, TellsWhyTheSelectedRowIsNotProcessed) {
  const auto noteOf = [this](std::int32_t row) {
    form.lvStatus_ItemClick(row);
    return view.note;
  };
  view.list.Clear(importer);
  form.tabFiltro_Click(3);
  EXPECT_EQ(noteOf(0), "") << "there is no row to choose";
  view.list.Add(2);
  view.list.Add(3);
  EXPECT_EQ(noteOf(0), "Escoja un renglón para ver por qué no se procesa.");
  EXPECT_EQ(noteOf(2), "repetido");
  EXPECT_EQ(noteOf(3), "");
  importer.note = "Sobran filas.";
  EXPECT_EQ(noteOf(0), "Sobran filas. Escoja un renglón para ver por qué no se procesa.");
  EXPECT_TRUE(form.mnuRenglonR_Click(0, 3));
  EXPECT_EQ(noteOf(2), "También cambió otra. repetido");
  form.tabFiltro_Click(1);
  form.ShowModal();
  EXPECT_EQ(view.note, "Sobran filas.");
}

TEST_F(StatusImportar, ChangesRowsThroughTheMenu) {
  struct Case {
    int entry;
    std::int32_t row;
    std::optional<std::string> answer;
    bool importerAccepts;
    std::vector<std::string> calls;
  };
  const std::vector<Case> cases{
      {0, 1, "ITEM", true, {"item 1 ITEM", "pintar 1 3"}},
      {0, 1, "ITEM", false, {"item 1 ITEM"}},
      {0, 1, "", true, {}},
      {0, 1, std::nullopt, true, {}},
      {0, 4, "ITEM", true, {}},
      {0, 0, "ITEM", true, {}},
      {1, 2, std::nullopt, true, {"item 2 ", "pintar 2 3"}},
      {1, 1, std::nullopt, true, {}},
      {2, 1, " nuevo codigo largo", true, {"codigo 1 NUEVOCODIGOL", "pintar 1 3"}},
      {2, 1, "  ", true, {}},
      {2, 1, std::nullopt, true, {}},
      {2, 2, "x", true, {}},
      {3, 1, "x", true, {}},
  };
  form.lvStatus_MouseUp(1, 2);
  form.lvStatus_MouseUp(2, 0);
  EXPECT_TRUE(view.menu.empty());
  form.lvStatus_MouseUp(2, 2);
  EXPECT_EQ(view.menu, (std::vector<bool>{true, true, false}));
  form.tabFiltro_Click(3);
  for (const Case& each : cases) {
    importer.calls.clear();
    importer.succeeds = each.importerAccepts;
    view.picked = dialogs.answer = each.answer;
    EXPECT_EQ(form.mnuRenglonR_Click(each.entry, each.row), each.calls.size() == 2);
    EXPECT_EQ(importer.calls, each.calls) << each.entry << " " << each.row;
  }
  EXPECT_EQ(view.query, "SELECT idItem FROM Items WHERE Oculto = ?");
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(StatusImportar, RefusesACodeThatIsRegistered) {
  // An engine that finds codes only in the casing in which they are stored.
  struct CasedDatabase : test::FakeDatabase {
    bool FindsCodesInAnyCase() const override { return false; }
  } database;
  host.application.database = &database;
  database.answer = [](const SqlStatement& query) {
    const std::string stored = "año1";
    std::vector<std::vector<FieldValue>> rows;
    if (query.Literals().empty() || query.Literals()[0] == SqlLiteral(stored)) rows.push_back({stored});
    return std::make_unique<test::FakeRecordset>(std::vector<std::string>{"idItem"}, rows);
  };
  EXPECT_FALSE(form.EstablecerCodigo(1, "Año 1"));
  EXPECT_TRUE(importer.calls.empty());
  EXPECT_EQ(dialogs.boxes, (std::vector<Box>{{MessageIcon::Exclamation, "Tolvan",
                                              "Este código AÑO1 ya está registrado en la base de datos."}}));
}

TEST_F(StatusImportar, ProceedsOnceAndForgetsTheFile) {
  host.settings.SetText(Setting::RutaUltimoArchivo, "libro.xlsx");
  form.ShowModal();
  EXPECT_FALSE(view.accept);
  EXPECT_TRUE(view.explanation.starts_with("Estos renglones representan Nuevos Items"));
  for (const bool ticked : {true, false}) {
    form.Check1_Click(ticked);
    EXPECT_EQ(view.accept, ticked);
  }
  // Clicks that arrive while the import runs.
  importer.whileApplying = [&] {
    EXPECT_FALSE(form.bAceptar_Click());
    EXPECT_FALSE(form.QueryUnload());
    EXPECT_FALSE(form.mnuRenglonR_Click(0, 1));
  };
  importer.succeeds = false;
  view.list.Clear(importer);
  importer.failure = "Fila 7: el código está repetido";
  EXPECT_FALSE(form.bAceptar_Click());
  EXPECT_EQ(dialogs.boxes, (std::vector<Box>{{MessageIcon::Exclamation, "Tolvan", "Fila 7: el código está repetido"}}));
  EXPECT_EQ(view.closed, 0);
  EXPECT_EQ(host.settings.Text(Setting::RutaUltimoArchivo), "libro.xlsx");
  importer.succeeds = true;
  EXPECT_TRUE(form.bAceptar_Click());
  EXPECT_EQ(view.closed, 1);
  EXPECT_EQ(host.settings.Text(Setting::RutaUltimoArchivo), "");
  EXPECT_EQ(std::count(importer.calls.begin(), importer.calls.end(), "iniciar"), 2);
}

TEST_F(StatusImportar, TheCloseBoxIsCancel) {
  host.settings.SetText(Setting::RutaUltimoArchivo, "libro.xlsx");
  EXPECT_FALSE(form.QueryUnload());
  EXPECT_EQ(view.closed, 1);
  EXPECT_TRUE(importer.calls.empty());
  EXPECT_TRUE(form.mnuRenglonR_Click(0, 1));
  EXPECT_FALSE(form.QueryUnload());
  EXPECT_EQ(view.closed, 1) << "asked whether the correction is to be lost, and not answered with yes";
  EXPECT_EQ(dialogs.defaults, std::vector{false});
  dialogs.yes = true;
  EXPECT_FALSE(form.QueryUnload());
  EXPECT_EQ(view.closed, 2);
  EXPECT_EQ(host.settings.Text(Setting::RutaUltimoArchivo), "libro.xlsx");
}

TEST(ReviewListModel, HoldsATabOfAnyLengthInAnyOrder) {
  using Rows = std::vector<std::int32_t>;
  FakeImporter importer;
  int changes = 0;
  ReviewListModel list([&] { ++changes; });
  {
    const ReviewListLock lock(list);
    list.Clear(importer);
    for (std::int32_t row = 2; row <= 100'000; row += 2) list.Add(row);
  }
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(list.TextsOf(49'999)[0], "C100000");
  list.Remove(50'000);
  list.Remove(50'000);
  list.Refresh(50'001);
  EXPECT_EQ(changes, 2);
  EXPECT_EQ(list.Lines(), 49'999U);
  EXPECT_EQ(list.LineOfRow(50'002), 24'999U);

  list.Clear(importer);
  for (const std::int32_t row : {1, 2, 3, 5, 10, 21}) list.Add(row);
  const auto sorted = [&](int column, bool ascending) {
    list.SortBy(column, ascending);
    Rows shown;
    for (std::size_t line = 0; line < list.Lines(); ++line) shown.push_back(list.RowOfLine(line));
    return shown;
  };
  EXPECT_EQ(sorted(0, true), (Rows{1, 10, 2, 21, 3, 5}));
  EXPECT_EQ(sorted(review_column::price, true), (Rows{5, 10, 3, 21, 1, 2})) << "lines without an amount first";
  EXPECT_EQ(sorted(review_column::price, false), (Rows{2, 1, 3, 21, 5, 10}));
  list.Remove(21);
  EXPECT_EQ(list.LineOfRow(3), 2U);
  EXPECT_EQ(sorted(-1, true), (Rows{1, 2, 3, 5, 10}));
}

}  // namespace
}  // namespace tolvan
