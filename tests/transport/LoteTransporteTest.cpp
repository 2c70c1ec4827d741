#include "transport/LoteTransporte.h"

#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <thread>

#include "database/sql/SqlDialects.h"
#include "support/TestStore.h"

namespace tolvan::test {
namespace {

class LoteTransporteTest : public ::testing::Test, protected TestStore {
 protected:
  SqliteDialect dialect_;
};

TEST_F(LoteTransporteTest, StatementsOfTheHost) {
  const SqlServerDialect dialect;
  const LoteTransporte lotes(Database(), dialect, 3, 12);
  EXPECT_EQ(lotes.FindStatement("idLoteTransporte, FechaCierre").Render(dialect),
            "SELECT idLoteTransporte, FechaCierre FROM LoteTransporteSubida WHERE idCompania = 3 AND idSedeCompania "
            "= 12 AND Cerrado=0 ORDER BY idLoteTransporte DESC");
  EXPECT_EQ(lotes.OpenStatement().Render(dialect),
            "INSERT INTO LoteTransporteSubida ( idCompania, idSedeCompania) VALUES (3,12)");
  EXPECT_EQ(lotes.CloseStatement().Render(dialect),
            "UPDATE LoteTransporteSubida SET Cerrado = 1, FechaCierre = GETDATE() WHERE idCompania = 3 AND "
            "idSedeCompania = 12 AND Cerrado=0");
}

TEST_F(LoteTransporteTest, OneOpenLoteForEachSite) {
  LoteTransporte here(Database(), dialect_, 1, 1);
  LoteTransporte there(Database(), dialect_, 1, 2);
  const OpenedLote first = here.Open();
  const OpenedLote other = there.Open();
  EXPECT_TRUE(first.isNew && other.isNew);
  EXPECT_NE(other.number, first.number);
  const ClosedLotes closed = here.Close();
  EXPECT_EQ(closed.newest, first.number);
  EXPECT_EQ(closed.count, 1);
  EXPECT_EQ(there.Find(), other.number);
  EXPECT_EQ(Query("SELECT count(*) FROM LoteTransporteSubida WHERE Cerrado = 1 AND FechaCierre LIKE "
                  "'20__-__-__ __:__:__'"),
            "1");
}

TEST_F(LoteTransporteTest, ProgramsThatOpenAtOnceGetTheSameLote) {
  constexpr int programs = 4;
  constexpr int rounds = 25;
  std::barrier together(programs);
  std::atomic<int> made = 0;
  std::vector<std::jthread> threads;
  for (int program = 0; program < programs; ++program) {
    threads.emplace_back([&] {
      SqliteDatabaseServices connection({.path = path});
      for (int round = 0; round < rounds; ++round) {
        together.arrive_and_wait();
        try {
          if (LoteTransporte(connection, dialect_, 1, round).Open().isNew) ++made;
        } catch (const HostError& error) {
          ADD_FAILURE() << TextForPeople(error);
        }
      }
    });
  }
  threads.clear();
  EXPECT_EQ(made, rounds);
  EXPECT_EQ(Query("SELECT count(*) FROM LoteTransporteSubida"), std::to_string(rounds));
}

}  // namespace
}  // namespace tolvan::test
