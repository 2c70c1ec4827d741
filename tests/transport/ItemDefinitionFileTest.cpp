#include "transport/ItemDefinitionFile.h"

#include <gmock/gmock.h>

#include <cstdlib>

#include "base/Text.h"
#include "database/sql/SqlDialects.h"
#include "support/FakeHost.h"
#include "support/FileContent.h"
#include "support/TestStore.h"
#include "system/posix/PosixFileHelper.h"
#include "transport/TransportDocument.h"
#include "xml/PugiXmlLibrary.h"

namespace tolvan::test {
namespace {

using Outcome = ItemDefinitionOutcome;

constexpr auto store = R"sql(
INSERT INTO Marcas (idMarca) VALUES ('DEF');
INSERT INTO Departamentos (idDepartamento, RequerirReglasSeriales) VALUES ('TEL', 'IMEI'), ('DEF', NULL);
INSERT INTO Items (idItem, Descripcion, idMarca, idDepartamento, Oculto, Activo, TipoItem, RequiereSeriales) VALUES
  ('A1', 'Teléfono & cargador <5 V>', 'DEF', 'TEL', 0, 1, 0, 1),
  ('A2', NULL, 'DEF', 'DEF', 0, 1, 0, 0),
  ('OCULTO', 'x', 'DEF', 'DEF', 1, 1, 0, 0),
  ('INACTIVO', 'x', 'DEF', 'DEF', 0, 0, 0, 0),
  ('SERVICIO', 'x', 'DEF', 'DEF', 0, 1, 1, 0);
INSERT INTO ItemsUnidades (idItem, idUnidad, EsPrincipal) VALUES ('A1', 'UND', 1), ('A1', 'CAJA', 0), ('A2', 'KG', 1),
  ('OCULTO', 'UND', 1), ('INACTIVO', 'UND', 1), ('SERVICIO', 'UND', 1);
INSERT INTO Barcodes (Barcode, idItem, idUnidad) VALUES ('7591', 'A1', 'CAJA'), ('7592' || char(29), 'A1', 'UND'),
  ('7593', 'OCULTO', 'UND'), ('7594', 'SERVICIO', 'UND');
INSERT INTO Depositos (idDeposito, Tipo, DisponibleEntrada) VALUES ('01', 0, 1), ('02', 0, 0), ('03', 1, 1);
)sql";

constexpr auto countContent =
    "<MultiplesAreas>1</MultiplesAreas><Articulos>"
    "<Articulo><Codigo>A1</Codigo><Unidad>UND</Unidad><Descripcion>Teléfono &amp; cargador &lt;5 V&gt;</Descripcion>"
    "<RequiereSeriales>True</RequiereSeriales><RequiereSerialesRegla>IMEI</RequiereSerialesRegla></Articulo>"
    "<Articulo><Codigo>A2</Codigo><Unidad>KG</Unidad><Descripcion></Descripcion>"
    "<RequiereSeriales>False</RequiereSeriales><RequiereSerialesRegla></RequiereSerialesRegla></Articulo></Articulos>"
    "<Barcodes><Barcode><Barcode>7591</Barcode><Codigo>A1</Codigo><Unidad>CAJA</Unidad></Barcode>"
    "<Barcode><Barcode>7592\uFFFD</Barcode><Codigo>A1</Codigo><Unidad>UND</Unidad></Barcode></Barcodes>"
    "<Depositos><Deposito><Codigo>01</Codigo></Deposito><Deposito><Codigo>02</Codigo></Deposito></Depositos>";

std::string Envelope(const std::string& instance, const std::string& content) {
  return "<?xml version=\"1.0\"?><TransporteTolvanSystems><Meta><Instancia>" + instance +
         "</Instancia><Clase>DC_DefinicionItems</Clase></Meta><Contenido>" + content +
         "</Contenido></TransporteTolvanSystems>";
}

constexpr auto counting = CollectorPurpose::Count;

class ItemDefinitionFileTest : public ::testing::Test, protected TestStore {
 protected:
  ItemDefinitionResult Write(CollectorPurpose purpose, const std::string& file) {
    report_ = ItemDefinitionFile({Database(), files_, dialogs_, interruption_, xml_, "Tolvan"}).Write(file, purpose);
    return report_.DetailsAs<ItemDefinitionResult>();
  }
  ItemDefinitionResult Write(CollectorPurpose purpose) { return Write(purpose, path_); }

  bool IsValid() const {
    const std::string schema = std::string(TOLVAN_SOURCE_FOLDER) + "/data/colector/DC_DefinicionItems.xsd";
    return std::system(("timeout 30 xmllint --noout --schema '" + schema + "' '" + path_ + "'").c_str()) == 0;
  }

