#include <gtest/gtest.h>

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

TEST(PostgresTypes, ThatTheTablesDoNotHaveAreReadToo) {
  PostgresServer& server = PostgresServer::Shared();
  OdbcDatabaseServices database(
      {.dialect = &postgreSqlDialect, .connection = server.ConnectionString("postgres") + ";BoolsAsChar=0"});
  const std::vector<FieldValue> expected{
      std::string(9'000, 'x') + "ñ😀",         std::int64_t{-7}, true, 0.1, DecimalText{"-922337203685477.5808"},
      *DateTime::Parse("2024-02-29 00:00:00")};
  const auto rows = database.OpenRecordset(SqlStatement(
      "SELECT repeat('x', 9000) || 'ñ😀', -7, true, CAST(0.1 AS float8), -922337203685477.5808, DATE '2024-02-29' "
      "UNION ALL SELECT NULL, NULL, NULL, NULL, NULL, NULL"));
  for (std::size_t field = 0; field < expected.size(); ++field) EXPECT_EQ(rows->Value(field), expected[field]) << field;
  rows->MoveNext();
  for (std::size_t field = 0; field < expected.size(); ++field) EXPECT_TRUE(IsNull(rows->Value(field))) << field;
}

}  // namespace tolvan::test
