// The contract of DatabaseServices, run over every provider: include this, then
//   INSTANTIATE_TEST_SUITE_P(Name, DatabaseContract, ::testing::Values(NamedFixture{"name", &MakeFixture}));
// where MakeFixture returns a DatabaseFixture whose database is empty, and lies in the folder where it is a file.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "contract/TemporaryFolder.h"
#include "host/DatabaseServices.h"
#include "host/SqlStatement.h"
#include "support/ThrownBy.h"

namespace tolvan::test {

struct DatabaseFixture {
  std::unique_ptr<DatabaseServices> database;
  std::unique_ptr<SqlDialect> dialect;

  /// "CREATE TABLE Prueba (…)" with that engine's types: Codigo (text key, 20), Cantidad (64-bit), Precio (four
  /// decimals), Activo (boolean), Fecha (date and time), Nota (text, 200, may be null). All but the key may be null;
  /// Cantidad is checked to be >= 0.
  const char* createTable;
};

struct NamedFixture {
  const char* name;
  DatabaseFixture (*make)(const TemporaryFolder& folder);
};

/// For the names of the tests, which would show the bytes of a pointer otherwise.
inline void PrintTo(const NamedFixture& fixture, std::ostream* out) {
  *out << fixture.name;
}

class DatabaseContract : public ::testing::TestWithParam<NamedFixture> {
 protected:
  DatabaseContract() { Database().Execute(SqlStatement(fixture_.createTable)); }

  DatabaseServices& Database() { return *fixture_.database; }
  const SqlDialect& Dialect() const { return *fixture_.dialect; }

  static SqlStatement Insert(std::string_view code, std::int64_t amount) {
    SqlStatement statement("INSERT INTO Prueba (Codigo, Cantidad) VALUES (");
    return statement.Text(code).Sql(", ").Integer(amount).Sql(")");
  }

  /// The codes in the table, in order, with a blank between.
  std::string Codes() {
    const auto rows = Database().OpenRecordset(SqlStatement("SELECT Codigo FROM Prueba ORDER BY Codigo"));
    std::string codes;
    for (; !rows->AtEnd(); rows->MoveNext()) codes.append(codes.empty() ? "" : " ").append(rows->Text(0));
    return codes;
  }

  TemporaryFolder folder_;
  DatabaseFixture fixture_ = GetParam().make(folder_);
};

}  // namespace tolvan::test
