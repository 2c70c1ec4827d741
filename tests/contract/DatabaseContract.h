// The contract of DatabaseServices, run over every provider: include this, then
//   INSTANTIATE_TEST_SUITE_P(Name, DatabaseContract, ::testing::Values(NamedFixture{"name", &MakeFixture}));
// where MakeFixture returns a DatabaseFixture whose database is empty.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "contract/DatabaseFixture.h"

namespace tolvan::test {

struct NamedFixture {
  const char* name;
  std::unique_ptr<DatabaseFixture> (*make)();
};

/// For the names of the tests, which would show the bytes of a pointer otherwise.
inline void PrintTo(const NamedFixture& fixture, std::ostream* out) {
  *out << fixture.name;
}

class DatabaseContract : public ::testing::TestWithParam<NamedFixture> {
 protected:
  void SetUp() override {
    fixture_ = GetParam().make();
    Database().Execute(SqlStatement(fixture_->CreateTableText()));
  }

  DatabaseServices& Database() { return fixture_->Database(); }
  const SqlDialect& Dialect() const { return fixture_->Dialect(); }

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

  std::unique_ptr<DatabaseFixture> fixture_;
};

/// Runs `work` and returns the kind of the HostError it throws.
template <class Work>
HostErrorKind KindThrownBy(const Work& work) {
  try {
    work();
  } catch (const HostError& error) {
    return error.Kind();
  }
  ADD_FAILURE() << "nothing was thrown";
  return HostErrorKind::Failed;
}

}  // namespace tolvan::test
