#include "import/TemplateExport.h"

#include "base/NumberText.h"
#include "database/sql/SqlDialects.h"
#include "import/ItemStatements.h"
#include "import/clsIE_PreciosExcel.h"
#include "support/ImportRig.h"

namespace tolvan {
namespace {

class TemplateExportTest : public test::ImportTest {
 protected:
  /// Items with rates, costs and prices of every size; money is what NUMERIC makes of its decimal text.
  void FillStore(int count) {
    const std::string numbers = "WITH RECURSIVE N(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM N WHERE i < ";
    const std::string items = numbers + std::to_string(count) + "), A(i, c, p) AS (SELECT i, ";
    const auto amount = [](const std::string& factor) {
      const std::string value = "((i * " + factor + " >> i % 7) & ((1 << i % 52) - 1))";
      return "printf('%d.%04d', " + value + " / 10000, " + value + " % 10000)";
    };
    const std::string all = items + amount("1099511628211") + ", " + amount("2147483647777") + " FROM N) INSERT INTO ";
    Execute("DELETE FROM Impuestos;" + numbers +
            "40) INSERT INTO Impuestos (ClaseI, Tasa) SELECT i, i * 7919 % 300000 / "
            "1e6 FROM N;" +
            all +
            "Items (idItem, idMarca, idDepartamento, ClaseI, Exento) SELECT 'I' || i, 'DEF', 'DEF', "
            "i % 41, i % 8 = 0 FROM A;" +
            all +
            "ItemsUnidades (idItem, idUnidad, EsPrincipal) SELECT 'I' || i, 'DEF', 1 "
            "FROM A;" +
            all + "ItemsUnidadesInv (idItem, idUnidad, Inv, CostoActual) SELECT 'I' || i, 'DEF', 0, c FROM A;" + all +
            "Precios (idItem, idUnidad, idLista, Inv, Precio) SELECT 'I' || i, 'DEF', 'DEF', 0, p FROM A WHERE i % 10");
  }
};

TEST_F(TemplateExportTest, AFilledTemplateImportsBackWithoutChanges) {
  constexpr int count = 4'000;
  FillStore(count);
  host.services.dialogs.yes = true;
  TemplateExport filled(host.context, sheets);
  std::string errorText;
  ASSERT_TRUE(filled.AbrirPlantilla("plantilla.xlt", errorText)) << errorText;
  EXPECT_EQ(filled.Rows(), count + 2);
  EXPECT_EQ(host.services.dialogs.questions, std::vector<std::string>{"¿Desea incluir los datos?"});
  auto importer = MakeImporter<clsIE_PreciosExcel>([](IClaseImportar&) {});
  ASSERT_TRUE(importer.Procesar(status)) << importer.Outcome().failure;
  ASSERT_EQ(importer.NumeroRenglones(), count + 2);
  for (std::int32_t row = 1; row <= importer.NumeroRenglones(); ++row) {
    const ReviewRow shown = importer.RowAt(row);
    EXPECT_EQ(shown.action, RowAction::None) << shown.code << " difference " << shown.difference.ToText();
  }
}

// With another cost and price in the other inventory, an alternate unit, and another list; without a price, EXENTO's.
TEST_F(TemplateExportTest, EveryItemHasTheCostAndPriceOfItsPrincipalUnitInTheInventoryAsked) {
  Execute(
      "UPDATE Items SET idDepartamento = 'CDMA', ClaseI = 2 WHERE idItem = 'VIEJO';"
      "UPDATE ItemsUnidadesInv SET CostoActual = 11 WHERE Inv = 1;"
      "INSERT INTO ItemsUnidadesInv (idItem, idUnidad, Inv, CostoActual) VALUES ('VIEJO', 'CAJA', 0, 900), "
      "('EXENTO', 'DEF', 1, 7);"
      "INSERT INTO Precios (idItem, idUnidad, idLista, Inv, Precio) VALUES ('VIEJO', 'CAJA', 'DEF', 0, 1100), "
      "('VIEJO', 'UND', 'DEF', 1, 101), ('VIEJO', 'UND', 'MAYOR', 0, 90)");
  host.services.dialogs.yes = true;
  const std::vector<std::string> expected{
      "VIEJO;ARTICULO VIEJO;ACME;CDMA;10;108|EXENTO;ARTICULO EXENTO;ACME;DEF;7.5;20|",
      "VIEJO;ARTICULO VIEJO;ACME;CDMA;11;109.08|EXENTO;ARTICULO EXENTO;ACME;DEF;7;|"};
  TemplateExport filled(host.context, sheets);
  std::string errorText;
  for (const std::int32_t inventory : {0, 1}) {
    host.application.inventory = inventory;
    ASSERT_TRUE(filled.AbrirPlantilla("plantilla.xlt", errorText)) << errorText;
    std::string rows;
    for (const test::GivenRow& row : sheets.rows) {
      for (const test::Given& cell : row) {
        if (&cell != row.data()) rows += ';';
        rows += cell.kind == CellKind::Number ? PlainNumberText(cell.number) : cell.text;
      }
      rows += '|';
    }
    EXPECT_EQ(rows, expected[static_cast<std::size_t>(inventory)]);
  }
  EXPECT_EQ(host.services.dialogs.defaults, (std::vector{false, false})) << "No is what Enter answers";
  host.application.databaseFailure = HostError(HostErrorKind::Unreachable, "no está");
  EXPECT_FALSE(filled.AbrirPlantilla("plantilla.xlt", errorText));
  EXPECT_NE(errorText.find("no está"), std::string::npos);
  host.services.dialogs.yes = false;
  EXPECT_TRUE(filled.AbrirPlantilla("plantilla.xlt", errorText)) << "without data the database is not asked";
  EXPECT_TRUE(sheets.rows.empty());
}

TEST(ItemQueries, HaveTheirExactTexts) {
  const SqlServerDialect dialect;
  const std::string fields =
      "SELECT I.ClaseI, I.Exento, P.Precio, I.idItem, I.Descripcion, I.idMarca, I.idDepartamento, IU.CostoActual FROM "
      "Items I INNER JOIN VistaItemsUnidades IU ON I.idItem = ";
  const std::string unit = "IU.idItem AND IU.EsPrincipal = 1 AND IU.Inv = 7";
  const std::string price =
      " LEFT JOIN Precios P ON P.idItem = IU.idItem AND P.idUnidad = IU.idUnidad AND P.idLista = 'DEF' AND P.Inv = "
      "IU.Inv ";
  const std::string order = "ORDER BY I.idDepartamento, I.idMarca, I.idItem";
  EXPECT_EQ(AllItemsStatement(7, "DEF").Render(dialect), fields + unit + price + order);
  EXPECT_EQ(ItemStatement("A'1", 7).Render(dialect), fields + "'A''1' AND I.idItem = " + unit + price + " " + order);
  EXPECT_EQ(CodeExistsStatement("A'1").Render(dialect), "SELECT idItem FROM Items WHERE idItem = 'A''1'");
  EXPECT_EQ(OtherUnitsStatement("A1", "UND").Render(dialect),
            "SELECT idItem, idUnidad, Multiplicador FROM ItemsUnidades WHERE idItem = 'A1' AND idUnidad <> 'UND'");
  EXPECT_EQ(SerialsStatement("A1").Render(dialect), "SELECT 1 FROM Items WHERE idItem = 'A1' AND RequiereSeriales = 1");
}

TEST_F(TemplateExportTest, TellsTheItemsThatWillNotComeBack) {
  Execute(
      "INSERT INTO Items (idItem, idMarca, idDepartamento) VALUES ('A B', 'DEF', 'DEF'), ('AB', 'DEF', 'DEF');"
      "INSERT INTO ItemsUnidades (idItem, idUnidad, EsPrincipal) VALUES ('A B', 'DEF', 1), ('AB', 'DEF', 1);"
      "INSERT INTO ItemsUnidadesInv (idItem, idUnidad, Inv, CostoActual) VALUES ('A B', 'DEF', 0, 'caro'), "
      "('AB', 'DEF', 0, 2);"
      "UPDATE Precios SET Precio = 900000000000000 WHERE idItem = 'VIEJO';"
      "DROP VIEW VistaItemsUnidades; CREATE VIEW VistaItemsUnidades AS SELECT U.*, V.Inv, CASE U.idItem WHEN 'VIEJO' "
      "THEN NULL ELSE V.CostoActual END AS CostoActual FROM ItemsUnidades U INNER JOIN ItemsUnidadesInv V ON "
      "V.idItem = U.idItem AND V.idUnidad = U.idUnidad");
  Execute("PRAGMA ignore_check_constraints = ON");  // as in a table that another program made
  Execute("UPDATE Items SET Descripcion = replace(hex(zeroblob(8192)), '0', '😀') WHERE idItem = 'EXENTO'");
  TemplateExport filled(host.context, sheets);
  filled.Make("plantilla.xlt", true);
  const std::string confused = "otro Item tiene un código que también se lee AB: la fila de uno cambiaría al otro";
  const std::vector<std::pair<std::string, std::string>> expected{
      // cost and price as they stand there, remark
      {"EXENTO 7.5 20", "la descripción del Item no cabe en una celda"},  // 16,384 emoji, two units each
      {"VIEJO - -",
       "el precio del Item con impuestos es demasiado grande para un importe; el Item no tiene costo registrado"},
      {"A B - -",
       "el código se lee AB al importarlo, sin espacios y hasta 14 caracteres: este Item no se encontrará; " +
           confused + "; el costo registrado del Item no es un importe (caro)"},
      {"AB 2 -", confused}};
  ASSERT_EQ(sheets.rows.size(), expected.size());
  for (std::size_t row = 0; row < expected.size(); ++row) {
    const auto amount = [&](const test::Given& cell) {
      return cell.kind == CellKind::Number ? " " + TextOf(FieldValue(cell.number)) : " -";
    };
    const test::GivenRow& cells = sheets.rows[row];
    EXPECT_EQ(cells[0].text + amount(cells[4]) + amount(cells[5]), expected[row].first);
    EXPECT_EQ(cells.size() > 6 ? cells[6].text : "", expected[row].second);
  }
  EXPECT_EQ(filled.ItemsWithRemarks().size(), 4U);
  EXPECT_EQ(filled.ItemsWithRemarks()[1].sheetRow, 6U);
  Execute("UPDATE Precios SET Precio = CASE idItem WHEN 'VIEJO' THEN 100 ELSE -922337203685477 END");
  sheets.rows = {{"VIEJO", "x", "", "", 12.0}, {"A B", "x", "", "", 1.0}, {"EXENTO", "x", "", "", 7.5, 21.0}};
  auto importer = MakeImporter<clsIE_PreciosExcel>([](IClaseImportar&) {});
  ASSERT_TRUE(importer.Procesar(status));
  EXPECT_TRUE(importer.RowAt(1).costChanged) << "a cost where there is none";
  EXPECT_EQ(importer.RowAt(1).previousCost, std::nullopt);
  EXPECT_EQ(importer.RowAt(3).action, RowAction::Update);
  EXPECT_EQ(importer.RowAt(3).difference.ToText(), "922337203685477.5807") << "as much as there is";
}

}  // namespace
}  // namespace tolvan
