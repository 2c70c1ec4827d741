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

// Two tax classes, inventories, price lists, brands and departments; A1 has two units, D4 no price, E5 one inventory.
constexpr const char* variedStore = R"sql(
DELETE FROM Precios; DELETE FROM ItemsUnidadesInv; DELETE FROM ItemsUnidades; DELETE FROM Items;
INSERT INTO Marcas (idMarca) VALUES ('M1'), ('M2');
INSERT INTO Departamentos (idDepartamento) VALUES ('D1'), ('D2');
INSERT INTO Items (idItem, Descripcion, idMarca, idDepartamento, ClaseI, Exento) VALUES ('A1', 'UNO', 'M2', 'D1', 2, 0),
  ('B2', 'DOS', 'M1', 'D1', 1, 1), ('C3', 'TRES', 'M1', 'D2', 1, 0), ('D4', 'CUATRO', 'M1', 'D1', 1, 0),
  ('E5', 'CINCO', 'M2', 'D2', 1, 0);
INSERT INTO ItemsUnidades (idItem, idUnidad, EsPrincipal, Multiplicador) VALUES ('A1', 'CAJA', 0, 12),
  ('A1', 'UND', 1, 1), ('B2', 'DEF', 1, 1), ('C3', 'DEF', 1, 1), ('D4', 'DEF', 1, 1), ('E5', 'DEF', 1, 1);
INSERT INTO ItemsUnidadesInv (idItem, idUnidad, Inv, CostoActual) VALUES ('A1', 'CAJA', 0, 900), ('A1', 'UND', 0, 80),
  ('A1', 'UND', 1, 81), ('B2', 'DEF', 0, 7.5), ('B2', 'DEF', 1, 7), ('C3', 'DEF', 0, 40), ('C3', 'DEF', 1, 41),
  ('D4', 'DEF', 0, 1), ('D4', 'DEF', 1, 2), ('E5', 'DEF', 1, 3);
INSERT INTO Precios (idItem, idUnidad, idLista, Inv, Precio) VALUES ('A1', 'CAJA', 'DEF', 0, 1100),
  ('A1', 'UND', 'DEF', 0, 100), ('A1', 'UND', 'DEF', 1, 101), ('A1', 'UND', 'MAYOR', 0, 90), ('B2', 'DEF', 'DEF', 0, 20),
  ('C3', 'DEF', 'DEF', 0, 50), ('C3', 'DEF', 'DEF', 1, 51), ('D4', 'DEF', 'MAYOR', 0, 5), ('E5', 'DEF', 'DEF', 1, 10);
)sql";

TEST_F(TemplateExportTest, EveryItemHasTheCostAndPriceOfItsPrincipalUnitInTheInventoryAsked) {
  Execute(variedStore);
  host.services.dialogs.yes = true;
  const std::vector<std::string> expected{
      "B2;DOS;M1;D1;7.5;20|D4;CUATRO;M1;D1;1;|A1;UNO;M2;D1;80;108|C3;TRES;M1;D2;40;59|",
      "B2;DOS;M1;D1;7;|D4;CUATRO;M1;D1;2;|A1;UNO;M2;D1;81;109.08|C3;TRES;M1;D2;41;60.18|E5;CINCO;M2;D2;3;11.8|"};
  for (const std::int32_t inventory : {0, 1}) {
    host.application.inventory = inventory;
    std::string errorText;
    ASSERT_TRUE(TemplateExport(host.context, sheets).AbrirPlantilla("plantilla.xlt", errorText)) << errorText;
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

TEST_F(TemplateExportTest, AnEmptyTemplateHasNoRows) {
  TemplateExport filled(host.context, sheets);
  std::string errorText;
  EXPECT_TRUE(filled.AbrirPlantilla("plantilla.xlt", errorText));
  EXPECT_TRUE(sheets.rows.empty());
  host.application.databaseFailure = HostError(HostErrorKind::Unreachable, "no está");
  host.services.dialogs.yes = true;
  EXPECT_FALSE(filled.AbrirPlantilla("plantilla.xlt", errorText));
  EXPECT_NE(errorText.find("no está"), std::string::npos);
}

}  // namespace
}  // namespace tolvan
