#include "store/ConfiguredHostFactory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <functional>

#include "base/Text.h"
#include "contract/TemporaryFolder.h"
#include "database/sql/SqlDialects.h"
#include "database/sql/SqlScript.h"
#include "store/DeferredProviders.h"
#include "support/FakeHost.h"
#include "support/FileContent.h"
#include "support/LoopbackServer.h"
#include "support/ThrownBy.h"

namespace tolvan {
namespace {

using testing::HasSubstr;

class ConfiguredHostFactoryTest : public testing::Test {
 protected:
  /// Makes the host of a configuration with that text.
  void Assemble(const std::string& text, bool userPresent = false) {
    test::WriteFile(folder_.File("tolvan.ini"), "[host]\najustes = datos\n" + text);
    AssembleWith(DatabaseEngines(), userPresent);
  }

  void AssembleWith(std::span<const DatabaseEngine> engines, bool userPresent = false) {
    const HostFront front{dialogs_, clock_, interruption_, userPresent};
    context_.reset();
    ConfiguredHostFactory factory(OpenHostConfiguration(folder_.File("tolvan.ini"), engines), front);
    services_ = factory.CreateAppServices();
    context_ = factory.CreateHostContext(*services_);
  }

  HostErrorKind KindOfDatabaseFailure() {
    return test::KindThrownBy([&] { context_->Application().Database(); });
  }

