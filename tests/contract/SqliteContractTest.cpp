#include "contract/DatabaseContract.h"
#include "database/sql/SqlDialects.h"
#include "database/sqlite/SqliteDatabaseServices.h"

namespace tolvan::test {

DatabaseFixture MakeFixture(const TemporaryFolder& folder) {
  const SqliteOptions options{.path = folder.File("tienda.db"), .createIfMissing = true};
  return {std::make_unique<SqliteDatabaseServices>(options), std::make_unique<SqliteDialect>(),
          "CREATE TABLE Prueba (Codigo TEXT NOT NULL PRIMARY KEY, Cantidad INTEGER CHECK (Cantidad >= 0),"
          " Precio NUMERIC, Activo BOOLEAN, Fecha DATETIME, Nota TEXT)"};
}

}  // namespace tolvan::test
