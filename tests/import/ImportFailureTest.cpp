// An import that fails, at whatever point and for whatever cause: the message, and a database as it was.
#include <sqlite3.h>

#include <chrono>
#include <random>
#include <thread>
#include <tuple>

#include "base/Text.h"
#include "import/clsIE_PreciosExcel.h"
#include "support/ChildProcess.h"
#include "support/ImportRig.h"

namespace tolvan {
namespace {

using test::none;

constexpr const char* notFinished = "La operación no pudo concluirse";

class ImportFailure : public test::ImportTest {
 protected:
  void FillSheet(int count) {
    for (int row = 0; row < count; ++row) {
      const std::string code = "N" + std::to_string(row);
      sheets.rows.push_back({code, "articulo", "M" + std::to_string(row % 20), "", 10.0, 11.8});
    }
    sheets.rows.push_back({"EXENTO", "x", "", "", 9.0, 25.0});
  }

  /// Applies at once, and tells how it ended.
  ImportOutcome Import(const std::function<void()>& beforeApplying = [] {}) {
    auto importer = MakeImporter<clsIE_PreciosExcel>([&](IClaseImportar& shown) {
      beforeApplying();
      EXPECT_EQ(shown.Iniciar(status), dynamic_cast<PriceImporter&>(shown).Outcome().applied);
    });
    importer.Procesar(status);
    return importer.Outcome();
  }

