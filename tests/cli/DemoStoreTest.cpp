#include "cli/demo/DemoStore.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "cli/demo/DemoCatalogue.h"
#include "contract/TemporaryFolder.h"
#include "platform/sqlite/SqliteDatabaseServices.h"
#include "services/SumDaySales.h"
#include "support/CommandRunner.h"
#include "support/FileContent.h"

namespace tolvan {
namespace {

using test::ReadFile;
using test::WriteFile;

using test::TemporaryFolder;

TEST(DemoStore, IsTheSameForTheSameDayAndSellsUpToTheDayBefore) {
  TemporaryFolder folder;
  const Date today = Date::FromParts(2024, 3, 1);
  const DemoPlaces first = PlacesOfDemo(folder.File("una"));
  const DemoPlaces second = PlacesOfDemo(folder.File("otra"));
  MakeDemoStore(first, today);
  MakeDemoStore(second, today);
  EXPECT_EQ(ReadFile(first.database), ReadFile(second.database));
  EXPECT_EQ(ReadFile(first.host), ReadFile(second.host));
  for (const char* book : {"/precios.xlsx", "/movilnet.xlsx"}) {
    EXPECT_EQ(ReadFile(first.examples + book), ReadFile(second.examples + book)) << book;
  }

  SqliteDatabaseServices database({.path = first.database});
  EXPECT_GT(SumDaySales(database, today.PlusDays(-1), true), Currency());
  EXPECT_GT(SumDaySales(database, today.PlusDays(-90), true), Currency());
  EXPECT_EQ(SumDaySales(database, today, true), Currency());
  EXPECT_EQ(SumDaySales(database, today.PlusDays(-91), true), Currency());
}

TEST(DemoStore, ReplacesADemoStoreAndNothingElse) {
  TemporaryFolder folder;
  const DemoPlaces places = PlacesOfDemo(folder.File("tienda"));
  MakeDemoStore(places, Date::FromParts(2024, 3, 1));
  const std::string before = ReadFile(places.database);
  MakeDemoStore(places, Date::FromParts(2024, 4, 1));
  EXPECT_NE(ReadFile(places.database), before);

  WriteFile(places.host, "[host]\n");
  const std::string kept = ReadFile(places.database);
  test::CommandRunner runner;
  const auto result = runner.Run({"demo", places.folder});
  EXPECT_EQ(result.code, 1);
  EXPECT_NE(result.messages.find("no son de una tienda de demostración"), std::string::npos);
  EXPECT_EQ(ReadFile(places.database), kept);
}

TEST(DemoStore, ItsPriceListsHoldTheSameRowsOfEveryKind) {
  TemporaryFolder folder;
  const DemoPlaces places = PlacesOfDemo(folder.File("tienda"));
  MakeDemoStore(places, Date::FromParts(2024, 3, 1));
  test::CommandRunner runner;
  runner.host = places.host;
  const auto newer = runner.Run({"--json", "importar-excel", places.examples + "/precios.xlsx", "--simular"});
  const auto older = runner.Run({"--json", "importar-excel", places.examples + "/precios.xls", "--simular"});
  ASSERT_EQ(newer.code, 0) << newer.messages;
  EXPECT_EQ(newer.output, older.output) << "run tools/make-examples";
  EXPECT_EQ(newer.output.find("\"nuevos_items\":0"), std::string::npos);
  EXPECT_EQ(newer.output.find("\"precios_actualizados\":0"), std::string::npos);
  EXPECT_EQ(newer.output.find("\"no_procesados\":0"), std::string::npos);
}

TEST(DemoCatalogue, HasEnoughItemsWhoseCodesAndNamesNoCleaningChanges) {
  const DemoCatalogue catalogue = MakeDemoCatalogue();
  EXPECT_GE(catalogue.items.size(), 300U);
  for (const DemoItem& item : catalogue.items) {
    EXPECT_TRUE(item.code.size() <= 14 &&
                std::ranges::all_of(item.code, [](char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); }))
        << item.code;
    EXPECT_EQ(item.description.find_first_of("-/.abcdefghijklmnopqrstuvwxyz"), std::string::npos) << item.description;
    EXPECT_EQ(item.description.find("  "), std::string::npos) << item.description;
    EXPECT_LT(item.cost, item.priceWithTax) << item.code;
  }
}

TEST(DemoCatalogue, BarcodesCarryTheirCheckDigit) {
  EXPECT_EQ(DemoBarcode("400638133393"), "4006381333931");
  EXPECT_EQ(DemoBarcode("978020137962"), "9780201379624");
}

}  // namespace
}  // namespace tolvan
