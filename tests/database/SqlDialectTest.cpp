#include <gtest/gtest.h>

#include <array>

#include "database/sql/SqlDialects.h"
#include "host/HostError.h"

namespace tolvan::test {
namespace {

const SqliteDialect sqlite;
const SqlServerDialect sqlServer;
const PostgreSqlDialect postgreSql;
const AccessDialect access;
const std::array<const SqlDialect*, 4> dialects{&sqlite, &sqlServer, &postgreSql, &access};
using Texts = std::array<std::string, dialects.size()>;  // in the order of `dialects`

Texts Same(const std::string& text) {
  return {text, text, text, text};
}

}  // namespace

TEST(SqlDialectTest, LiteralsOfEveryEngine) {
  const DateTime moment = *DateTime::Parse("2024-01-31 09:05:07");
  const std::vector<std::pair<SqlLiteral, Texts>> cases{
      {true, {"1", "1", "1", "True"}},
      {false, {"0", "0", "0", "False"}},
      {moment, {"'2024-01-31 09:05:07'", "'2024-01-31T09:05:07'", "'2024-01-31 09:05:07'", "#2024-01-31 09:05:07#"}},
      {std::string("O'Higgins"), Same("'O''Higgins'")},
      {std::string("''"), Same("''''''")},
      {std::string(), Same("''")},
      {std::string("back\\slash"), Same("'back\\slash'")},
      {std::string("Ñandú"), {"'Ñandú'", "N'Ñandú'", "'Ñandú'", "'Ñandú'"}},
      {std::monostate(), Same("NULL")},
      {std::int64_t{-42}, Same("-42")},
      {*Currency::Parse("1234.5"), Same("1234.5")},
      {*Currency::Parse("-0.0001"), Same("-0.0001")},
      {*Currency::Parse("3.0000"), Same("3")},
  };
  for (std::size_t index = 0; index < dialects.size(); ++index) {
    const SqlDialect* dialect = dialects[index];
    for (const auto& [literal, texts] : cases) EXPECT_EQ(dialect->Literal(literal), texts[index]);
    EXPECT_THROW(dialect->Literal(std::string("a\0b", 3)), HostError);
  }
}

TEST(SqlDialectTest, TheCustomerInsertOfEveryEngine) {
  const std::array<std::string_view, 6> columns{"idCliente",   "Descripcion",       "RIF",
                                                "TipoCliente", "PersoneriaCliente", "Activo"};
  const std::array<SqlLiteral, 6> values{std::string("101"), std::string("D'Óleo"), std::string("101"),
                                         std::int64_t{1},    std::int64_t{0},       false};
  const std::string insert =
      "INSERT INTO CLIENTES ( idCliente, Descripcion, RIF, TipoCliente, PersoneriaCliente, Activo ) ";
  const Texts texts{
      insert + "VALUES ('101', 'D''Óleo', '101', 1, 0, 0) ON CONFLICT (idCliente) DO NOTHING",
      "IF NOT EXISTS (SELECT * FROM Clientes WHERE idCliente = '101') " + insert +
          "VALUES ('101', N'D''Óleo', '101', 1, 0, 0 ) ",
      insert + "VALUES ('101', 'D''Óleo', '101', 1, 0, 0) ON CONFLICT (idCliente) DO NOTHING",
      insert +
          "SELECT '101', 'D''Óleo', '101', 1, 0, False FROM (SELECT COUNT(*) AS Presentes FROM Clientes WHERE "
          "idCliente = '101') AS Clave WHERE Clave.Presentes = 0",
  };
  for (std::size_t index = 0; index < dialects.size(); ++index) {
    const SqlDialect* dialect = dialects[index];
    EXPECT_EQ(dialect->InsertUnlessPresent("CLIENTES", "Clientes", columns, values).Render(*dialect), texts[index]);
  }
}

TEST(SqlDialectTest, AStatementIsRenderedWithItsLiteralsInPlace) {
  const SqlDialect* dialect = &sqlServer;
  SqlStatement condition(" WHERE Codigo = ");
  condition.Text("? o ''=?").Sql(" AND Activo = ").Boolean(true);
  SqlStatement statement("UPDATE T SET Nota = ");
  statement.Null().Append(condition).Sql(" AND Fecha < " + dialect->CurrentMoment());
  EXPECT_EQ(statement.Render(*dialect),
            "UPDATE T SET Nota = NULL WHERE Codigo = '? o ''''=?' AND Activo = 1 AND Fecha < GETDATE()");
  EXPECT_EQ(statement.ParameterText(), "UPDATE T SET Nota = ? WHERE Codigo = ? AND Activo = ? AND Fecha < GETDATE()");
  condition.Append(condition);
  EXPECT_EQ(condition.ParameterText(), " WHERE Codigo = ? AND Activo = ? WHERE Codigo = ? AND Activo = ?");
  EXPECT_EQ(condition.Render(*dialect),
            " WHERE Codigo = '? o ''''=?' AND Activo = 1 WHERE Codigo = '? o ''''=?' AND Activo = 1");
  const std::string twice = condition.Render(*dialect);
  condition.Append(condition);
  condition.Append(condition);  // past the room that every statement has
  EXPECT_EQ(condition.Render(*dialect), twice + twice + twice + twice);
}

}  // namespace tolvan::test
