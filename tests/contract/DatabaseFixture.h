// What the database contract suite needs of a provider: a fresh, empty database, its dialect and the types with which
// that engine declares the columns of the suite's own table.
#pragma once

#include <memory>
#include <string>

#include "host/DatabaseServices.h"
#include "host/SqlDialect.h"

namespace tolvan::test {

class DatabaseFixture {
 public:
  virtual ~DatabaseFixture() = default;
  virtual DatabaseServices& Database() = 0;
  virtual const SqlDialect& Dialect() const = 0;

  /// "CREATE TABLE Prueba (…)": Codigo (text key, 20), Cantidad (64-bit), Precio (four decimals), Activo (boolean),
  /// Fecha (date and time), Nota (text, 200, may be null). All but the key may be null; Cantidad is checked to be >= 0.
  virtual std::string CreateTableText() const = 0;
};

}  // namespace tolvan::test