  void ExpectNotFinished(const ImportOutcome& outcome, const std::string& before, const std::string& cause) {
    EXPECT_FALSE(outcome.applied);
    EXPECT_EQ(outcome.failure, notFinished);
    EXPECT_NE(outcome.cause.find(cause), std::string::npos) << outcome.cause;
    EXPECT_EQ(host.services.dialogs.boxes.back(),
              (test::FakeDialogs::Box{MessageIcon::Exclamation, "Tolvan", FailureText(outcome)}));
    EXPECT_EQ(Dump(), before);
    EXPECT_EQ(Query("PRAGMA integrity_check"), "ok");
  }
};

TEST_F(ImportFailure, InTheLastOfTenThousandRowsLeavesNothing) {
  FillSheet(9'999);
  Database().Execute(
      SqlStatement("CREATE TRIGGER falla BEFORE UPDATE ON Precios WHEN NEW.idItem = 'EXENTO' BEGIN SELECT "
                   "RAISE(ABORT, 'precio bloqueado'); END"));
  const std::string before = Dump();
  ExpectNotFinished(Import(), before,
                    "Fila 10004 del libro, código EXENTO: La base de datos rechazó el registro: precio bloqueado");
}

TEST_F(ImportFailure, OfTheDatabaseLeavesNothing) {
  FillSheet(500);
  const std::string before = Dump();
  // Another program holds the write lock.
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
  ExpectNotFinished(Import(), before, "Ocupado por otro programa");
  sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
  sqlite3_close(other);
  // No room for the pages that are needed.
  Query("PRAGMA max_page_count = 45");
  ExpectNotFinished(Import(), before, "");
  Query("PRAGMA max_page_count = 1000000");
  EXPECT_TRUE(Import().applied);  // nothing of all that stands in the way
}

TEST_F(ImportFailure, ByAQuickerProgramNamesWhatIsThereSince) {
  FillSheet(20);
  sheets.rows.push_back({"Ñu", "x"});
  test::FakeDatabase store;
  store.real = &Database();
  host.application.database = &store;
  for (const std::string code : {"N7", "n12", "ñu"}) {
    store.beforeTransaction = [&] {
      test::ExecuteOn(path,
                      "INSERT INTO Items (idItem, idMarca, idDepartamento) VALUES ('" + code + "', 'DEF', 'DEF')");
    };
    const ImportOutcome outcome = Import();
    EXPECT_EQ(outcome.failure + "/" + outcome.cause,
              std::string(notFinished) + "/Otro programa registró mientras tanto: " + ToUpper(code) +
                  ". No se aplicó nada; repita la importación, que los tomará como Items ya registrados.");
    EXPECT_EQ(Query("SELECT count(*) FROM Items WHERE idItem = 'N1'"), "0");
  }
}

TEST_F(ImportFailure, ByInterruptionIsAFailedStep) {
  FillSheet(300);
  const std::string before = Dump();
  ExpectNotFinished(Import([&] { host.services.interruption.requested = true; }), before,
                    "Operación interrumpida. No se cambió nada.");
  const std::size_t boxes = host.services.dialogs.boxes.size();
  EXPECT_EQ(Import().failure,
            "Operación interrumpida. No se cambió nada.");  // already while reading: no review, no box
  EXPECT_EQ(host.services.dialogs.boxes.size(), boxes);
}

TEST_F(ImportFailure, OfTheWorkbookShowsNoReview) {
  FillSheet(10);
  sheets.readFailure = HostError(HostErrorKind::Damaged, "cambió mientras se leía");
  auto importer = MakeImporter<clsIE_PreciosExcel>([](IClaseImportar&) { FAIL(); });
  EXPECT_FALSE(importer.Procesar(status));
  EXPECT_EQ(importer.Outcome().failure, "El archivo tiene el formato incorrecto o bien está dañado");
  EXPECT_EQ(host.services.dialogs.boxes.back(),
            (test::FakeDialogs::Box{MessageIcon::Exclamation, "Tolvan", FailureText(importer.Outcome())}));
  EXPECT_EQ(importer.NumeroRenglones(), 0);
}

TEST_F(ImportFailure, OfAnotherListNamesWhatIsWrongWithIt) {
  const std::vector<std::tuple<std::uint32_t, test::GivenRow, std::string>> cases{
      {3, {"Modelo", "Código"}, "en la fila 3 la columna B se titula «Código», que corresponde a la columna A."},
      {4,
       {" código", none, none, none, "pvp "},
       "en la fila 4 la columna E se titula «pvp», que corresponde a la columna F."},
      {3, {"A", none, none, none, none, 5.0}, "en la fila 3 ya hay datos, que deben comenzar en la 5."},
      {3, {none, none, none, none, 5.0}, ""},
      {2, {"Marca", none, none, none, 5.0}, ""},
      {3, {"Código", "Artículo", none, none, "Costo", "PVP", "Marca", none, none, "PVP"}, ""}};
  for (const auto& [row, cells, cause] : cases) {
    sheets.firstRow = row;
    sheets.rows = {cells};
    const ImportOutcome outcome = Import();
    EXPECT_EQ(outcome.cause, cause.empty() ? "" : "El libro no está hecho con la plantilla: " + cause);
    EXPECT_EQ(outcome.applied, cause.empty()) << row;
  }
}

TEST_F(ImportFailure, ToReadEverythingIsTold) {
  const std::string ended = "La lectura terminó en la fila ";
  const std::vector<std::pair<std::vector<test::GivenRow>, std::string>> cases{
      {{{"A"}, {}, {"B"}, {" "}, {"C"}},
       ended + "6 de la hoja: la fila está vacía. Siguen 2 filas con datos que no se leyeron."},
      {{{"A"}, {none, "nota"}}, ended + "6 de la hoja: la columna A (código) está vacía."},
      {{{"A"}, {"", " "}, {" "}}, ""},
      {{}, "No se leyó ningún renglón: la hoja no tiene datos desde la fila 5."},
      {{{"", 1.0}, {"A"}},
       "No se leyó ningún renglón. " + ended +
           "5 de la hoja: la columna A (código) está vacía. Sigue 1 fila con datos que no se leyó."}};
  for (const auto& [rows, note] : cases) {
    sheets.rows = rows;
    auto importer = MakeImporter<clsIE_PreciosExcel>([](IClaseImportar&) {});
    EXPECT_TRUE(importer.Procesar(status));
    EXPECT_EQ(importer.NoteOfAll(), note);
  }
}

TEST_F(ImportFailure, BeforeTheTransactionIsSilent) {
  FillSheet(10);
  Execute("DELETE FROM Monedas WHERE MonedaExtranjera = 1");
  const std::string before = Dump();
  const ImportOutcome outcome = Import();
  EXPECT_FALSE(outcome.applied);
  EXPECT_TRUE(host.services.dialogs.boxes.empty());
  EXPECT_NE(outcome.failure.find("moneda extranjera"), std::string::npos);
  EXPECT_EQ(Dump(), before);
}

TEST_F(ImportFailure, ByAKillIsAllOrNothing) {
  FillSheet(3'000);
  const std::string before = Dump();
  Close();
  const std::string copy = folder.File("copia.db");
  std::mt19937 random(7);
  int whole = 0;
  for (int attempt = 0; attempt < 50; ++attempt) {
    std::filesystem::remove(copy + "-wal");
    std::filesystem::remove(copy + "-shm");
    std::filesystem::copy_file(path, copy, std::filesystem::copy_options::overwrite_existing);
    const pid_t child = test::StartChild([&] {
      Open(copy);
      host.application.database = &Database();
      Import();
    });
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 250'000));
    test::KillChild(child);
    Open(copy);
    EXPECT_EQ(Query("PRAGMA integrity_check"), "ok");
    const std::string items = Query("SELECT count(*) FROM Items WHERE idItem GLOB 'N[0-9]*'");
    if (items == "0") {
      EXPECT_EQ(Dump(), before);
    } else {
      EXPECT_EQ(items, "3000");
      EXPECT_EQ(Query("SELECT count(*) FROM Precios WHERE idItem GLOB 'N[0-9]*'"), "6000");
      EXPECT_EQ(Query("SELECT Precio FROM Precios WHERE idItem = 'EXENTO' ORDER BY Inv"), "25|25");
      ++whole;
    }
    Close();
  }
  RecordProperty("whole", whole);
}

}  // namespace
}  // namespace tolvan
