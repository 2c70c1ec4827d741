#include "contract/DatabaseContract.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/ThrownBy.h"

namespace tolvan::test {
namespace {

const std::string awkwardText = "O'Higgins ¿ñandú? \"%_;--\\ ☕ \r\n\t\x01";

class DatabaseContract : public ::testing::Test {
 protected:
  DatabaseContract() { Execute(fixture_.createTable); }

  DatabaseServices& Database() { return *fixture_.database; }
  const SqlDialect& Dialect() const { return *fixture_.dialect; }
  std::int64_t Execute(std::string_view text) { return Database().Execute(SqlStatement(text)); }
  std::unique_ptr<Recordset> Open(std::string_view text) { return Database().OpenRecordset(SqlStatement(text)); }

  static SqlStatement Insert(std::string_view code, std::int64_t amount) {
    SqlStatement statement("INSERT INTO Prueba (Codigo, Cantidad) VALUES (");
    return statement.Text(code).Sql(", ").Integer(amount).Sql(")");
  }
  HostErrorKind KindOfInsert(std::string_view code, std::int64_t amount) {
    return KindThrownBy([&] { Database().Execute(Insert(code, amount)); });
  }

  /// Every row with a "|" at its end, fields separated by commas, NULL as "-".
  static std::string Texts(Recordset& rows) {
    std::string texts;
    for (; !rows.AtEnd(); rows.MoveNext()) {
      for (std::size_t field = 0; field < rows.FieldCount(); ++field) {
        texts.append(field == 0 ? "" : ",").append(IsNull(rows.Value(field)) ? "-" : rows.Text(field));
      }
      texts += '|';
    }
    return texts;
  }

  std::string Codes() { return Texts(*Open("SELECT Codigo FROM Prueba ORDER BY Codigo")); }

