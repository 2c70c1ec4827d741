#include "import/TemplateExport.h"

#include <random>

#include "import/StoreFixture.h"
#include "import/clsIE_PreciosExcel.h"

namespace tolvan {
namespace {

class TemplateExportTest : public test::StoreTest {
 protected:
  /// Items with rates, costs and prices of every size; money is what NUMERIC makes of its decimal text.
  void FillStore(int count) {
    std::mt19937_64 random(20240229);
    std::string script = "DELETE FROM Impuestos;";
    for (int taxClass = 1; taxClass <= 40; ++taxClass) {
      script += "INSERT INTO Impuestos (ClaseI, Tasa) VALUES (" + std::to_string(taxClass) + ", " +
                std::to_string(static_cast<double>(random() % 300'000) / 1e6) + ");";
    }
    for (int item = 0; item < count; ++item) {
      const auto amount = [&] {
        const auto largest = static_cast<std::int64_t>(1) << (random() % 52);
        return Currency::FromTenThousandths(static_cast<std::int64_t>(random()) & (largest - 1)).ToText();
      };
      const std::string code = "'I" + std::to_string(item) + "'";
      script += "INSERT INTO Items (idItem, idMarca, idDepartamento, ClaseI, Exento) VALUES (" + code +
                ", 'DEF', 'DEF', " + std::to_string(random() % 41) + ", " + std::to_string(random() % 8 == 0) + ");" +
                "INSERT INTO ItemsUnidades (idItem, idUnidad, EsPrincipal) VALUES (" + code + ", 'DEF', 1);" +
                "INSERT INTO ItemsUnidadesInv (idItem, idUnidad, Inv, CostoActual) VALUES (" + code + ", 'DEF', 0, " +
                amount() + ");";
      if (item % 10 != 0) {
        script += "INSERT INTO Precios (idItem, idUnidad, idLista, Inv, Precio) VALUES (" + code +
                  ", 'DEF', 'DEF', 0, " + amount() + ");";
      }
    }
    Run(script);
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
