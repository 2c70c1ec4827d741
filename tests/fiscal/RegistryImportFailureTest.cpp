// What a registry import leaves behind when it does not come to its end, and what the next run makes of it.
#include <gmock/gmock.h>

#include <chrono>
#include <fstream>
#include <random>
#include <thread>

#include "base/NumberText.h"
#include "fiscal/IdentifierChecks.h"
#include "fiscal/RegistryFakes.h"
#include "support/ChildProcess.h"

namespace tolvan {
namespace {

using std::chrono::microseconds;
using test::Store;
using testing::HasSubstr;

constexpr int customers = 1'200;
constexpr std::size_t batchLines = 60;

/// Customers in no order, some of them twice, with a broken line now and then.
std::string Registry() {
  std::string content;
  for (int index = 0; index < customers; ++index) {
    const std::string body = PaddedNumber(10'000'000 + index * 7'919 % customers, 8);
    content += body + *ExpectedRncCheckDigit(body) + "|EMPRESA " + std::to_string(index) + "|||\r\n";
    if (index % 50 == 0) content += body + *ExpectedRncCheckDigit(body) + "|REPETIDA|\r\nrota|x\r\n";
  }
  return content;
}

/// The table after a run that nothing disturbed.
std::string WholeTable() {
  Store store;
  EXPECT_TRUE(store.Import(Registry(), batchLines));
  EXPECT_EQ(store.counts.newCustomers, customers);
  return store.Table();
}

void ExpectSecondRunToComplete(Store& store, int alreadyThere) {
  ASSERT_TRUE(store.Import(Registry(), batchLines)) << store.message;
  EXPECT_EQ(store.counts.newCustomers, customers - alreadyThere);
  EXPECT_EQ(store.Table(), WholeTable());
}

int RowCount(Store& store) {
  return std::stoi(store.Ask("SELECT count(*) FROM Clientes"));
}

TEST(RegistryImportFailure, AnInterruptionKeepsWholeBatchesAndCountsThem) {
  for (const int questions : {1, 200, 1'000}) {
    Store store;
    const test::CountdownInterruption stop(questions);
    EXPECT_FALSE(store.Import(Registry(), batchLines, stop));
    EXPECT_EQ(store.end, RegistryImportEnd::Interrupted);
    EXPECT_THAT(store.message, HasSubstr("Operación interrumpida"));
    EXPECT_TRUE(store.dialogs.boxes.empty());
    const int kept = RowCount(store);
    EXPECT_EQ(kept, store.counts.newCustomers);
    EXPECT_EQ(kept > 0, questions > 1);
    ExpectSecondRunToComplete(store, kept);
  }
}

TEST(RegistryImportFailure, ALockedDatabaseEndsTheRunAndCountsNoGoodLineAsBad) {
  const test::TemporaryFolder folder;
  Store store({.path = folder.File("tienda.db"), .busyWait = std::chrono::milliseconds(30), .createIfMissing = true});
  SqliteDatabaseServices other({.path = folder.File("tienda.db")});
  auto lock = other.BeginTransaction();
  EXPECT_FALSE(store.Import(Registry(), batchLines));
  EXPECT_EQ(store.end, RegistryImportEnd::DatabaseFailed);
  EXPECT_THAT(store.message, HasSubstr("Ocupado por otro programa"));
  EXPECT_EQ(store.counts.newCustomers, 0);
  EXPECT_EQ(store.counts.errors, 2) << "the broken lines among those read";
  lock.reset();
  ExpectSecondRunToComplete(store, 0);
}

TEST(RegistryImportFailure, AFullDiskEndsTheRunWithWhatFits) {
  const test::TemporaryFolder folder;
  Store store({.path = folder.File("tienda.db"), .createIfMissing = true});
  const int pages = std::stoi(store.Ask("PRAGMA page_count"));
  store.Ask("PRAGMA max_page_count=" + std::to_string(pages + 8));
  EXPECT_FALSE(store.Import(Registry(), batchLines));
  EXPECT_THAT(store.message, HasSubstr("No queda espacio"));
  const int kept = RowCount(store);
  EXPECT_EQ(kept, store.counts.newCustomers);
  EXPECT_GT(kept, 0);
  EXPECT_EQ(store.Ask("PRAGMA integrity_check"), "ok");
  store.Ask("PRAGMA max_page_count=1000000");
  ExpectSecondRunToComplete(store, kept);
}

/// Writes down how many customers are on file for good, a line each time.
class Announcer final : public test::RecordingObserver {
 public:
  explicit Announcer(const std::string& path) : file_(path) {}
  void BatchKept(const RegistryCounts& counts) override { file_ << counts.newCustomers << std::endl; }

 private:
  std::ofstream file_;
};

/// A process of its own that imports into the database at `path` and is killed after `delay`. Returns how many
/// customers it announced.
int KilledImport(const std::string& path, const std::string& registry, microseconds delay) {
  const test::TemporaryFolder folder;
  const std::string announcements = folder.File("anunciados");
  const pid_t child = test::StartChild([&] {
    SqliteDatabaseServices database({.path = path});
    const SqliteDialect dialect;
    PosixFileHelper files("/");
    test::MissingArchives archives;
    test::FakeDialogs dialogs;
    clsCallBackProgreso progress;
    Announcer announcer(announcements);
    TaxpayerRegistryImport import({database, dialect, files, archives, dialogs, test::nobodyInterrupts, progress},
                                  &announcer);
    import.SetRutaArchivo(registry);
    import.SetBatchLines(batchLines);
    std::string message;
    import.ImportarArchivoRNC(message);
  });
  std::this_thread::sleep_for(delay);
  test::KillChild(child);
  int announced = 0;
  std::ifstream told(announcements);
  for (int count = 0; told >> count;) announced = count;
  return announced;
}

TEST(RegistryImportFailure, KilledAHundredTimesItLosesNoAnnouncedBatch) {
  const test::TemporaryFolder folder;
  const std::string path = folder.File("tienda.db");
  const std::string registry = folder.File("DGII_RNC.TXT");
  Store store({.path = path, .createIfMissing = true});
  ASSERT_EQ(store.files.WriteTextFile(Registry(), registry), std::nullopt);
  const std::string whole = WholeTable();
  std::mt19937 random(3);
  int cut = 0;
  for (int round = 0; round < 100; ++round) {
    store.database.Execute(SqlStatement("DELETE FROM Clientes"));
    const int announced = KilledImport(path, registry, microseconds(random() % 60'000));
    ASSERT_EQ(store.Ask("PRAGMA integrity_check"), "ok");
    const int kept = RowCount(store);
    ASSERT_GE(kept, announced);
    if (kept > 0 && kept < customers) ++cut;
    ASSERT_TRUE(store.Import(Registry(), 1'000'000)) << store.message;
    ASSERT_EQ(store.counts.newCustomers, customers - kept);
    ASSERT_EQ(store.Table(), whole);
  }
  EXPECT_GT(cut, 10) << "the kills missed the import";
}

}  // namespace
}  // namespace tolvan
