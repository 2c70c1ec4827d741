// The demo store, as a whole: its parts are seen by the tests of every command, which run on it.
#include "cli/demo/DemoStore.h"

#include "cli/DemoStoreFixture.h"
#include "cli/demo/DemoData.h"

namespace tolvan {
namespace {

using test::ReadFile;
using test::WriteFile;
using DemoStore = test::DemoStoreFixture;

TEST_F(DemoStore, IsTheSameForTheSameDayAndSellsUpToTheDayBefore) {
  runner.Run({"demo", folder.File("otra")});
  EXPECT_TRUE(test::FilesIn(folder.File("otra")) == test::FilesIn(places.folder));
  EXPECT_EQ(Query("SELECT min(date(FechaValidacion)), max(date(FechaValidacion)) FROM Ventas"),
            "2023-12-02,2024-02-29");
}

TEST_F(DemoStore, ReplacesADemoStoreAndNothingElse) {
  const std::string before = ReadFile(places.database);
  MakeDemoStore(places, Date::FromParts(2024, 4, 1));
  const std::string kept = ReadFile(places.database);
  EXPECT_NE(kept, before);

  WriteFile(places.host, "[host]\n");
  WriteFile(folder.File("ajustes"), "de otra tienda");
  for (const std::string& other : {places.folder, folder.File("")}) {
    Expect({"demo", other}, 1, "no son de una tienda de demostración");
  }
  EXPECT_EQ(ReadFile(places.database), kept);
  EXPECT_EQ(test::NamesIn(folder.Path()), (std::vector<std::string>{"ajustes", "tienda"}));
}

// As on a disk that is full: what failed can be asked for again.
TEST_F(DemoStore, LeavesNothingOfAFailedOne) {
  const auto fail = [](const DemoPlaces& where) {
    MakeDemoStore(where, Date::FromParts(2024, 4, 1), [] { throw HostError(HostErrorKind::Full, ""); });
  };
  EXPECT_THROW(fail(PlacesOfDemo(folder.File("nueva/dentro"))), HostError);
  WriteFile(places.exportFolder + "/240131.txt", "0001");
  EXPECT_THROW(fail(places), HostError);
  EXPECT_EQ(test::NamesIn(folder.Path()), std::vector<std::string>{"tienda"});
  EXPECT_FALSE(std::filesystem::exists(places.database));
  EXPECT_EQ(ReadFile(places.exportFolder + "/240131.txt"), "0001");
  Expect({"demo", places.folder}, 0);
}

TEST_F(DemoStore, ItsPriceListsHoldTheSameRowsOfEveryKind) {
  const auto newer = Json({"importar-excel", places.examples + "/precios.xlsx", "--simular"});
  EXPECT_EQ(newer, Json({"importar-excel", places.examples + "/precios.xls", "--simular"}))
      << "run tools/make-examples";
  for (const auto& count : newer["resumen"]) EXPECT_GT(count, 0) << newer["resumen"];
}

TEST(DemoCatalogue, BarcodesCarryTheirCheckDigit) {
  EXPECT_EQ(DemoBarcode("400638133393"), "4006381333931");
  EXPECT_EQ(DemoBarcode("978020137962"), "9780201379624");
}

}  // namespace
}  // namespace tolvan
