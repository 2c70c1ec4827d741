// The contract of DatabaseServices is one program for each provider: DatabaseContract.cpp with the file that makes the
// provider's fixture.
#pragma once

#include <memory>

#include "contract/TemporaryFolder.h"
#include "host/DatabaseServices.h"

namespace tolvan::test {

struct DatabaseFixture {
  std::unique_ptr<DatabaseServices> database;
  std::unique_ptr<SqlDialect> dialect;

  /// "CREATE TABLE Prueba (…)" with that engine's types: Codigo (text key, 20), Cantidad (64-bit), Precio (four
  /// decimals), Activo (boolean), Fecha (date and time), Nota (text, 200, may be null). All but the key may be null;
  /// Cantidad is checked to be >= 0.
  const char* createTable;
};

/// Its database is empty, and lies in the folder where it is a file.
DatabaseFixture MakeFixture(const TemporaryFolder& folder);

}  // namespace tolvan::test
