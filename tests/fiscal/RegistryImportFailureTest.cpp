// What a registry import leaves behind when it does not come to its end, and what the next run makes of it.
#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>
#include <thread>

#include "fiscal/RegistryStore.h"
#include "support/ChildProcess.h"

namespace tolvan {
namespace {

using Store = test::RegistryStore;
using testing::HasSubstr;

constexpr int customers = 1'200;
constexpr std::size_t blockLines = 60;

/// Customers in no order, some of them twice, with a broken line before and after them.
std::string Registry() {
  const std::string content = test::MakeRegistry(customers);
  return "rota|x\r\n" + content.substr(0, content.find('\n', 1'000) + 1) + content + "rota|x\r\n";
}

/// The table after a run that nothing disturbed.
std::string WholeTable() {
  Store store;
  EXPECT_TRUE(store.Import(Registry(), blockLines));
  EXPECT_EQ(store.run.counts.newCustomers, customers);
  return store.Table();
}

void ExpectSecondRunToComplete(Store& store, int alreadyThere) {
  ASSERT_TRUE(store.Import(Registry(), blockLines)) << store.run.message;
  EXPECT_EQ(store.run.counts.newCustomers, customers - alreadyThere);
  EXPECT_EQ(store.Table(), WholeTable());
}

int RowCount(Store& store) {
  return std::stoi(store.Ask("SELECT count(*) FROM Clientes"));
}

TEST(RegistryImportFailure, AnInterruptionKeepsWholeBlocksAndCountsThem) {
  for (const int questions : {1, 200, 1'000}) {
    Store store;
    const test::FakeInterruption stop = test::StopsAt(questions);
    EXPECT_FALSE(store.Import(Registry(), blockLines, stop));
    EXPECT_EQ(store.run.end, RegistryImportEnd::Interrupted);
    EXPECT_THAT(store.run.message, HasSubstr("Operación interrumpida"));
    EXPECT_TRUE(store.run.boxes.empty());
    const int kept = RowCount(store);
    EXPECT_EQ(kept, store.run.counts.newCustomers);
    EXPECT_EQ(kept > 0, questions > 1);
    ExpectSecondRunToComplete(store, kept);
  }
}

TEST(RegistryImportFailure, ALockedDatabaseEndsTheRunAndCountsNoGoodLineAsBad) {
  const test::TemporaryFolder folder;
  Store store({.path = folder.File("tienda.db"), .busyWait = std::chrono::milliseconds(30), .createIfMissing = true});
  SqliteDatabaseServices other({.path = folder.File("tienda.db")});
  auto lock = other.BeginTransaction();
  EXPECT_FALSE(store.Import(Registry(), blockLines));
  EXPECT_EQ(store.run.end, RegistryImportEnd::DatabaseFailed);
  EXPECT_THAT(store.run.message, HasSubstr("Ocupado por otro programa"));
  EXPECT_EQ(store.run.counts.newCustomers, 0);
  EXPECT_EQ(store.run.counts.errors, 1) << "the broken line among those read";
  lock.reset();
  ExpectSecondRunToComplete(store, 0);
}

TEST(RegistryImportFailure, AFullDiskEndsTheRunWithWhatFits) {
  const test::TemporaryFolder folder;
  Store store({.path = folder.File("tienda.db"), .createIfMissing = true});
  const int pages = std::stoi(store.Ask("PRAGMA page_count"));
  store.Ask("PRAGMA max_page_count=" + std::to_string(pages + 8));
  EXPECT_FALSE(store.Import(Registry(), blockLines));
  EXPECT_THAT(store.run.message, HasSubstr("No queda espacio"));
  const int kept = RowCount(store);
  EXPECT_EQ(kept, store.run.counts.newCustomers);
  EXPECT_GT(kept, 0);
  EXPECT_EQ(store.Ask("PRAGMA integrity_check"), "ok");
  store.Ask("PRAGMA max_page_count=1000000");
  ExpectSecondRunToComplete(store, kept);
}

/// A process of its own that imports into the database at `path`, announces at every line how many customers are kept
/// for good, and is killed when it has announced so many bytes. Returns how many it announced last.
int KilledImport(const std::string& path, const std::string& registry, std::uintmax_t bytes) {
  const test::TemporaryFolder folder;
  const std::string announcements = folder.File("anunciados");
  test::WriteFile(announcements, "");
  const pid_t child = test::StartChild([&] {
    SqliteDatabaseServices database({.path = path});
    std::ofstream announced(announcements);
    const auto announce = [&](const RegistryCounts& counts) { announced << counts.newCustomers << std::endl; };
    test::ImportRegistryFile(database, SqliteDialect(), registry, {.blockLines = blockLines, .atEveryLine = announce});
  });
  const auto latest = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (std::filesystem::file_size(announcements) < bytes && std::chrono::steady_clock::now() < latest) {
    std::this_thread::sleep_for(std::chrono::microseconds(100));
  }
  test::KillChild(child);
  int announced = 0;
  std::ifstream told(announcements);
  for (int count = 0; told >> count;) announced = count;
  return announced;
}

TEST(RegistryImportFailure, KilledAHundredTimesItLosesNoAnnouncedBlock) {
  const test::TemporaryFolder folder;
  const std::string path = folder.File("tienda.db");
  const std::string registry = folder.File("DGII_RNC.TXT");
  Store store({.path = path, .createIfMissing = true});
  test::WriteFile(registry, Registry());
  const std::string whole = WholeTable();
  std::mt19937 random(3);
  int cut = 0;
  for (int round = 0; round < 100; ++round) {
    store.database.Execute(SqlStatement("DELETE FROM Clientes"));
    const int announced = KilledImport(path, registry, random() % 4'000);
    ASSERT_EQ(store.Ask("PRAGMA integrity_check"), "ok");
    const int kept = RowCount(store);
    ASSERT_GE(kept, announced);
    if (kept > 0 && kept < customers) ++cut;
    ASSERT_TRUE(store.Import(Registry())) << store.run.message;
    ASSERT_EQ(store.run.counts.newCustomers, customers - kept);
    ASSERT_EQ(store.Table(), whole);
  }
  EXPECT_GT(cut, 10) << "the kills missed the import";
}

}  // namespace
}  // namespace tolvan
