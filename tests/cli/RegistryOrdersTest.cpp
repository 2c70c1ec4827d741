// The two orders of tax identifiers on a real store, from the words to the exit code.
#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
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
using testing::StartsWith;

using RegistryOrders = test::DemoStoreFixture;

TEST_F(RegistryOrders, ImportsTheDemoRegistryAndSaysWhyASecondRunDoesNothing) {
  const std::string file = places.examples + "/DGII_RNC.TXT";
  auto result = runner.Run({"--json", "importar-rnc", file});
  EXPECT_EQ(result.code, 0);
  EXPECT_EQ(json::parse(result.output),
            (json{{"nuevos", 2000}, {"no_registrados", 0}, {"errores", 0}, {"lineas", 2000}}));
  const std::string zip = folder.File("DGII_RNC.ZIP");
  ASSERT_EQ(std::system(("python3 -m zipfile -c '" + zip + "' '" + file + "'").c_str()), 0);
  result = runner.Run({"importar-rnc", zip});
  EXPECT_EQ(result.code, 0);
  EXPECT_EQ(result.output, "Nuevos:         0\nNo registrados: 1\nErrores:        0\nLíneas:         2000\n");
  EXPECT_EQ(result.messages, "No hay contribuyentes nuevos: los del archivo ya estaban registrados.\n");
}

TEST_F(RegistryOrders, WritesRejectedLinesAndEndsWithThree) {
  const std::string file = folder.File("registro.txt");
  const std::string report = folder.File("rechazos.txt");
  WriteFile(file, "101012341|ACME\r\n\r\n101012349|MALA\r\nsin separador\r\n");
  const auto result = runner.Run({"--json", "importar-rnc", file, "--rechazos", report});
  EXPECT_EQ(result.code, 3);
  EXPECT_EQ(json::parse(result.output), (json{{"nuevos", 1}, {"no_registrados", 0}, {"errores", 1}, {"lineas", 4}}));
  EXPECT_EQ(ReadFile(report),
            "3\tel identificador no es un RNC ni una cédula válidos\t101012349|MALA\n"
            "4\tomitida: no tiene el separador |\tsin separador\n");
  EXPECT_EQ(runner.Run({"importar-rnc", file, "--rechazos", file}).code, 2);
  EXPECT_THAT(ReadFile(file), HasSubstr("ACME")) << "the report never replaces what is imported";
}

TEST_F(RegistryOrders, TellsWhyAnImportKeptNothing) {
  WriteFile(folder.File("nota.txt"), "sin separador\n");
  const auto other = runner.Run({"importar-rnc", folder.File("nota.txt"), "--rechazos", folder.File("rechazos.txt")});
  EXPECT_EQ(other.code, 1);
  EXPECT_THAT(other.messages, HasSubstr("no es el registro"));
  EXPECT_FALSE(std::filesystem::exists(folder.File("rechazos.txt")));
  runner.interruption.requested = true;
  const auto interrupted = runner.Run({"--json", "importar-rnc", places.examples + "/DGII_RNC.TXT"});
  EXPECT_EQ(interrupted.code, 1);
  EXPECT_THAT(json::parse(interrupted.output)["error"].get<std::string>(), HasSubstr("Operación interrumpida"));
}

TEST_F(RegistryOrders, RecognisesIdentifiersWithoutAHostAndReportsALookupThatCannotBeMade) {
  test::CommandRunner alone;
  const auto result = alone.Run({"--json", "rnc", "1-01-01234-1", "00113918205", "x", "RNC 101012341"});
  EXPECT_EQ(result.code, 0);
  const json found = json::parse(result.output);
  EXPECT_EQ(found[0], (json{{"entrada", "1-01-01234-1"},
                            {"codigo", "101012341"},
                            {"es_rnc", true},
                            {"es_cedula", false},
                            {"es_valido", true},
                            {"codigo_valido", true},
                            {"personeria", 1},
                            {"nombre", ""}}));
  EXPECT_EQ(found[1]["es_cedula"], true);
  EXPECT_EQ(found[2]["es_valido"], false);
  EXPECT_EQ(found[3]["codigo_valido"], false);
  EXPECT_EQ(alone.Run({"rnc", "101012341", "--consultar"}).code, 4);
  EXPECT_EQ(runner.Run({"rnc", "101012341", "--consultar"}).code, 1);
  EXPECT_EQ(runner.Run({"rnc", "101012348", "--consultar"}).code, 0) << "nothing to ask for";
}

TEST_F(RegistryOrders, AsksTheConfiguredPageAndTellsWhatCameBack) {
  const test::LoopbackServer server("http_server.py", {folder.Path()});
  WriteFile(places.host, ReadFile(places.host) + "[dgii]\nservidor = 127.0.0.1:" + std::to_string(server.Port()) +
                             "\nviewstate = dDw+/A==\neventvalidation = EV+/\n");
  struct Case {
    const char* code;
    int exitCode;
    const char* name;
    const char* message;
  };
  const Case cases[] = {{"101012341", 0, "PEÑA &amp; HIJOS, SRL", ""}, {"024691352", 0, "", "no tiene inscrito"},
                        {"049382691", 1, "", "ha cambiado"},           {"037037022", 1, "", "estado 500"},
                        {"148148051", 1, "", "no respondió"},          {"400000005", 1, "", "no respondió"}};
  for (const Case& one : cases) {
    const auto result = runner.Run({"--json", "rnc", "--consultar", one.code});
    const json found = json::parse(result.output)[0];
    SCOPED_TRACE(one.code);
    EXPECT_EQ(result.code, one.exitCode);
    EXPECT_EQ(found["nombre"], one.name);
    EXPECT_EQ(found.contains("error"), one.exitCode != 0);
    EXPECT_THAT(result.messages, HasSubstr(one.message));
  }
  EXPECT_THAT(ReadFile(folder.File("request")),
              StartsWith("GET /app/WebApps/Consultas/rnc/RncWeb.aspx?__VIEWSTATE=dDw+/A==&__EVENTVALIDATION=EV+/"
                         "&rbtnlTipoBusqueda=0&btnBuscaRncCed=Buscar&txtRncCed=400000005 HTTP/1.1\r\n"));
}

}  // namespace
}  // namespace tolvan
