// The two commands of tax identifiers on a real store, from the words to the exit code.
#include <cstdlib>

#include "cli/DemoStoreFixture.h"
#include "support/LoopbackServer.h"

namespace tolvan {
namespace {

using json = nlohmann::ordered_json;
using test::ReadFile;
using test::WriteFile;
using testing::HasSubstr;

using RegistryCommands = test::DemoStoreFixture;

json Counts(int registered, int notRegistered, int errors, int lines) {
  return {{"nuevos", registered}, {"no_registrados", notRegistered}, {"errores", errors}, {"lineas", lines}};
}

TEST_F(RegistryCommands, ImportTheDemoRegistryAndSayWhyASecondRunDoesNothing) {
  const std::string file = places.examples + "/DGII_RNC.TXT";
  EXPECT_EQ(Json({"importar-rnc", file}), Counts(2000, 0, 0, 2000));
  const std::string zip = folder.File("DGII_RNC.ZIP");
  ASSERT_EQ(std::system(("python3 -m zipfile -c '" + zip + "' '" + file + "'").c_str()), 0);
  const auto result = runner.Run({"importar-rnc", zip});
  EXPECT_EQ(result.code, 0);
  EXPECT_EQ(result.output, "Nuevos:         0\nNo registrados: 1\nErrores:        0\nLíneas:         2000\n");
  EXPECT_EQ(result.messages, "No hay contribuyentes nuevos: los del archivo ya estaban registrados.\n");
}

TEST_F(RegistryCommands, WriteRejectedLinesAndEndWithThree) {
  const std::string file = folder.File("registro.txt");
  const std::string report = folder.File("rechazos.txt");
  WriteFile(file, "101012341|ACME\r\n\r\n101012349|MALA\r\nsin separador\r\n");
  EXPECT_EQ(Json({"importar-rnc", file, "--rechazos", report}, 3), Counts(1, 0, 1, 4));
  EXPECT_EQ(ReadFile(report),
            "3\tel identificador no es un RNC ni una cédula válidos\t101012349|MALA\n"
            "4\tomitida: no tiene el separador |\tsin separador\n");
  Expect({{{"importar-rnc", file}, 3, "Líneas omitidas por no tener el separador |: 1\n"},
          {{"importar-rnc", file, "--rechazos", file}, 2, "no puede ser el mismo que se importa"}});
  EXPECT_THAT(ReadFile(file), HasSubstr("ACME")) << "the report never replaces what is imported";
}

TEST_F(RegistryCommands, SayWhyNothingWasKept) {
  WriteFile(folder.File("nota.txt"), "sin separador\n");
  Expect(
      {{{"importar-rnc", folder.File("nota.txt"), "--rechazos", folder.File("rechazos.txt")}, 1, "no es el registro"}});
  EXPECT_FALSE(std::filesystem::exists(folder.File("rechazos.txt")));
  runner.interruption.requested = true;
  const json interrupted = Json({"importar-rnc", places.examples + "/DGII_RNC.TXT"}, 1);
  EXPECT_THAT(interrupted["error"].get<std::string>(), HasSubstr("Operación interrumpida"));
}

TEST_F(RegistryCommands, RecogniseIdentifiersWithoutAHostAndReportALookupThatCannotBeMade) {
  const std::string host = std::exchange(runner.host, {});
  const json found = Json({"rnc", "1-01-01234-1", "00113918205", "x", "RNC 101012341"});
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
  Expect({{{"rnc", "101012341", "--consultar"}, 4}});
  runner.host = host;
  Expect({{{"rnc", "101012341", "--consultar"}, 1}, {{"rnc", "101012348", "--consultar"}, 0}});
}

TEST_F(RegistryCommands, AskTheConfiguredPageAndReportWhatCameBack) {
  const test::LoopbackServer server("http_server.py", {folder.Path()});
  WriteFile(places.host, ReadFile(places.host) + "[dgii]\nservidor = 127.0.0.1:" + std::to_string(server.Port()) +
                             "\nviewstate = dDw+/A==\neventvalidation = EV+/\n");
  const struct {
    const char* code;
    int exitCode;
    const char* name;
    const char* message;
  } cases[] = {{"101012341", 0, "PEÑA &amp; HIJOS, SRL", ""}, {"024691352", 0, "", "no tiene inscrito"},
               {"049382691", 1, "", "ha cambiado"},           {"037037022", 1, "", "estado 500"},
               {"148148051", 1, "", "no respondió"},          {"400000005", 1, "", "no respondió"}};
  for (const auto& one : cases) {
    const auto result = runner.Run({"--json", "rnc", "--consultar", one.code});
    const json found = json::parse(result.output)[0];
    SCOPED_TRACE(one.code);
    EXPECT_EQ(result.code, one.exitCode);
    EXPECT_EQ(found["nombre"], one.name);
    EXPECT_EQ(found.contains("error"), one.exitCode != 0);
    EXPECT_THAT(result.messages, HasSubstr(one.message));
  }
  EXPECT_THAT(
      ReadFile(folder.File("request")),
      testing::StartsWith("GET /app/WebApps/Consultas/rnc/RncWeb.aspx?__VIEWSTATE=dDw+/A==&__EVENTVALIDATION=EV+/"
                          "&rbtnlTipoBusqueda=0&btnBuscaRncCed=Buscar&txtRncCed=400000005 HTTP/1.1\r\n"));
}

}  // namespace
}  // namespace tolvan
