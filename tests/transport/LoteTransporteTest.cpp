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

TEST_F(LoteTransporteTest, StatementsOfEachEngine) {
  const struct {
    std::shared_ptr<SqlDialect> dialect;
    std::string moment;
  } cases[] = {{std::make_shared<SqlServerDialect>(), "GETDATE()"},
               {std::make_shared<SqliteDialect>(), SqliteDialect().CurrentMoment()},
               {std::make_shared<AccessDialect>(), "Now()"}};
  for (const auto& [dialect, moment] : cases) {
    const LoteTransporte lotes(Database(), *dialect, 3, 12);
    EXPECT_EQ(lotes.FindStatement("idLoteTransporte, FechaCierre").Render(*dialect),
              "SELECT idLoteTransporte, FechaCierre FROM LoteTransporteSubida WHERE idCompania = 3 AND idSedeCompania "
              "= 12 AND Cerrado=0 ORDER BY idLoteTransporte DESC");
    EXPECT_EQ(lotes.OpenStatement().Render(*dialect),
              "INSERT INTO LoteTransporteSubida ( idCompania, idSedeCompania) VALUES (3,12)");
    EXPECT_EQ(lotes.CloseStatement().Render(*dialect),
              "UPDATE LoteTransporteSubida SET Cerrado = 1, FechaCierre = " + moment +
                  " WHERE idCompania = 3 AND idSedeCompania = 12 AND Cerrado=0");
  }
}

TEST_F(LoteTransporteTest, OneOpenLoteForEachSite) {
  LoteTransporte here(Database(), dialect_, 1, 1);
  LoteTransporte there(Database(), dialect_, 1, 2);
  EXPECT_FALSE(here.Find());
  const OpenedLote first = here.Open();
  EXPECT_TRUE(first.isNew);
  EXPECT_EQ(here.Open().number, first.number);
  EXPECT_FALSE(here.Open().isNew);
  const OpenedLote other = there.Open();
  EXPECT_NE(other.number, first.number);

  const ClosedLotes closed = here.Close();
  EXPECT_EQ(closed.newest, first.number);
  EXPECT_EQ(closed.count, 1);
  EXPECT_EQ(here.Close().newest, std::nullopt);
  EXPECT_EQ(here.Close().count, 0);
  EXPECT_FALSE(here.Find());
  EXPECT_EQ(there.Find(), other.number);
  EXPECT_GT(here.Open().number, other.number);
  EXPECT_EQ(Query("SELECT count(*) FROM LoteTransporteSubida WHERE Cerrado = 1 AND FechaCierre LIKE "
                  "'20__-__-__ __:__:__'"),
            "1");
}

TEST_F(LoteTransporteTest, ProgramsThatOpenAtOnceGetTheSameLote) {
  constexpr int programs = 4;
  constexpr int rounds = 25;
  std::barrier together(programs);
  std::atomic<int> failures = 0;
  std::vector<std::vector<OpenedLote>> opened(programs);
  std::vector<std::jthread> threads;
  for (std::size_t program = 0; program < programs; ++program) {
    threads.emplace_back([&, program] {
      SqliteDatabaseServices connection({.path = path});
      for (int round = 0; round < rounds; ++round) {
        together.arrive_and_wait();
        try {
          opened[program].push_back(LoteTransporte(connection, dialect_, 1, round).Open());
        } catch (const HostError& error) {
          ADD_FAILURE() << TextForPeople(error);
          ++failures;
        }
      }
    });
  }
  threads.clear();
  ASSERT_EQ(failures, 0);
  for (std::size_t round = 0; round < rounds; ++round) {
    int makers = 0;
    for (const auto& lotes : opened) {
      EXPECT_EQ(lotes[round].number, opened[0][round].number);
      makers += lotes[round].isNew ? 1 : 0;
    }
    EXPECT_EQ(makers, 1);
  }
  EXPECT_EQ(Query("SELECT count(*) FROM LoteTransporteSubida"), std::to_string(rounds));
}

}  // namespace
}  // namespace tolvan::test
