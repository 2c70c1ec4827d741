#include "contract/DatabaseContract.h"
#include "platform/odbc/OdbcDatabaseServices.h"
#include "platform/sql/PostgreSqlDialect.h"
#include "support/PostgresServer.h"

namespace tolvan::test {
namespace {

class PostgresFixture final : public DatabaseFixture {
 public:
  DatabaseServices& Database() override { return database_; }
  const SqlDialect& Dialect() const override { return dialect_; }
  std::string CreateTableText() const override {
    return "CREATE TABLE Prueba (Codigo VARCHAR(20) NOT NULL PRIMARY KEY, Cantidad BIGINT CHECK (Cantidad >= 0),"
           " Precio NUMERIC(19,4), Activo SMALLINT, Fecha TIMESTAMP(0), Nota VARCHAR(200))";
  }

 private:
  PostgresServer& server_ = PostgresServer::Shared();
  OdbcDatabaseServices database_{{.connection = server_.ConnectionString(server_.MakeDatabase())}};
  PostgreSqlDialect dialect_;
};

std::unique_ptr<DatabaseFixture> MakePostgresFixture() {
  return std::make_unique<PostgresFixture>();
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(PostgreSql, DatabaseContract, ::testing::Values(NamedFixture{"odbc", &MakePostgresFixture}));

}  // namespace tolvan::test
