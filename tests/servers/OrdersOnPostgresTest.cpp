// The orders of the command on PostgreSQL, run by a user who has the rights of data/permisos and no others. The demo
// store is there twice, in its SQLite file and on the server; what an order prints and writes must be the same on both.
#include <gmock/gmock.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "base/Text.h"
#include "cli/demo/DemoStore.h"
#include "contract/TemporaryFolder.h"
#include "database/odbc/OdbcDatabaseServices.h"
#include "database/sqlite/SqliteDatabaseServices.h"
#include "support/CommandRunner.h"
#include "support/FileContent.h"
#include "support/LoopbackServer.h"
#include "support/PostgresServer.h"
#include "support/ThrownBy.h"

namespace tolvan::test {
namespace {

using nlohmann::json;

class OrdersOnPostgres : public ::testing::Test {
 protected:
  OrdersOnPostgres() {
    for (Store* store : {&local_, &server_}) {
      store->places = PlacesOfDemo(store->folder.File("tienda"));
      store->runner.Run({"demo", store->places.folder});
      store->runner.host = store->places.host;
    }
    UseServerAs(PostgresServer::administrator);
    const CommandResult schema = server_.runner.Run({"--json", "esquema", "--crear"});
    EXPECT_EQ(json::parse(schema.output)["motor"], "postgresql") << schema.messages;
    OdbcDatabaseServices database({.dialect = &postgreSqlDialect, .connection = postgres_.ConnectionString(database_)});
    FillDemoDatabase(database, server_.runner.clock.Today());
    postgres_.Psql(database_, ReadFile(TOLVAN_SOURCE_FOLDER "/data/permisos/postgresql.sql"));
    postgres_.Psql(database_, "CREATE ROLE " + User() + " LOGIN IN ROLE tolvan_impexp");
    UseServerAs(User());
  }

  std::string User() const { return "vendedor_de_" + database_; }

  void UseServerAs(const std::string& user) const {
    std::string ini = ReplaceAll(ReadFile(server_.places.host), "motor = sqlite", "motor = postgresql");
    const std::size_t connection = ini.find("conexion = ");
    ini.replace(connection, ini.find_first_of("\r\n", connection) - connection,
                "conexion = " + postgres_.ConnectionString(database_, user));
    WriteFile(server_.places.host, ini);
  }

  struct Store {
    TemporaryFolder folder;
    CommandRunner runner;
    DemoPlaces places;

    /// With "@" for the store's own folder, on the way in and on the way out.
    CommandResult Run(std::vector<std::string> words) {
      for (std::string& word : words) word = ReplaceAll(word, "@", places.folder);
      CommandResult result = runner.Run(words);
      result.output = ReplaceAll(result.output, places.folder, "@");
      result.messages = ReplaceAll(result.messages, places.folder, "@");
      return result;
    }
  };

  void ExpectSame(const std::vector<std::string>& words, int code = 0) {
    const CommandResult expected = local_.Run(words);
    const CommandResult actual = server_.Run(words);
    EXPECT_EQ(expected.code, code) << expected.messages;
    EXPECT_EQ(actual.code, code) << actual.messages;
    EXPECT_EQ(actual.output, expected.output) << words[0];
    EXPECT_EQ(actual.messages, expected.messages) << words[0];
  }

  /// The table's content as both engines write it for people.
  static std::vector<std::string> Rows(DatabaseServices& database, const std::string& query) {
    std::vector<std::string> lines;
    for (const auto rows = database.OpenRecordset(SqlStatement(query)); !rows->AtEnd(); rows->MoveNext()) {
      std::string& line = lines.emplace_back();
      for (std::size_t field = 0; field < rows->FieldCount(); ++field) {
        const FieldValue value = rows->Value(field);
        const bool isText = std::holds_alternative<std::string>(value);
        const std::optional<Currency> number = isText ? std::nullopt : CurrencyOf(value);  // with any number of zeros
        line += (number ? number->ToShortestText() : TextOf(value)) + "|";
      }
    }
    return lines;
  }

  void ExpectSameRows(const std::string& query) {
    SqliteDatabaseServices local({.path = local_.places.folder + "/tienda.db"});
    OdbcDatabaseServices server({.dialect = &postgreSqlDialect, .connection = postgres_.ConnectionString(database_)});
    EXPECT_EQ(Rows(server, query), Rows(local, query)) << query;
  }