  TemporaryFolder output_;
  std::string path_ = output_.File("Articulos 20261115.tolpak");
  PosixFileHelper files_{folder.Path().string()};
  FakeDialogs dialogs_;
  FakeInterruption interruption_;
  ActionReport report_;
  PugiXmlLibrary library_;
  basComponenteXML xml_{library_, dialogs_, "Tolvan", ""};
};

TEST_F(ItemDefinitionFileTest, BytesForAnEmptyStoreForACountAndForReceiving) {
  const ItemDefinitionResult empty = Write(counting);
  EXPECT_EQ(ReadFile(path_),
            Envelope(empty.instance, "<MultiplesAreas>1</MultiplesAreas><Articulos/><Barcodes/><Depositos/>"));
  EXPECT_TRUE(IsValid());

  Execute(store);
  const ItemDefinitionResult count = Write(counting);
  ASSERT_EQ(count.outcome, Outcome::Written) << report_.text;
  EXPECT_EQ(ReadFile(path_), Envelope(count.instance, countContent));
  EXPECT_TRUE(IsValid());
  EXPECT_EQ(count.items, 2U);
  EXPECT_EQ(count.barcodes, 2U);
  EXPECT_EQ(count.deposits, 2U);

  const ItemDefinitionResult receiving = Write(CollectorPurpose::Receiving);
  const std::string content =
      ReplaceAll(ReplaceAll(countContent, "Areas>1<", "Areas>0<"), "<Deposito><Codigo>02</Codigo></Deposito>", "");
  EXPECT_EQ(ReadFile(path_), Envelope(receiving.instance, content));
  EXPECT_TRUE(IsValid());
  const FakeDialogs::Box told{MessageIcon::Information, "Tolvan",
                              "Archivo guardado con éxito\r\nFavor copie el archivo guardado en el dispositivo y "
                              "ábralo desde el mismo"};
  EXPECT_EQ(dialogs_.boxes, (std::vector{told, told, told}));
}

// As a server does it that has no boolean type: numbers, and a null.
TEST_F(ItemDefinitionFileTest, BooleansKeptAsNumbers) {
  Execute(store);
  Execute(R"sql(
ALTER TABLE Items RENAME TO ItemsDelServidor;
CREATE VIEW Items AS SELECT idItem, Descripcion, idDepartamento, Oculto + 0 AS Oculto, Activo + 0 AS Activo, TipoItem,
  CASE idItem WHEN 'A1' THEN 1 + 0 WHEN 'A2' THEN NULL END AS RequiereSeriales FROM ItemsDelServidor;
ALTER TABLE Departamentos RENAME TO DepartamentosDelServidor;
CREATE VIEW Departamentos AS SELECT idDepartamento,
  CASE idDepartamento WHEN 'TEL' THEN -1 ELSE 0 END AS RequerirReglasSeriales FROM DepartamentosDelServidor;
)sql");
  Write(counting);
  const std::string bytes = ReadFile(path_);
  EXPECT_THAT(bytes, ::testing::HasSubstr("<RequiereSerialesRegla>True</RequiereSerialesRegla>"));
  EXPECT_THAT(bytes, ::testing::HasSubstr("<RequiereSerialesRegla>False</RequiereSerialesRegla>"));
  EXPECT_THAT(bytes, ::testing::HasSubstr("<RequiereSeriales>True</RequiereSeriales>"));
  EXPECT_THAT(bytes, ::testing::HasSubstr("<RequiereSeriales></RequiereSeriales>"));
}

TEST_F(ItemDefinitionFileTest, AFailureLeavesTheEarlierFileWhole) {
  Execute(store);
  ASSERT_EQ(Write(counting).outcome, Outcome::Written);
  const std::string earlier = ReadFile(path_);
  dialogs_.boxes.clear();

  const ItemDefinitionResult nowhere = Write(counting, output_.File("no/hay.tolpak"));
  EXPECT_EQ(nowhere.outcome, Outcome::Failed);
  EXPECT_THAT(report_.text, ::testing::HasSubstr(output_.File("no")));
  EXPECT_FALSE(report_.told);

  interruption_.requested = true;
  EXPECT_EQ(Write(counting).outcome, Outcome::Failed);
  EXPECT_EQ(ReadFile(path_), earlier);
  EXPECT_EQ(NamesIn(output_.Path()).size(), 1U) << "nothing lies beside it";
  EXPECT_TRUE(dialogs_.boxes.empty());
}

TEST_F(ItemDefinitionFileTest, WithoutTheLibraryTheUserIsTold) {
  MissingXmlLibrary missing;
  basComponenteXML xml(missing, dialogs_, "Tolvan", "");
  ItemDefinitionFile file({Database(), files_, dialogs_, interruption_, xml, "Tolvan"});
  const ActionReport report = file.Write(path_, counting);
  EXPECT_EQ(report.DetailsAs<ItemDefinitionResult>().outcome, Outcome::NoXmlLibrary);
  EXPECT_TRUE(report.told);
  EXPECT_THAT(report.text, ::testing::HasSubstr("no está instalado"));
  EXPECT_EQ(dialogs_.boxes.size(), 1U);
}

TEST(ItemDefinitionQueriesTest, ExactTexts) {
  const SqlServerDialect dialect;
  const std::string condition = " I.Oculto = 0 AND I.Activo = 1 AND I.TipoItem = 0 ";
  EXPECT_EQ(CollectorItemsQuery().Render(dialect),
            "SELECT IU.idItem, IU.idUnidad, I.Descripcion, I.RequiereSeriales, D.RequerirReglasSeriales FROM "
            "ItemsUnidades IU INNER JOIN Items I ON (IU.idItem = I.idItem AND IU.EsPrincipal = 1 AND " +
                condition + ") INNER JOIN Departamentos D ON I.idDepartamento = D.idDepartamento");
  EXPECT_EQ(CollectorBarcodesQuery().Render(dialect),
            "SELECT I.idItem, B.Barcode, B.idUnidad FROM Barcodes B INNER JOIN Items I ON (B.idItem = I.idItem AND " +
                condition + ")");
  const std::string deposits = "SELECT idDeposito FROM Depositos WHERE Tipo=0 ";
  EXPECT_EQ(CollectorDepositsQuery(false).Render(dialect), deposits);
  EXPECT_EQ(CollectorDepositsQuery(true).Render(dialect), deposits + " AND DisponibleEntrada=1");
}

}  // namespace
}  // namespace tolvan::test
