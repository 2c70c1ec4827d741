// The upload of day totals from a real store to a server process that can misbehave.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "cli/DemoStoreFixture.h"
#include "support/FileContent.h"
#include "support/LoopbackServer.h"

namespace tolvan {
namespace {

using nlohmann::json;
using test::ReadFile;
using test::WriteFile;
using testing::HasSubstr;

class OrderSubirVentasTest : public test::DemoStoreFixture {
 protected:
  OrderSubirVentasTest() { runner.Run({"opciones", "10=127.0.0.1:" + std::to_string(server.Port())}); }

  std::string Reference() {
    const json all = json::parse(runner.Run({"--json", "opciones"}).output);
    return all["SVentas_OffsetAnno"].get<std::string>() + "-" + all["SVentas_OffsetMes"].get<std::string>() + "-" +
           all["SVentas_OffsetDia"].get<std::string>();
  }

  test::LoopbackServer server{"sales_server.py", {folder.Path()}};
};

TEST_F(OrderSubirVentasTest, SendsWhatTheServerAsksForAndGoesOnFromThere) {
  WriteFile(folder.File("pending"), "1 20240228 20240301");
  WriteFile(folder.File("faults"), "20240301 delayed\n");
  const auto first = runner.Run({"--json", "subir-ventas"});
  EXPECT_EQ(first.code, 0) << first.messages;
  EXPECT_EQ(json::parse(first.output), (json{{"dias", {"2024-02-28", "2024-03-01"}}, {"completo", true}}));
  EXPECT_EQ(first.messages, "");
  EXPECT_EQ(ReadFile(folder.File("days/20240301")), "0 1 0001 1 3 2024 0 0.00 0.00 0.00 0.00") << "today has no sales";
  EXPECT_THAT(ReadFile(folder.File("days/20240228")), testing::MatchesRegex("0 1 0001 28 2 2024 [1-9][0-9]* .*"));
  EXPECT_EQ(Reference(), "2024-3-1");

  WriteFile(folder.File("pending"), "1");
  const auto second = runner.Run({"--json", "subir-ventas"});
  EXPECT_EQ(second.code, 0);
  EXPECT_EQ(json::parse(second.output), (json{{"dias", json::array()}, {"completo", true}}));
  EXPECT_EQ(second.messages, "No hay días pendientes: el servidor de ventas no pidió ninguno.\n");
  EXPECT_TRUE(ReadFile(folder.File("requests")).ends_with("?1%201%200001%201%203%202024 HTTP/1.1\n"));
}

TEST_F(OrderSubirVentasTest, WhatFailsIsToldAndCanBeSentAgain) {
  WriteFile(folder.File("pending"), "1 20240227 20240228 20240229");
  const struct {
    const char* fault;
    std::size_t sent;
    const char* text;
  } cases[] = {
      {"list noise", 0, "no se entiende"},
      {"20240228 cut", 1, "incompleta"},
      {"20240229 error", 2, "con el estado 500"},
      {"", 3, ""},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(one.fault);
    WriteFile(folder.File("faults"), one.fault);
    const auto result = runner.Run({"--json", "subir-ventas"});
    const json document = json::parse(result.output);
    EXPECT_EQ(document["dias"].size(), one.sent);
    EXPECT_EQ(document["completo"], one.sent == 3);
    EXPECT_EQ(result.code, one.sent == 3 ? 0 : 1);
    EXPECT_EQ(document.contains("error"), one.sent != 3);
    EXPECT_THAT(result.messages, HasSubstr(one.text));
  }
  EXPECT_EQ(test::NamesIn(folder.File("days")), (std::vector<std::string>{"20240227", "20240228", "20240229"}));
  EXPECT_EQ(Reference(), "2024-2-29");
}

TEST_F(OrderSubirVentasTest, AnInterruptionEndsTheWaitForAServerThatHangs) {
  WriteFile(folder.File("faults"), "list hangs\n");
  runner.interruption.requested = true;
  const auto result = runner.Run({"subir-ventas"});
  EXPECT_EQ(result.code, 1);
  EXPECT_THAT(result.messages, HasSubstr("Operación interrumpida"));
}

}  // namespace
}  // namespace tolvan
