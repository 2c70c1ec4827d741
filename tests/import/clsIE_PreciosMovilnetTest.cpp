#include "import/clsIE_PreciosMovilnet.h"

#include <array>
#include <tuple>

#include "import/MovilnetRow.h"
#include "support/ImportRig.h"
#include "ui/ItemSearch.h"

namespace tolvan {
namespace {

using test::none;

test::GivenRow Line(const char* model, const char* brand, const char* type, double price, double cost) {
  return {model, brand, type, none, price, none, cost};
}

class PreciosMovilnet : public test::ImportTest {
 protected:
  PreciosMovilnet() { sheets.firstRow = 4; }

  void Import(const std::function<void(IClaseImportar&)>& review) {
    auto importer = MakeImporter<clsIE_PreciosMovilnet>(review);
    made = &importer;
    importer.Procesar(status);
    made = nullptr;
  }
  RowAction ActionOf(std::int32_t row) const { return made->RowAt(row).action; }

  clsIE_PreciosMovilnet* made = nullptr;
};

TEST_F(PreciosMovilnet, TakesTheFingerprintOfBrandAndDescription) {
  const std::vector<std::array<const char*, 3>> cases{
      {"Ñandú", "Módem 3g", "34d4816aea782899dfbeece7c0bca717"},       // md5sum of "ÑANDÚMÓDEM 3G" in Windows-1252
      {"X", "5 µm ƒ", "00b59bb0a343aabcf87e392f733130bc"},             // "X5 ?M ?"
      {"Samsung", "Galaxy 日本", "080f86c238ec273f1eae7423b3f47bc2"},  // "SAMSUNGGALAXY u65e5;u672c;"
      {"Samsung", "Galaxy u65e5;u672c;", "5351b7754f672c983ad22870475cf23f"},  // the same with "U65E5;U672C;"
      {"Samsung", "Galaxy α ß", "51e7029a25c9b34d5ff14ff74303cefa"}};          // "SAMSUNGGALAXY u391; ß"
  for (const auto& [brand, model, md5] : cases) EXPECT_EQ(OriginFingerprint(hashes, brand, model), md5) << model;
}

TEST_F(PreciosMovilnet, CreatesAndThenFindsItsItemsAgain) {
  sheets.rows = {Line("Galaxy Y", "Samsung", "GSM", 118, 50),
                 Line("Curve 8520", "Blackberry", "Telefono", 236, 100),
                 Line("GALAXY y", "samsung", "GSM", 999, 999),
                 {"Lumia", test::Given(CellKind::Error, "#N/A"), "GSM", none, 118.0, none, 50.0},
                 {"Nota al pie", "x", "y", none, "consultar", none, 1.0},
                 Line("Nunca", "leido", "GSM", 1, 1)};
  Import([&](IClaseImportar& shown) {
    EXPECT_EQ(made->RowAt(4).reason, "la marca es un error de la hoja (#N/A)");
    EXPECT_TRUE(shown.Iniciar(status)) << made->Outcome().cause;
  });
  EXPECT_EQ(Query("SELECT idItem, Descripcion, idMarca, idDepartamento, RequiereSeriales, length(MD5OrigenImportar) "
                  "FROM Items WHERE MD5OrigenImportar IS NOT NULL ORDER BY 1"),
            "TBLCURVE8520,Curve 8520,BLACKBERRY,DEF,False,32|TSAGALAXYY,Galaxy Y,SAMSUNG,GSM,False,32");
  EXPECT_EQ(Query("SELECT Inv, Precio, PrecioAnterior, Fijo FROM Precios WHERE idItem = 'TSAGALAXYY'"),
            "0,100,NULL,True|1,100,NULL,True");
  sheets.rows = {Line("Galaxy Y", "Samsung", "GSM", 236, 60),
                 Line("Galaxy Y", "Samsung", "GSM", 999, 999),
                 {"Curve", "Blackberry", "GSM", none, 5.0, none, "caro"}};
  Import([&](IClaseImportar& shown) {
    const ReviewRow row = made->RowAt(1);
    EXPECT_EQ(row.action, RowAction::Update);
    EXPECT_EQ(row.difference.ToText(), "118.0000");
    EXPECT_FALSE(row.codeFree);
    EXPECT_TRUE(made->ReadingNote().ends_with("en la fila 6 de la hoja: la columna G (costo) no es un número (caro)."));
    EXPECT_EQ(made->LineOf(1)[2], "Sí");  // deliberate: taken, not free
    EXPECT_EQ(made->RowAt(2).reason, "el modelo se repite: ya está en la fila 4 de la hoja");
    EXPECT_TRUE(shown.Iniciar(status));
  });
  EXPECT_EQ(Query("SELECT Inv, Precio, PrecioAnterior, Fijo FROM Precios WHERE idItem = 'TSAGALAXYY'"),
            "0,200,100,True|1,200,100,True");
  EXPECT_EQ(Query("SELECT Inv, CostoActual, CostoAnterior, CostoActual_Ext, CostoAnterior_Ext FROM ItemsUnidadesInv "
                  "WHERE idItem = 'TSAGALAXYY'"),
            "0,60,50,1.2,1|1,60,50,1.2,1");
  sheets.firstRow = 3;  // the list without its headings
  Import([](IClaseImportar&) { FAIL(); });
  EXPECT_TRUE(
      host.services.dialogs.boxes.back().text.ends_with("en la fila 3 ya hay datos, que deben comenzar en la 4."));
}

TEST_F(PreciosMovilnet, KeepsWhatTheUserChoseWhenApplying) {
  Execute(
      "INSERT INTO Items (idItem, idMarca, idDepartamento) VALUES ('TSAGALAXYY', 'DEF', 'DEF'), ('ñu', 'DEF', 'DEF')");
  sheets.rows = {Line("Galaxy Y", "Samsung", "GSM", 118, 50),       // its code is another item's
                 Line("Modelo largo A1", "Nokia", "GSM", 118, 50),  // these two share twelve characters
                 Line("Modelo largo A2", "Nokia", "GSM", 118, 50), Line("Lumia", "Nokia", "CDMA", 118, 50)};
  Import([&](IClaseImportar& shown) {
    EXPECT_EQ(ActionOf(1), RowAction::None);
    EXPECT_EQ(ActionOf(2), RowAction::Create);
    EXPECT_EQ(ActionOf(3), RowAction::None);
    EXPECT_EQ(made->RowAt(3).reason, "el código TNOMODELOLAR se repite: ya está en la fila 5 de la hoja");
    EXPECT_FALSE(shown.AsignarNuevoItem(3, "tnolumia"));  // row 4 has it
    EXPECT_EQ(host.services.dialogs.boxes.back().title, "Código duplicado");
    EXPECT_EQ(host.services.dialogs.boxes.back().text,
              "Este código ya aparece listado, no pueden establecerse códigos duplicados");
    EXPECT_TRUE(shown.AsignarNuevoItem(3, "ÑU"));
    EXPECT_EQ(made->RowAt(3).reason, "el código ÑU ya está registrado en otro Item");
    EXPECT_TRUE(shown.AsignarItem(3, "ÑU"));
    EXPECT_EQ(made->RowAt(3).associated, "ñu");
    EXPECT_TRUE(shown.AsignarItem(3, ""));
    EXPECT_FALSE(shown.AsignarItem(4, "NOEXISTE"));
    shown.PintarLV(list, 0, 1);
    host.services.dialogs.boxes.clear();
    const ItemSearch search(Database(), SqlStatement("SELECT 'VIEJO'"), 0);
    EXPECT_EQ(search.At(0).price, Currency::FromUnits(118));
    EXPECT_TRUE(shown.AsignarItem(4, search.At(0).code));
    shown.PintarLV(list, 4, 1);
    EXPECT_EQ(std::tuple(shown.NumeroRenglones(), shown.NumeroNuevos(), shown.NumeroAsociados()), std::tuple(4, 3, 1));
    shown.PintarLV(list, 0, 3);
    EXPECT_TRUE(shown.AsignarItem(3, "viejo"));  // and then row 4 comes second
    shown.PintarLV(list, 3, 3);
    EXPECT_EQ(std::pair(list.Contains(3), list.Contains(4)), std::pair(false, true));
    EXPECT_EQ(made->NoteOfChange(), "También cambió la fila 7 (TNOLUMIA): No procesar. ");
    EXPECT_EQ(made->RowAt(4).reason, "el Item VIEJO se repite: ya está en la fila 6 de la hoja");
    EXPECT_TRUE(shown.AsignarItem(3, ""));
    shown.PintarLV(list, 0, 3);
    EXPECT_TRUE(shown.AsignarNuevoItem(3, "LARGO2"));
    shown.PintarLV(list, 3, 3);
    EXPECT_EQ(list.Lines(), 1U);
    const test::FakeDialogs::Box moved{
        MessageIcon::Information, "Renglón movido a otra pestaña",
        "Esta acción hizo que el Item/Renglón se borrara de esta pestaña.\r\n\r\nPuede ubicar el Item/Renglón en las "
        "otras pestañas.\r\n\r\nPara agilizar este proceso, este mensaje aparecerá sólo esta vez."};
    EXPECT_EQ(host.services.dialogs.boxes, std::vector{moved}) << "told of the first, not of the second";
    EXPECT_TRUE(shown.Iniciar(status)) << made->Outcome().cause;
    EXPECT_EQ(made->Outcome().unprocessed, 1);
  });
  EXPECT_EQ(Query("SELECT idItem FROM Items WHERE MD5OrigenImportar IS NOT NULL ORDER BY 1"),
            "LARGO2|TNOMODELOLAR|VIEJO");
  // The associated item had no unit DEF; it gets one, and keeps its principal.
  EXPECT_EQ(Query("SELECT idUnidad, EsPrincipal, Multiplicador FROM ItemsUnidades WHERE idItem = 'VIEJO' ORDER BY 1"),
            "CAJA,False,12|DEF,False,1|UND,True,1");
  EXPECT_EQ(Query("SELECT idUnidad, Inv, CostoActual FROM ItemsUnidadesInv WHERE idItem = 'VIEJO' ORDER BY 1, 2"),
            "DEF,0,50|DEF,1,50|UND,0,10|UND,1,10");
  Import([&](IClaseImportar& shown) {  // the same list again; now the association is taken away
    EXPECT_EQ(made->RowAt(4).associated, "VIEJO");
    EXPECT_TRUE(shown.AsignarItem(4, ""));
    EXPECT_TRUE(shown.Iniciar(status));
  });
  EXPECT_EQ(Query("SELECT idItem FROM Items WHERE MD5OrigenImportar = (SELECT MD5OrigenImportar FROM Items WHERE "
                  "idItem = 'TNOLUMIA')"),
            "TNOLUMIA");
}

TEST_F(PreciosMovilnet, NeedsBothDepartmentsAndThePermission) {
  sheets.rows = {Line("Galaxy Y", "Samsung", "GSM", 118, 50)};
  Execute("DELETE FROM Departamentos WHERE idDepartamento = 'CDMA'");
  const std::string before = Dump();
  Import([&](IClaseImportar& shown) { EXPECT_FALSE(shown.Iniciar(status)); });
  EXPECT_EQ(host.services.dialogs.boxes.back(),
            (test::FakeDialogs::Box{
                MessageIcon::Exclamation, "Falta registrar departamentos",
                "Para proceder, debe estar registrados los departamentos CDMA y GSM para los correspondientes "
                "equipos.\r\n\r\nAbra otro Tolvan y utilice la ficha Departamentos para crear el o los que falten"}));
  Execute("ALTER TABLE Departamentos RENAME TO Otros");
  Import([&](IClaseImportar& shown) { EXPECT_FALSE(shown.Iniciar(status)); });
  Execute("ALTER TABLE Otros RENAME TO Departamentos");
  host.application.permissions.clear();
  Import([&](IClaseImportar& shown) { EXPECT_FALSE(shown.Iniciar(status)); });
  EXPECT_EQ(host.services.dialogs.boxes.back().text,
            "No tiene permiso para realizar esta función. Favor consulte al personal técnico.");
  EXPECT_EQ(Dump(), before);
}

}  // namespace
}  // namespace tolvan
