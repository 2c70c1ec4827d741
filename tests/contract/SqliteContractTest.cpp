#include "contract/DatabaseContract.h"
#include "contract/TemporaryFolder.h"
#include "platform/sql/SqliteDialect.h"
#include "platform/sqlite/SqliteDatabaseServices.h"

namespace tolvan::test {
namespace {

class SqliteFixture final : public DatabaseFixture {
 public:
  SqliteFixture() : database_({.path = folder_.File("tienda.db"), .createIfMissing = true}) {}

  DatabaseServices& Database() override { return database_; }
  const SqlDialect& Dialect() const override { return dialect_; }
  std::string CreateTableText() const override {
    return "CREATE TABLE Prueba (Codigo TEXT NOT NULL PRIMARY KEY, Cantidad INTEGER CHECK (Cantidad >= 0),"
           " Precio NUMERIC, Activo BOOLEAN, Fecha DATETIME, Nota TEXT)";
  }

 private:
  TemporaryFolder folder_;
  SqliteDatabaseServices database_;
  SqliteDialect dialect_;
};

std::unique_ptr<DatabaseFixture> MakeSqliteFixture() {
  return std::make_unique<SqliteFixture>();
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Sqlite, DatabaseContract, ::testing::Values(NamedFixture{"sqlite", &MakeSqliteFixture}));

}  // namespace tolvan::test