  PostgresServer& postgres_ = PostgresServer::Shared();
  std::string database_ = postgres_.MakeDatabase();
  Store local_;
  Store server_;
};

TEST_F(OrdersOnPostgres, ExportTheSameSales) {
  ExpectSame({"ventas", "--fecha", "2024-02-28"});
  ExpectSame({"--json", "vexlor"});
  std::vector<std::string> days;
  for (Store* store : {&local_, &server_}) {
    const TemporaryFolder folder;
    const LoopbackServer reporting("answer_server.py", {folder.Path()});
    WriteFile(folder.File("pending"), "1 20240227 20240228");
    store->Run({"opciones", "SVentas_DireccionServidor=127.0.0.1:" + std::to_string(reporting.Port())});
    const CommandResult sent = store->Run({"subir-ventas"});
    EXPECT_EQ(sent.code, 0) << sent.messages;
    days.push_back(ReadFile(folder.File("days/20240227")) + ReadFile(folder.File("days/20240228")));
  }
  EXPECT_THAT(days[0], testing::HasSubstr(" 27 2 2024 "));
  EXPECT_EQ(days[1], days[0]);
}

TEST_F(OrdersOnPostgres, ImportTheSamePrices) {
  ExpectSame({"--json", "importar-excel", "@/ejemplos/precios.xlsx", "--simular"});
  ExpectSame({"--json", "importar-excel", "@/ejemplos/precios.xlsx"});
  ExpectSame({"--json", "importar-excel", "@/ejemplos/precios.xls"});
  ExpectSame({"--json", "importar-movilnet", "@/ejemplos/movilnet.xlsx"});
  ExpectSameRows("SELECT idItem, Descripcion, idMarca, idDepartamento, Exento, Activo FROM Items ORDER BY idItem");
  ExpectSameRows("SELECT * FROM Precios ORDER BY idItem, idUnidad, idLista, Inv");
  ExpectSameRows("SELECT * FROM ItemsUnidadesInv ORDER BY idItem, idUnidad, Inv");
  ExpectSameRows("SELECT * FROM Marcas ORDER BY idMarca");
}

TEST_F(OrdersOnPostgres, WriteTheSameFiles) {
  ExpectSame({"--json", "plantilla", "@/a.xlsx", "--con-datos"});
  const CommandResult local = local_.Run({"--json", "colector", "@/a.tolpak", "--proposito", "conteo"});
  const CommandResult server = server_.Run({"--json", "colector", "@/a.tolpak", "--proposito", "conteo"});
  ASSERT_EQ(server.code, 0) << server.messages;
  // Each file has an identifier of its own, and the statements leave the order of the rows to the engine.
  const auto comparable = [](const Store& store, const CommandResult& result) {
    std::string text = ReadFile(store.places.folder + "/a.tolpak");
    text = ReplaceAll(text, json::parse(result.output)["instancia"].get<std::string>(), "");
    for (const char* start : {"<Articulo>", "</Articulos>", "<Barcode>", "</Barcodes>", "<Deposito>", "</Depositos>"}) {
      text = ReplaceAll(text, start, std::string("\n") + start);
    }
    const std::vector<std::string_view> lines = Split(text, '\n');
    std::vector<std::string> records(lines.begin(), lines.end());
    std::sort(records.begin(), records.end());
    return records;
  };
  EXPECT_EQ(comparable(server_, server), comparable(local_, local));
}

TEST_F(OrdersOnPostgres, ImportTheSameRegistryAndTellWhichLineIsNew) {
  WriteFile(local_.places.folder + "/r.txt", "101012341|ACME\r\n101012349|MALA\r\n101012341|OTRA\r\nx\r\n");
  WriteFile(server_.places.folder + "/r.txt", ReadFile(local_.places.folder + "/r.txt"));
  ExpectSame({"--json", "importar-rnc", "@/r.txt"}, 3);
  ExpectSame({"--json", "importar-rnc", "@/ejemplos/DGII_RNC.TXT"});
  ExpectSame({"--json", "importar-rnc", "@/ejemplos/DGII_RNC.TXT"});
  ExpectSameRows("SELECT * FROM Clientes ORDER BY idCliente");
}

TEST_F(OrdersOnPostgres, KeepTheSameBatches) {
  for (const char* word : {"buscar", "abrir", "abrir", "cerrar", "cerrar"}) ExpectSame({"--json", "lote", word});
}

TEST_F(OrdersOnPostgres, TheUserMayDoNothingElse) {
  OdbcDatabaseServices database(
      {.dialect = &postgreSqlDialect, .connection = postgres_.ConnectionString(database_, User())});
  for (const char* text :
       {"DELETE FROM Items", "DELETE FROM Precios", "UPDATE Items SET Descripcion = 'x'", "UPDATE Precios SET Inv = 7",
        "UPDATE Ventas SET GranTotal = 0", "UPDATE Clientes SET Activo = 1", "SELECT Descripcion FROM Clientes",
        "SELECT * FROM Cantidades", "INSERT INTO Ventas (idVenta, idCompania) VALUES (0, 1)", "DROP TABLE Marcas",
        "TRUNCATE Clientes", "CREATE TABLE Otra (a INTEGER)"}) {
    const HostError error = ThrownBy([&] { database.OpenRecordset(SqlStatement(text)); });
    EXPECT_EQ(error.Kind(), HostErrorKind::Access) << text << ": " << error.what();
  }
  const CommandResult schema = server_.Run({"esquema", "--crear"});
  EXPECT_NE(schema.code, 0);
  EXPECT_THAT(schema.messages, testing::HasSubstr("Acceso denegado"));
}

TEST_F(OrdersOnPostgres, TheSchemaCanBeCreatedAgainAndNothingIsLost) {
  UseServerAs(PostgresServer::administrator);
  EXPECT_EQ(server_.Run({"esquema", "--crear"}).code, 0);
  ExpectSameRows("SELECT * FROM Marcas ORDER BY idMarca");
  EXPECT_THAT(server_.Run({"esquema"}).output, testing::HasSubstr("CREATE TABLE IF NOT EXISTS Ventas ("));
}

}  // namespace
}  // namespace tolvan::test
