#include "cli/demo/DemoStore.h"

#include "cli/DemoStoreFixture.h"
#include "cli/demo/DemoData.h"
#include "database/sqlite/SqliteDatabaseServices.h"
#include "export/SumDaySales.h"
#include "support/FileContent.h"

namespace tolvan {
namespace {

using test::ReadFile;
using test::WriteFile;
using DemoStore = test::DemoStoreFixture;

TEST_F(DemoStore, IsTheSameForTheSameDayAndSellsUpToTheDayBefore) {
  const Date today = Date::FromParts(2024, 3, 1);
  const DemoPlaces other = PlacesOfDemo(folder.File("otra"));
  MakeDemoStore(other, today);
  EXPECT_EQ(ReadFile(places.database), ReadFile(other.database));
  EXPECT_EQ(ReadFile(places.host), ReadFile(other.host));
  for (const char* book : {"/precios.xlsx", "/movilnet.xlsx"}) {
    EXPECT_EQ(ReadFile(places.examples + book), ReadFile(other.examples + book)) << book;
  }

  SqliteDatabaseServices database({.path = places.database});
  EXPECT_GT(SumDaySales(database, today.PlusDays(-1), true), Currency());
  EXPECT_GT(SumDaySales(database, today.PlusDays(-90), true), Currency());
  EXPECT_EQ(SumDaySales(database, today, true), Currency());
  EXPECT_EQ(SumDaySales(database, today.PlusDays(-91), true), Currency());
}

TEST_F(DemoStore, ReplacesADemoStoreAndNothingElse) {
  const std::string before = ReadFile(places.database);
  MakeDemoStore(places, Date::FromParts(2024, 4, 1));
  const std::string kept = ReadFile(places.database);
  EXPECT_NE(kept, before);

  WriteFile(places.host, "[host]\n");
  WriteFile(folder.File("ajustes"), "de otra tienda");
  for (const std::string& other : {places.folder, folder.File("")}) {
    const auto result = test::CommandRunner().Run({"demo", other});
    EXPECT_EQ(result.code, 1);
    EXPECT_NE(result.messages.find("no son de una tienda de demostración"), std::string::npos);
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
  EXPECT_EQ(runner.Run({"demo", places.folder}).code, 0);
}

TEST_F(DemoStore, ItsPriceListsHoldTheSameRowsOfEveryKind) {
  const auto newer = runner.Run({"--json", "importar-excel", places.examples + "/precios.xlsx", "--simular"});
  const auto older = runner.Run({"--json", "importar-excel", places.examples + "/precios.xls", "--simular"});
  ASSERT_EQ(newer.code, 0) << newer.messages;
  EXPECT_EQ(newer.output, older.output) << "run tools/make-examples";
  for (const char* counted : {"nuevos_items", "precios_actualizados", "no_procesados"}) {
    EXPECT_EQ(newer.output.find("\"" + std::string(counted) + "\":0"), std::string::npos);
  }
}

TEST(DemoCatalogue, BarcodesCarryTheirCheckDigit) {
  EXPECT_EQ(DemoBarcode("400638133393"), "4006381333931");
  EXPECT_EQ(DemoBarcode("978020137962"), "9780201379624");
}

}  // namespace
}  // namespace tolvan
