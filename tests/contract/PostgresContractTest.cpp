#include "contract/DatabaseContract.h"
#include "database/odbc/OdbcDatabaseServices.h"
#include "database/sql/SqlDialects.h"
#include "support/PostgresServer.h"

namespace tolvan::test {

DatabaseFixture MakeFixture(const TemporaryFolder&) {
  PostgresServer& server = PostgresServer::Shared();
  const OdbcOptions options{.dialect = &postgreSqlDialect,
                            .connection = server.ConnectionString(server.MakeDatabase())};
  return {std::make_unique<OdbcDatabaseServices>(options), std::make_unique<PostgreSqlDialect>(),
          "CREATE TABLE Prueba (Codigo VARCHAR(20) NOT NULL PRIMARY KEY, Cantidad BIGINT CHECK (Cantidad >= 0),"
          " Precio NUMERIC(19,4), Activo SMALLINT, Fecha TIMESTAMP(0), Nota VARCHAR(200))"};
}

}  // namespace tolvan::test
