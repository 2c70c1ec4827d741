// A store on the tests' PostgreSQL server, and imports into it over whatever connection a test gives.
#pragma once

#include <functional>
#include <string>

#include "database/odbc/OdbcDatabaseServices.h"
#include "database/sql/SqlScript.h"
#include "import/clsIE_PreciosExcel.h"
#include "support/ImportRig.h"
#include "support/PostgresServer.h"
#include "support/RegistryRun.h"

namespace tolvan::test {

class ServerStore : public ImportRig {
 public:
  ServerStore() {
    OdbcDatabaseServices database({.dialect = &postgreSqlDialect, .connection = connection});
    RunSqlScript(database, postgreSqlDialect.Engine().schema);
    RunSqlScript(database, R"sql(
        INSERT INTO Impuestos (ClaseI, Descripcion, Tasa, EsGeneral) VALUES (1, 'ITBIS', 0.18, 1);
        INSERT INTO Monedas (idMoneda, FactorConversion, MonedaExtranjera) VALUES ('USD', 50, 1);
        INSERT INTO Marcas (idMarca) VALUES ('DEF');
        INSERT INTO Departamentos (idDepartamento) VALUES ('DEF');)sql");
    host.application.permissions = {"importar-precios"};
  }

  /// Items V1, V2, … with unit CAJA beside their principal one, which cost 10 and have neither price nor cost yet for
  /// inventory 1.
  void AddItems(int count) const {
    const std::string each = " FROM generate_series(1, " + std::to_string(count) + ") AS i;";
    Ask("INSERT INTO Items (idItem, Descripcion, idMarca, idDepartamento) SELECT 'V' || i, 'VIEJO', 'DEF', 'DEF'" +
        each + "INSERT INTO ItemsUnidades (idItem, idUnidad, EsPrincipal, Multiplicador) SELECT 'V' || i, 'UND', 1, 1" +
        each +
        "INSERT INTO ItemsUnidades (idItem, idUnidad, EsPrincipal, Multiplicador) SELECT 'V' || i, 'CAJA', 0, 12" +
        each + "INSERT INTO ItemsUnidadesInv (idItem, idUnidad, Inv, CostoActual) SELECT 'V' || i, 'UND', 0, 10" +
        each + "INSERT INTO Precios (idItem, idUnidad, idLista, Inv, Precio) SELECT 'V' || i, 'UND', 'DEF', 0, 100" +
        each);
  }

  /// The first field of the first row, as the administrator sees it.
  std::string Ask(const std::string& query) const { return server.Psql(name, query); }

  /// Imports a template workbook with updates of the items V1 to V`count`, and as many new items. `review` stands for
  /// the user; without one, everything is applied at once. What came of it.
  ImportOutcome ImportTemplate(DatabaseServices& database, int count,
                               const std::function<void(IClaseImportar&)>& review = {}) {
    host.application.database = &database;
    sheets.rows.clear();
    for (int number = 1; number <= count; ++number) {
      const std::string digits = std::to_string(number);
      sheets.rows.push_back({"V" + digits, "VIEJO", "DEF", "DEF", 20.0, 236.0, none, "CAJA", 12.0, 1180.0, 120.0});
      sheets.rows.push_back({"N" + digits, "NUEVO", "M" + std::to_string(number / 10), "DEF", 5.0, 11.8});
    }
    auto importer =
        MakeImporter<clsIE_PreciosExcel>(review ? review : [&](IClaseImportar& made) { made.Iniciar(status); });
    importer.Procesar(status);
    return importer.Outcome();
  }

  PostgresServer& server = PostgresServer::Shared();
  std::string name = server.MakeDatabase();
  std::string connection = server.ConnectionString(name);
};

}  // namespace tolvan::test
