#include "import/clsIE_PreciosExcel.h"

#include <tuple>

#include "support/ImportRig.h"

namespace tolvan {
namespace {

using test::Given;
using test::none;

class PreciosExcel : public test::ImportTest {
 protected:
  /// Reads, reviews and, when `apply`, applies; the rows as they were decided.
  std::vector<ReviewRow> Import(bool apply = true) {
    applied = false;
    auto importer = MakeImporter<clsIE_PreciosExcel>([&](IClaseImportar& shown) {
      note = list.NoteOfAll();
      if (apply) applied = shown.Iniciar(status);
    });
    importer.Procesar(status);
    outcome = importer.Outcome();
    numbers = {importer.NumeroRenglones(), importer.NumeroNuevos(), importer.NumeroAsociados()};
    std::vector<ReviewRow> rows;
    for (std::int32_t row = 1; row <= importer.NumeroRenglones(); ++row) rows.push_back(importer.RowAt(row));
    return rows;
  }

  std::vector<std::int32_t> numbers;
  bool applied = false;
  std::string note;
  ImportOutcome outcome;
};

TEST_F(PreciosExcel, DecidesOnEveryKindOfRow) {
  const Given error(CellKind::Error, "#N/A");
  const Given date(CellKind::Date);
  struct Case {
    test::GivenRow row;
    RowAction action;
    bool free;
    const char* told = "";
    const char* difference = "0.0000";
  };
  const std::vector<Case> cases{
      {{"nuevo 1", "tv  led", "", "", 10.5, 15.0}, RowAction::Create, true},
      {{"viejo", "x", "ACME", "DEF", 10.0, "caro"},
       RowAction::None,
       false,
       "sin cambios en costo ni PVP; el PVP no es un número (caro) y no se toma en cuenta"},
      {{"exento", "x", "ACME", "DEF", 7.5, 21.25}, RowAction::Update, false, "", "1.2500"},
      {{"sinprincipal", "x", "", "", 1.0, 1.0},
       RowAction::None,
       false,
       "el código ya está registrado en un Item sin unidad principal en este inventario"},
      {{"NUEVO1", "otra vez", "", "", 9.0, 9.0},
       RowAction::None,
       true,
       "el código se repite: ya está en la fila 5 de la hoja"},
      {{error, "x", "", "", 1.0, 1.0}, RowAction::None, false, "el código es un error de la hoja (#N/A)"},
      {{"  ", "x"}, RowAction::None, false, "el código queda vacío al quitarle los espacios"},
      {{"n2", "x", "", "", 1e300, 1.0}, RowAction::None, true, "el costo es demasiado grande para un importe"},
      {{"n3", "x", "", "", 1.0, -2.5}, RowAction::None, true, "el PVP es negativo (-2.5)"},
      {{"n4", "x", "", "", "gratis", date},
       RowAction::Create,
       true,
       "el costo no es un número (gratis) y no se toma en cuenta; el PVP no es un número (0) y no se toma en cuenta; "
       "el Item se crea con costo 0; el Item se crea sin precio"},
      {{"n5", "x", "", "", "nada", none, none, "caja", "12", 1.0, "3"},
       RowAction::Create,
       true,
       "el costo no es un número (nada) y no se toma en cuenta; el multiplicador no es un número (12) y no se toma en "
       "cuenta; el costo de la unidad alterna no es un número "
       "(3) y no se toma en cuenta; la unidad CAJA no se toma en cuenta: su multiplicador no es mayor que 1; el Item "
       "se crea con costo 0"},
      {{1234567890123.0, "numero"}, RowAction::Create, true}};
  for (const Case& each : cases) sheets.rows.push_back(each.row);
  sheets.rows.push_back({});
  sheets.rows.push_back({"DESPUES", "de un hueco no se lee"});
  const std::vector<ReviewRow> rows = Import(false);
  ASSERT_EQ(rows.size(), cases.size());
  for (std::size_t index = 0; index < cases.size(); ++index) {
    EXPECT_EQ(rows[index].action, cases[index].action) << rows[index].code;
    EXPECT_EQ(rows[index].codeFree, cases[index].free) << rows[index].code;
    EXPECT_EQ(rows[index].difference.ToText(), cases[index].difference) << rows[index].code;
    EXPECT_EQ(rows[index].AllRemarks(), cases[index].told) << rows[index].code;
    EXPECT_EQ(rows[index].reason.empty(), rows[index].action != RowAction::None) << rows[index].code;
  }
  EXPECT_EQ(rows[0].description, "TV LED");
  EXPECT_EQ(rows[0].brand + rows[0].department, "DEFDEF");
  EXPECT_EQ(rows.back().code, "1234567890123");
  EXPECT_EQ(numbers, (std::vector<std::int32_t>{12, 8, 1}));
  EXPECT_TRUE(note.ends_with("2 renglones que se procesarán tienen observaciones; el primero es el de la fila 14."))
      << note;
}

TEST_F(PreciosExcel, CreatesItemsWholeAndKeepsFormerValues) {
  sheets.rows = {{"nuevo", "articulo", "OTRA", "SERIAL", 100.0, 118.0, none, "caja", 6.0, 708.0, 600.0},
                 {"SUELTO", "suelto", "ACME", "TIENDA", 20.0, 23.6, none, "caja", 6.0, 118.0, 100.0, none, 3.0},
                 {"VIEJO", "x", "ACME", "DEF", 12.0, 236.0, none, "caja", 12.0, 1180.0, 120.0, none, 0.3},
                 {"EXENTO", "x", "ACME", "DEF", 7.5, 30.0}};
  EXPECT_TRUE(Import().at(2).remarks.empty());
  ASSERT_TRUE(applied) << outcome.failure << outcome.cause;
  EXPECT_EQ(Query("SELECT * FROM Marcas WHERE idMarca = 'OTRA'"), "OTRA,OTRA");
  EXPECT_EQ(Query("SELECT idDepartamento, Descripcion FROM Departamentos WHERE idDepartamento = 'TIENDA'"),
            "TIENDA,TIENDA");
  EXPECT_EQ(Query("SELECT * FROM Items WHERE idItem IN ('NUEVO', 'SUELTO') ORDER BY 1"),
            "NUEVO,ARTICULO,OTRA,SERIAL,1,False,False,True,0,True,NULL|"
            "SUELTO,SUELTO,ACME,TIENDA,1,False,False,True,0,False,NULL");
  // A department with serial numbers takes no alternate unit.
  EXPECT_EQ(Query("SELECT * FROM ItemsUnidades WHERE idItem IN ('NUEVO', 'SUELTO') ORDER BY 1, 2"),
            "NUEVO,DEF,True,1,False|SUELTO,CAJA,False,6,True|SUELTO,DEF,True,1,False");
  EXPECT_EQ(Query("SELECT * FROM ItemsUnidadesInv WHERE idItem IN ('NUEVO', 'SUELTO') ORDER BY 1, 2, 3"),
            "NUEVO,DEF,0,100,0,2,0|NUEVO,DEF,1,100,0,2,0|SUELTO,CAJA,0,100,0,2,0|SUELTO,CAJA,1,100,0,2,0|"
            "SUELTO,DEF,0,20,0,3,0|SUELTO,DEF,1,20,0,3,0");
  EXPECT_EQ(Query("SELECT * FROM Precios WHERE idItem IN ('NUEVO', 'SUELTO') ORDER BY 1, 2, 4"),
            "NUEVO,DEF,DEF,0,100,NULL,False|NUEVO,DEF,DEF,1,100,NULL,False|SUELTO,CAJA,DEF,0,100,NULL,False|"
            "SUELTO,CAJA,DEF,1,100,NULL,False|SUELTO,DEF,DEF,0,20,NULL,False|SUELTO,DEF,DEF,1,20,NULL,False");
  EXPECT_EQ(Query("SELECT * FROM ItemsUnidadesInv WHERE idItem IN ('VIEJO', 'EXENTO') ORDER BY 1, 2, 3"),
            "EXENTO,DEF,0,7.5,0,0.15,0|VIEJO,CAJA,0,120,0,2.4,0|VIEJO,CAJA,1,120,0,2.4,0|VIEJO,UND,0,12,10,0.3,0.2|"
            "VIEJO,UND,1,12,10,0.3,0.2");
  EXPECT_EQ(Query("SELECT * FROM Precios WHERE idItem IN ('VIEJO', 'EXENTO') ORDER BY 1, 2, 4"),
            "EXENTO,DEF,DEF,0,30,20,False|EXENTO,DEF,DEF,1,30,NULL,False|VIEJO,CAJA,DEF,0,1000,NULL,False|"
            "VIEJO,CAJA,DEF,1,1000,NULL,False|VIEJO,UND,DEF,0,200,100,False|VIEJO,UND,DEF,1,200,NULL,False");
  const test::FakeDialogs::Box summary{
      MessageIcon::Information, "Tolvan",
      "Operación realizada con éxito: \r\n\r\nNuevos Items: 2\r\nPrecios Actualizados: "
      "2\r\nRenglones no procesados: 0"};
  EXPECT_EQ(host.services.dialogs.boxes, std::vector{summary});
  EXPECT_EQ(status.range, 4);
  EXPECT_EQ(status.advanced, 4);
  EXPECT_EQ(status.texts,
            (std::vector<std::string>{"Analizando fila 5", "Analizando fila 6", "Analizando fila 7",
                                      "Analizando fila 8", "Realizando transacción", "Finalizando transacción"}));
}

TEST_F(PreciosExcel, AppliesTheAlternateUnitOnlyWhereItIsTheItemsOwn) {
  const char* const nothingNamed = "no se nombra una unidad alterna: las columnas I, J y K no se toman en cuenta";
  const std::vector<std::tuple<test::GivenRow, RowAction, Remarks>> cases{
      {{"caja", 12.0, 1180.0}, RowAction::Update, {}},
      {{"caja", 12.0}, RowAction::None, {}},
      {{"caja", 1.0, 1180.0},
       RowAction::None,
       {"la unidad CAJA no se toma en cuenta: su multiplicador no es mayor que 1"}},
      {{"def", 12.0}, RowAction::None, {nothingNamed}},
      {{"", none, 5.0}, RowAction::None, {nothingNamed}},
      {{"", none, none, 5.0}, RowAction::None, {nothingNamed}},
      {{"def", 1.0}, RowAction::None, {}},
      {{"caja", 12.4, 1180.0}, RowAction::Update, {"el multiplicador 12.4 se redondea a 12"}},
      {{"", none, none, none, none, 5.0},
       RowAction::None,
       {"el costo en moneda extranjera no se toma en cuenta, porque el costo no cambia"}},
      {{"caja", 24.0, 1180.0}, RowAction::None, {"la unidad CAJA del Item es de 12 y no de 24: no se toma en cuenta"}},
      {{"saco", 12.0, 1180.0}, RowAction::None, {"el Item no tiene la unidad SACO: no se toma en cuenta"}},
      {{"und", 12.0, 1180.0}, RowAction::None, {"el Item no tiene la unidad UND: no se toma en cuenta"}}};
  for (const auto& [unit, action, remarks] : cases) {
    test::GivenRow row{"VIEJO", "x", "", "", 10.0, 118.0, none};
    row.insert(row.end(), unit.begin(), unit.end());
    sheets.rows = {row};
    const ReviewRow decided = Import(false).front();
    EXPECT_EQ(decided.action, action) << unit.size();
    EXPECT_EQ(decided.remarks, remarks);
  }
  Execute("UPDATE Items SET RequiereSeriales = 1 WHERE idItem = 'VIEJO'");
  sheets.rows = {{"VIEJO", "x", "", "", 10.0, 118.0, none, "caja", 12.0, 1180.0}};
  EXPECT_EQ(Import(false).front().action, RowAction::None);
}

// The engine's own comparison knows the casing of ASCII letters only.
TEST_F(PreciosExcel, FindsCodesInAnotherCasing) {
  Execute(
      "INSERT INTO Marcas (idMarca) VALUES ('peñón'); INSERT INTO Departamentos (idDepartamento) VALUES ('Niñas');"
      "INSERT INTO Items (idItem, Descripcion, idMarca, idDepartamento) VALUES ('ñu', 'ÑU', 'peñón', 'Niñas'), "
      "('é1', 'A', 'peñón', 'DEF'), ('É1', 'B', 'peñón', 'DEF'), ('ſ1', 'C', 'DEF', 'DEF'), ('S1', 'D', 'DEF', 'DEF'), "
      "('ſ2', 'E', 'DEF', 'DEF');"
      "INSERT INTO ItemsUnidades (idItem, idUnidad, EsPrincipal, Multiplicador) SELECT idItem, 'DEF', 1, 1 FROM Items "
      "WHERE length(idItem) = 2; INSERT INTO ItemsUnidades VALUES ('ñu', 'caña', 0, 12, 0);"
      "INSERT INTO ItemsUnidadesInv (idItem, idUnidad, Inv, CostoActual) SELECT idItem, idUnidad, 0, 5 FROM "
      "ItemsUnidades "
      "WHERE length(idItem) = 2");
  sheets.rows = {{"Ñu", "x", "", "", 7.0, none, none, "Caña", 12.0, none, 80.0},
                 {"ñU", "x", "", "", 8.0},
                 {"é1", "x", "", "", 7.0},
                 {"s1", "x", "", "", 7.0},
                 {"s2", "x", "", "", 7.0},
                 {"ÑAME", "x", "Peñón", "niñas", 7.0}};
  const std::vector<ReviewRow> rows = Import();
  ASSERT_TRUE(applied) << outcome.cause;
  EXPECT_EQ(rows[0].associated, "ñu");
  EXPECT_EQ(rows[1].reason, "el código se repite: ya está en la fila 5 de la hoja");
  EXPECT_EQ(rows[2].associated + rows[3].associated + rows[4].associated, "É1S1ſ2");
  EXPECT_EQ(
      Query("SELECT idItem, idUnidad, CostoActual FROM ItemsUnidadesInv WHERE idItem IN ('ñu', 'ÑU') AND Inv = 0"),
      "ñu,caña,80|ñu,DEF,7");
  EXPECT_EQ(Query("SELECT idMarca, idDepartamento FROM Items WHERE idItem = 'ÑAME'"), "peñón,Niñas");
  EXPECT_EQ(Query("SELECT count(*) FROM Marcas WHERE idMarca LIKE 'pe%'"), "1");
}

TEST_F(PreciosExcel, PaintsTabsAndHasNoAssociation) {
  sheets.rows = {{"A", "nuevo", "", "", 1234.5, 10.0}, {"EXENTO", "x", "", "", 7.5, 21.25}, {"VIEJO", "x"}};
  auto importer = MakeImporter<clsIE_PreciosExcel>([&](IClaseImportar& shown) {
    EXPECT_EQ(list.Lines(), 1U);  // the first tab
    EXPECT_EQ(list.TextsOf(0), (ReviewLine{"A", "", "Sí", "NUEVO", "1,234.50", "10.00", " ", "Agregar"}));
    shown.PintarLV(list, 0, 2);
    ASSERT_EQ(list.Lines(), 1U);
    EXPECT_EQ(list.TextsOf(0), (ReviewLine{"EXENTO", "EXENTO", " ", "X", " ", "21.25", "1.25", "Actualizar"}));
    shown.PintarLV(list, 0, 3);
    EXPECT_EQ(list.RowOfLine(0), 3);
    const std::vector<std::vector<bool>> expected{
        {false, false, false}, {true, false, true}, {false, true, false}, {true, false, false}, {false, false, false}};
    for (std::int32_t row = 0; row <= 4; ++row) {
      bool a = true;
      bool b = true;
      bool c = true;
      shown.DeterminarAtributosMenu(row, a, b, c);
      EXPECT_EQ((std::vector{a, b, c}), expected[static_cast<std::size_t>(row)]) << row;
    }
    EXPECT_FALSE(shown.AsignarItem(1, "VIEJO"));
    EXPECT_FALSE(shown.AsignarNuevoItem(1, "OTRO"));
  });
  EXPECT_TRUE(importer.Procesar(status));
}

TEST_F(PreciosExcel, AppliesWhatHoldsWhenItAppliesAndCountsThat) {
  sheets.rows = {{"VIEJO", "x", "", "", 12.0, 236.0}, {"NUEVO", "uno", "", "", 1.0}, {"OTRO", "dos", "", "", 2.0}};
  auto importer = MakeImporter<clsIE_PreciosExcel>([&](IClaseImportar& shown) {
    // Between review and applying another program brings VIEJO to the list's values and takes the code NUEVO.
    Execute(
        "UPDATE Precios SET Precio = 200 WHERE idItem = 'VIEJO'; UPDATE ItemsUnidadesInv SET CostoActual = 12;"
        "INSERT INTO Items (idItem, idMarca, idDepartamento) VALUES ('NUEVO', 'DEF', 'DEF')");
    EXPECT_TRUE(shown.Iniciar(status));
  });
  EXPECT_TRUE(importer.Procesar(status));
  const ImportOutcome& counted = importer.Outcome();
  EXPECT_EQ(std::tuple(counted.created, counted.updated, counted.unprocessed, counted.failure),
            std::tuple(1, 0, 2, ""));
  EXPECT_EQ(Query("SELECT Precio, PrecioAnterior FROM Precios WHERE idItem = 'VIEJO'"), "200,NULL");
  EXPECT_EQ(Query("SELECT Descripcion FROM Items WHERE idItem IN ('NUEVO', 'OTRO') ORDER BY idItem"), "NULL|DOS");
}

}  // namespace
}  // namespace tolvan