  TemporaryFolder folder_;
  DatabaseFixture fixture_ = MakeFixture(folder_);
};

TEST_F(DatabaseContract, ValuesComeBackAsTheyWereWritten) {
  const DateTime moment = *DateTime::Parse("2024-02-29 23:59:58");
  const std::int64_t large = 9'007'199'254'740'993;  // the first whole number that a double cannot hold
  SqlStatement insert("INSERT INTO Prueba (Codigo, Cantidad, Precio, Activo, Fecha, Nota) VALUES (");
  insert.Text("A").Sql(", ").Integer(large).Sql(", ").Money(*Currency::Parse("1234567.0505")).Sql(", ");
  insert.Boolean(true).Sql(", ").Moment(moment).Sql(", ").Text(awkwardText).Sql(")");
  EXPECT_EQ(Database().Execute(insert), 1);

  const auto row = Open("SELECT * FROM Prueba");
  ASSERT_FALSE(row->AtEnd());
  EXPECT_EQ(row->FieldCount(), 6U);
  EXPECT_EQ(row->Value("codigo"), FieldValue("A"));
  EXPECT_EQ(IntegerOf(row->Value("CANTIDAD")), large);
  EXPECT_EQ(CurrencyOf(row->Value("Precio")), Currency::Parse("1234567.0505"));
  EXPECT_EQ(BooleanOf(row->Value("Activo")), true);
  EXPECT_EQ(row->Value("Fecha"), FieldValue(moment));
  EXPECT_EQ(row->Text(row->RequireField("Fecha")), "2024-02-29 23:59:58");
  EXPECT_EQ(row->Value("Nota"), FieldValue(awkwardText));
  EXPECT_EQ(row->FindField("Otro"), std::nullopt);
  EXPECT_EQ(KindThrownBy([&] { return row->Value("Otro"); }), HostErrorKind::Statement);
  row->MoveNext();
  EXPECT_TRUE(row->AtEnd());
}

TEST_F(DatabaseContract, NullsAreToldFromEmptyTexts) {
  SqlStatement insert("INSERT INTO Prueba (Codigo, Precio, Activo, Fecha, Nota) VALUES (");
  insert.Text("A").Sql(", ").Null().Sql(", ").Null().Sql(", ").Null().Sql(", ").Text("").Sql(")");
  Database().Execute(insert);
  const auto row = Open("SELECT Precio, Activo, Fecha, Nota FROM Prueba");
  for (std::size_t field = 0; field < 4; ++field) EXPECT_EQ(row->Text(field), "") << field;
  EXPECT_EQ(Texts(*row), "-,-,-,|");
}

TEST_F(DatabaseContract, MoneyKeepsItsFourDecimalsThroughSumsAndComparisons) {
  const std::vector<std::string> amounts{"0.0001", "-0.0001", "0.1", "0.2", "99999999.9999", "-12.3456", "3"};
  int number = 0;
  for (const std::string& amount : amounts) {
    SqlStatement insert("INSERT INTO Prueba (Codigo, Precio) VALUES (");
    Database().Execute(insert.Text(std::to_string(++number)).Sql(", ").Money(*Currency::Parse(amount)).Sql(")"));
  }
  for (const std::string& amount : amounts) {
    SqlStatement find("SELECT Precio FROM Prueba WHERE Precio = ");
    const auto row = Database().OpenRecordset(find.Money(*Currency::Parse(amount)));
    ASSERT_FALSE(row->AtEnd()) << amount;
    EXPECT_EQ(CurrencyOf(row->Value(0)), Currency::Parse(amount));
  }
  const auto sum = Open("SELECT Sum(Precio) AS Suma FROM Prueba WHERE Precio < 1");
  EXPECT_EQ(CurrencyOf(sum->Value("Suma")), Currency::Parse("-12.0456"));
}

TEST_F(DatabaseContract, BooleansAnswerToTheirLiterals) {
  for (const bool flag : {true, false}) {
    SqlStatement insert("INSERT INTO Prueba (Codigo, Activo) VALUES (");
    Database().Execute(insert.Text(flag ? "T" : "F").Sql(", ").Boolean(flag).Sql(")"));
  }
  for (const std::string condition : {" = ", " <> "}) {
    SqlStatement find("SELECT Codigo, Activo FROM Prueba WHERE ((Prueba.Activo)" + condition);
    const auto row = Database().OpenRecordset(find.Boolean(true).Sql(")"));
    ASSERT_FALSE(row->AtEnd());
    EXPECT_EQ(row->Text(0), condition == " = " ? "T" : "F");
    EXPECT_EQ(BooleanOf(row->Value("Activo")), condition == " = ");
  }
}

TEST_F(DatabaseContract, AffectedRowsCountOnlyTheStatementsOwn) {
  for (const char* code : {"A", "B", "C"}) Database().Execute(Insert(code, 1));
  EXPECT_EQ(Execute("UPDATE Prueba SET Cantidad = 2 WHERE Codigo <> 'A'"), 2);
  EXPECT_EQ(Execute("UPDATE Prueba SET Cantidad = 3 WHERE Codigo = 'Z'"), 0);
  EXPECT_EQ(Execute("CREATE INDEX PorCantidad ON Prueba (Cantidad)"), 0);
  EXPECT_EQ(Execute("DELETE FROM Prueba"), 3);
}

TEST_F(DatabaseContract, InsertUnlessPresentLeavesTheRowThatIsThere) {
  const std::vector<std::string_view> columns{"Codigo", "Cantidad", "Nota"};
  const auto insert = [&](const char* code, std::int64_t amount) {
    const std::vector<SqlLiteral> values{std::string(code), amount, std::string("ñ?")};
    return Database().Execute(Dialect().InsertUnlessPresent("PRUEBA", "Prueba", columns, values));
  };
  EXPECT_EQ(insert("A", 1), 1);
  EXPECT_EQ(insert("A", 2), 0);
  EXPECT_EQ(insert("B", 3), 1);
  EXPECT_EQ(KindThrownBy([&] { insert("C", -1); }), HostErrorKind::Constraint);  // the check, not the key
  EXPECT_EQ(Texts(*Open("SELECT Codigo, Cantidad FROM Prueba ORDER BY Codigo")), "A,1|B,3|");
}

TEST_F(DatabaseContract, InsertManyUnlessPresentReturnsTheKeysThatWereNew) {
  const std::vector<std::string_view> columns{"Codigo", "Cantidad", "Precio", "Activo", "Fecha", "Nota"};
  const DateTime moment = *DateTime::Parse("2024-02-29 23:59:58");
  const auto row = [&](const char* code, const SqlLiteral& amount, const std::string& note) {
    return std::vector<SqlLiteral>{std::string(code), amount, *Currency::Parse("-0.0501"), true, moment, note};
  };
  const auto together = [&](const std::vector<std::vector<SqlLiteral>>& rows) {
    std::vector<SqlLiteral> values;
    for (const auto& each : rows) values.insert(values.end(), each.begin(), each.end());
    return Dialect().InsertManyUnlessPresent("PRUEBA", columns, values);
  };
  if (!together({row("A", {}, "")})) return;  // such an engine takes single statements
  Database().Execute(Insert("B", 7));
  const auto many =
      *together({row("D\"\\,{}'", {}, awkwardText), row("B", std::int64_t{2}, "NULL"), row("C", std::int64_t{3}, "")});
  EXPECT_EQ(Texts(*Database().OpenRecordset(many)), "D\"\\,{}'|C|");
  EXPECT_EQ(Texts(*Open("SELECT * FROM Prueba ORDER BY Codigo")),
            "B,7,-,-,-,-|C,3,-0.0501,True,2024-02-29 23:59:58,|D\"\\,{}',-,-0.0501,True,2024-02-29 23:59:58," +
                awkwardText + "|");
  EXPECT_EQ(KindThrownBy([&] {
              Database().OpenRecordset(*together({row("E", std::int64_t{1}, ""), row("F", std::int64_t{-1}, "")}));
            }),
            HostErrorKind::Constraint);
  EXPECT_EQ(Codes(), "B|C|D\"\\,{}'|") << "all or none";
}

TEST_F(DatabaseContract, FailuresHaveTheirKindAndTheStatementAsContext) {
  Database().Execute(Insert("A", 1));
  const HostError present = ThrownBy([&] { Database().Execute(Insert("A", 7)); });
  EXPECT_EQ(present.Kind(), HostErrorKind::Constraint);
  EXPECT_NE(std::string_view(present.what()).find("ya hay un registro con esa clave"), std::string_view::npos);
  EXPECT_NE(present.NativeCode(), 0);
  EXPECT_EQ(present.Context(), Insert("A", 7).Render(Dialect()));
  SqlStatement withNul("SELECT Codigo FROM Prueba WHERE Codigo = ");
  withNul.Text(std::string_view("A\0B", 3));
  EXPECT_EQ(KindThrownBy([&] { Open("SELECT * FROM Ninguna"); }), HostErrorKind::Statement);
  EXPECT_EQ(KindThrownBy([&] { Execute("SELEC 1"); }), HostErrorKind::Statement);
  EXPECT_EQ(KindThrownBy([&] { Database().OpenRecordset(withNul); }), HostErrorKind::InvalidValue);
  EXPECT_EQ(KindThrownBy([&] { Database().Execute(withNul); }), HostErrorKind::InvalidValue);
  EXPECT_EQ(KindThrownBy([&] { (void)withNul.Render(Dialect()); }), HostErrorKind::InvalidValue);
  EXPECT_EQ(Codes(), "A|");  // and the connection works on
}

TEST_F(DatabaseContract, OneTextCanBeWalkedTwiceAtOnceWhileRowsAreWritten) {
  for (const char* code : {"A", "B"}) Database().Execute(Insert(code, 1));
  const SqlStatement query("SELECT Codigo FROM Prueba ORDER BY Codigo");
  auto first = Database().OpenRecordset(query);
  const auto second = Database().OpenRecordset(query);
  first->MoveNext();
  EXPECT_EQ(first->Text(0), "B");
  EXPECT_EQ(second->Text(0), "A");
  Execute("UPDATE Prueba SET Cantidad = 2");
  second->MoveNext();
  EXPECT_EQ(second->Text(0), "B");
  second->MoveNext();
  EXPECT_TRUE(second->AtEnd());
  first.reset();  // not walked to its end, it holds nothing either
  Execute("DROP TABLE Prueba");
}

TEST_F(DatabaseContract, ATransactionKeepsEverythingOrNothing) {
  {
    const auto transaction = Database().BeginTransaction();
    Database().Execute(Insert("A", 1));
    EXPECT_EQ(KindThrownBy([&] { Database().BeginTransaction(); }), HostErrorKind::Statement);
    transaction->Commit();
    EXPECT_EQ(KindThrownBy([&] { transaction->Commit(); }), HostErrorKind::Statement);
  }
  {
    const auto abandoned = Database().BeginTransaction();
    Database().Execute(Insert("B", 1));
    EXPECT_EQ(Codes(), "A|B|");
  }
  const auto undone = Database().BeginTransaction();
  Database().Execute(Insert("C", 1));
  undone->Rollback();
  undone->Rollback();
  EXPECT_EQ(Codes(), "A|");
}

TEST_F(DatabaseContract, AfterAFailedStatementNothingOfTheTransactionIsKept) {
  Database().Execute(Insert("A", 1));
  const auto transaction = Database().BeginTransaction();
  Database().Execute(Insert("B", 1));
  EXPECT_EQ(KindOfInsert("A", 1), HostErrorKind::Constraint);
  EXPECT_EQ(KindOfInsert("C", 1), HostErrorKind::Constraint);
  EXPECT_EQ(KindThrownBy([&] { transaction->Commit(); }), HostErrorKind::Constraint);
  EXPECT_EQ(Codes(), "A|");
  Database().Execute(Insert("D", 1));  // outside again: kept at once
  EXPECT_EQ(Codes(), "A|D|");
}

TEST_F(DatabaseContract, ABatchGivesEachStatementItsResult) {
  const std::vector<SqlStatement> batch{Insert("A", 1), Insert("A", 2), Insert("B", 1),
                                        SqlStatement("SELECT Codigo, Cantidad FROM Prueba ORDER BY Codigo"),
                                        SqlStatement("DELETE FROM Prueba")};
  const auto results = Database().RunBatch(batch);
  ASSERT_EQ(results.size(), 5U);
  EXPECT_EQ(results[0].affectedRows, 1);
  ASSERT_TRUE(results[1].error);
  EXPECT_EQ(results[1].error->Kind(), HostErrorKind::Constraint);
  EXPECT_EQ(results[2].affectedRows, 1);
  ASSERT_TRUE(results[3].rows);  // read before the rows were deleted
  EXPECT_EQ(results[3].rows->RequireField("CANTIDAD"), 1U);
  EXPECT_EQ(Texts(*results[3].rows), "A,1|B,1|");
  EXPECT_EQ(results[4].affectedRows, 2);
}

TEST_F(DatabaseContract, ABatchInATransactionStopsAtItsFirstFailure) {
  const auto transaction = Database().BeginTransaction();
  const std::vector<SqlStatement> batch{Insert("A", 1), Insert("A", 2), Insert("B", 1)};
  const auto results = Database().RunBatch(batch);
  ASSERT_EQ(results.size(), 3U);
  EXPECT_EQ(results[0].affectedRows, 1);
  for (const std::size_t failed : {1U, 2U}) {
    ASSERT_TRUE(results[failed].error) << failed;
    EXPECT_EQ(results[failed].error->Context(), batch[1].Render(Dialect()));
  }
  EXPECT_EQ(KindThrownBy([&] { transaction->Commit(); }), HostErrorKind::Constraint);
  EXPECT_EQ(Codes(), "");
}

}  // namespace
}  // namespace tolvan::test