  test::TemporaryFolder folder_;
  test::FakeDialogs dialogs_;
  test::FakeClock clock_;
  test::FakeInterruption interruption_;
  std::unique_ptr<AppServices> services_;
  std::unique_ptr<HostContext> context_;
};

// Each operation that deletes, replaces or truncates, on each file of the store's own, under each kind of name.
TEST_F(ConfiguredHostFactoryTest, NothingTouchesTheFilesOfTheStore) {
  namespace fs = std::filesystem;
  fs::create_directories(folder_.Path() / "datos");
  fs::create_directories(folder_.Path() / "disco");
  test::WriteFile(folder_.File("disco/tienda.db"), "");
  fs::create_symlink("disco/tienda.db", folder_.File("tienda.db"));
  Assemble("[base_de_datos]\nconexion = ./tienda.db\n");
  FileHelper& files = services_->Files();
  DeferredSpreadsheetApplication spreadsheets(clock_, files, folder_.File(""));
  const std::vector<std::function<void(const std::string&)>> operations = {
      [&](const std::string& path) { EXPECT_FALSE(files.DeleteFile(path)) << path; },
      [&](const std::string& path) { EXPECT_TRUE(files.WriteTextFile("x", path)) << path; },
      [&](const std::string& path) { EXPECT_THROW(files.CreateWhole(path), HostError) << path; },
      [&](const std::string& path) {
        EXPECT_THROW(spreadsheets.CreateFromTemplate({}, 0)->SaveAs(path), HostError) << path;
      }};
  const auto isRefused = [&](const std::string& path) {
    for (const auto& operation : operations) operation(path);
  };
  for (const std::string own :
       {"tienda.db", "disco/tienda.db", "disco/tienda.db-wal", "disco/tienda.db-shm", "disco/tienda.db-journal",
        "tienda.db-journal", "tolvan.ini", "datos/%2E.+tolvan.ini.ajustes", "datos/%2E.+tolvan.ini.ajustes.lock",
        "datos/otra.ini.ajustes.danado-20240131-080000", "datos/%2E.+tolvan.ini.ventanas"}) {
    const std::string path = folder_.File(own);
    isRefused(path);
    isRefused(folder_.File("disco/..//datos/../" + own));
    test::WriteFile(path, "propio");
    fs::create_symlink(path, folder_.File("enlace.xlsx"));
    fs::create_hard_link(fs::canonical(path), folder_.File("otro.xlsx"));
    for (const std::string& name : {own, "disco/../" + own, std::string("enlace.xlsx"), std::string("otro.xlsx")})
      isRefused(folder_.File(name));
    EXPECT_EQ(test::ReadFile(path), "propio");
    for (const char* link : {"enlace.xlsx", "otro.xlsx"}) EXPECT_TRUE(fs::remove(folder_.File(link))) << own;
  }
  for (const char* free : {"tienda.txt", "disco/tolvan.ini", "datos/informe.csv", "tienda.db.ajustes"}) {
    EXPECT_FALSE(files.WriteTextFile("x", folder_.File(free))) << free;
    EXPECT_TRUE(files.DeleteFile(folder_.File(free))) << free;
  }
}

TEST_F(ConfiguredHostFactoryTest, OpensTheDatabaseOnlyWhenItIsAskedFor) {
  Assemble("[base_de_datos]\nconexion = falta.db\n");
  EXPECT_EQ(KindOfDatabaseFailure(), HostErrorKind::Unreachable);
  EXPECT_FALSE(std::filesystem::exists(folder_.File("falta.db")));
  test::WriteFile(folder_.File("falta.db"), "");
  DatabaseServices& database = context_->Application().Database();
  EXPECT_EQ(database.OpenRecordset(SqlStatement("SELECT 7 AS Siete"))->Text(0), "7");
  EXPECT_EQ(&database, &context_->Application().Database());
  Assemble("[base_de_datos]\nmotor = postgresql\nconexion = Server=x\n");
  EXPECT_EQ(KindOfDatabaseFailure(), HostErrorKind::Configuration);
  EXPECT_EQ(context_->Application().Dialect().Engine().name, "postgresql");
}

/// An engine that nobody has: its tables have another script, its statements those of the one below it.
class InventedDialect final : public SqliteDialect {
 public:
  const EngineTraits& Engine() const override {
    static const EngineTraits traits{
        .name = "inventado", .schema = "CREATE TABLE Prueba (Codigo TEXT)", .isFile = true};
    return traits;
  }
};

TEST_F(ConfiguredHostFactoryTest, TakesAnEngineThatIsOneMoreRow) {
  const std::array engines{DatabaseEngines().front(), DatabaseEngine{[]() -> std::unique_ptr<SqlDialect> {
                                                                       return std::make_unique<InventedDialect>();
                                                                     },
                                                                     OpenSqliteFile}};
  test::WriteFile(folder_.File("suya.db"), "");
  test::WriteFile(folder_.File("tolvan.ini"),
                  "[host]\najustes = datos\n[base_de_datos]\nmotor = inventado\nconexion = suya.db\n");
  AssembleWith(engines);
  HostApplication& application = context_->Application();
  RunSqlScript(application.Database(), application.Dialect().Engine().schema);
  EXPECT_EQ(application.Database().Execute(SqlStatement("INSERT INTO Prueba VALUES ('A')")), 1);
  EXPECT_THROW(services_->Files().CreateWhole(folder_.File("suya.db")), HostError) << "a file engine's is guarded";
  EXPECT_THAT(test::ThrownBy([&] { Assemble("[base_de_datos]\nmotor = inventado\n"); }).what(),
              HasSubstr("debe ser sqlite, sqlserver, postgresql o access"));
}

TEST_F(ConfiguredHostFactoryTest, NamesFoldersFromTheConfiguration) {
  std::filesystem::create_directory(folder_.Path() / "app");
  Assemble("carpeta = app\npermisos = uno, dos\n");
  EXPECT_EQ(services_->ApplicationFolder(), std::filesystem::canonical(folder_.Path()).native() + "/app/");
  EXPECT_TRUE(context_->Application().HasPermission("dos"));
  EXPECT_FALSE(context_->Application().HasPermission("importar-precios"));
  services_->WriteLayout("Ventanas", "IMPEXP_L", 40);
  SettingsStore& settings = context_->Application().Settings();
  settings.Define(std::string(), "Clave", "0", "IMPEXP", 0, 0);
  settings.Set("IMPEXP", "0", "x");
  settings.Save("IMPEXP");
  EXPECT_EQ(test::NamesIn(folder_.Path() / "datos"),
            (std::vector<std::string>{"%2E.+tolvan.ini.ajustes", "%2E.+tolvan.ini.ajustes.lock",
                                      "%2E.+tolvan.ini.ventanas", "%2E.+tolvan.ini.ventanas.lock"}));
  for (const char* unusable : {"carpeta = falta\n", "carpeta = C:\\Tolvan\n", "tienda =\n"}) {
    const HostError error = test::ThrownBy([&] { Assemble(unusable); });
    EXPECT_EQ(error.Kind(), HostErrorKind::Configuration) << unusable;
    EXPECT_THAT(error.what(), HasSubstr("tolvan.ini")) << unusable;
  }
  EXPECT_THROW(OpenHostConfiguration(folder_.File("otro.ini")), HostError);
}

TEST_F(ConfiguredHostFactoryTest, TellsOfAPasswordThatEverybodyCanRead) {
  const std::string path = std::filesystem::canonical(folder_.Path()) / "dueño's.ini";
  const HostFront front{dialogs_, clock_, interruption_, false};
  const auto notice = [&](const std::string& text, mode_t mode) {
    test::WriteFile(path, text);
    ::chmod(path.c_str(), mode);
    return ConfiguredHostFactory(OpenHostConfiguration(path), front).Notice();
  };
  const std::string mail = "[correo]\nclave = secreto\n";
  const std::string database = "[base_de_datos]\nmotor = postgresql\nconexion = Server=x; PWD = y;\n";
  for (const std::string& text : {mail, database}) {
    EXPECT_THAT(notice(text, 0644), testing::EndsWith("\r\n  chmod 600 '" + ReplaceAll(path, "'", "'\\''") + "'"));
    EXPECT_EQ(notice(text, 0640), "");
  }
  EXPECT_EQ(notice("[base_de_datos]\nmotor = postgresql\nconexion = Server=x;Pwd=;\n", 0644), "");
}

TEST_F(ConfiguredHostFactoryTest, SendsMailAndRequestsThroughTheModule) {
  test::WriteFile(folder_.File("240131.txt"), "0001,1\n");
  const test::TemporaryFolder received;
  const test::LoopbackServer server("smtp_server.py", {received.Path(), "accept"});
  const std::string mail = "[correo]\nservidor = smtp://127.0.0.1:" + std::to_string(server.Port()) + "\n";
  Assemble(mail);
  EXPECT_EQ(context_->Application().Mail().SendFileToChosenRecipient("240131.txt").status, MailStatus::NotSent);
  EXPECT_TRUE(dialogs_.questions.empty()) << "nobody is there to be asked";

  Assemble(mail, true);
  MailService& service = context_->Application().Mail();
  EXPECT_EQ(service.SendFileToChosenRecipient("240131.txt").status, MailStatus::CancelledByUser);
  dialogs_.answer = "ana";
  dialogs_.nextAnswer = " ana@example.com ";
  const MailOutcome outcome = service.SendFileToChosenRecipient("240131.txt");
  EXPECT_EQ(outcome.status, MailStatus::Sent) << outcome.detail;
  EXPECT_EQ(test::ReadFile(received.File("attachment")), "0001,1\n");
  EXPECT_THAT(dialogs_.questions.back(), HasSubstr("«ana» no es una dirección"));

  const test::LoopbackServer web("answer_server.py", {received.Path()});
  HttpRequest request;
  request.host = "127.0.0.1";
  request.port = static_cast<std::uint16_t>(web.Port());
  request.pathAndQuery = "chunked";
  EXPECT_EQ(context_->Application().Http().Get(request).body, "unodos");
  // An exception made in the module is the one that this program knows.
  interruption_.requested = true;
  EXPECT_THROW(context_->Application().Http().Get(request), HostError);
}

}  // namespace
}  // namespace tolvan
