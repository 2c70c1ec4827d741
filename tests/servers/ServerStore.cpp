#include "servers/ServerStore.h"

#include "database/odbc/OdbcDatabaseServices.h"
#include "database/sql/SqlScript.h"

namespace tolvan::data {}

namespace tolvan::test {
namespace {

constexpr const char* content = R"sql(
INSERT INTO Impuestos (ClaseI, Descripcion, Tasa, EsGeneral) VALUES (1, 'ITBIS', 0.18, 1);
INSERT INTO Monedas (idMoneda, FactorConversion, MonedaExtranjera) VALUES ('USD', 50, 1);
INSERT INTO Marcas (idMarca) VALUES ('DEF');
INSERT INTO Departamentos (idDepartamento) VALUES ('DEF');
)sql";

}  // namespace

ServerStore::ServerStore(PostgresServer& home) : server(home) {
  OdbcDatabaseServices database({.dialect = &postgreSqlDialect, .connection = connection});
  RunSqlScript(database, data::postgreSqlSchema);
  RunSqlScript(database, content);
  host.application.permissions = {"importar-precios"};
}

void ServerStore::AddItems(int count) const {
  const std::string each = " FROM generate_series(1, " + std::to_string(count) + ") AS i;";
  Ask("INSERT INTO Items (idItem, Descripcion, idMarca, idDepartamento) SELECT 'V' || i, 'VIEJO', 'DEF', 'DEF'" + each +
      "INSERT INTO ItemsUnidades (idItem, idUnidad, EsPrincipal, Multiplicador) SELECT 'V' || i, 'UND', 1, 1" + each +
      "INSERT INTO ItemsUnidades (idItem, idUnidad, EsPrincipal, Multiplicador) SELECT 'V' || i, 'CAJA', 0, 12" + each +
      "INSERT INTO ItemsUnidadesInv (idItem, idUnidad, Inv, CostoActual) SELECT 'V' || i, 'UND', 0, 10" + each +
      "INSERT INTO Precios (idItem, idUnidad, idLista, Inv, Precio) SELECT 'V' || i, 'UND', 'DEF', 0, 100" + each);
}

std::vector<GivenRow> ServerStore::TemplateRows(int count) {
  std::vector<GivenRow> rows;
  for (int number = 1; number <= count; ++number) {
    const std::string digits = std::to_string(number);
    rows.push_back({"V" + digits, "VIEJO", "DEF", "DEF", 20.0, 236.0, none, "CAJA", 12.0, 1180.0, 120.0});
    rows.push_back({"N" + digits, "NUEVO", "M" + std::to_string(number / 10), "DEF", 5.0, 11.8});
  }
  return rows;
}

ImportOutcome ServerStore::ImportTemplate(DatabaseServices& database, std::vector<GivenRow> rows,
                                          const std::function<void(IClaseImportar&)>& review) {
  host.application.database = &database;
  sheets.rows = std::move(rows);
  auto importer = MakeImporter<clsIE_PreciosExcel>(review);
  importer.Procesar(status);
  return importer.Outcome();
}

}  // namespace tolvan::test
