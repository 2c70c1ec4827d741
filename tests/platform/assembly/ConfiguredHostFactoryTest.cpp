#include "platform/assembly/ConfiguredHostFactory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "contract/TemporaryFolder.h"
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
    const HostFront front{dialogs_, clock_, interruption_, userPresent};
    context_.reset();
    ConfiguredHostFactory factory(OpenHostConfiguration(folder_.File("tolvan.ini")), front);
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

TEST_F(ConfiguredHostFactoryTest, NeverReplacesItsOwnFiles) {
  namespace fs = std::filesystem;
  test::WriteFile(folder_.File("tienda.db"), "la tienda");
  test::WriteFile(folder_.File("tienda.db-wal"), "lo último");
  fs::create_symlink(folder_.File("tienda.db"), folder_.File("enlace.tolpak"));
  fs::create_hard_link(folder_.File("tienda.db"), folder_.File("otro.tolpak"));
  Assemble("[base_de_datos]\nconexion = ./tienda.db\n");
  for (const char* name : {"tienda.db", "tienda.db-wal", "tolvan.ini", "enlace.tolpak", "otro.tolpak"}) {
    EXPECT_THROW(services_->Files().CreateWhole(folder_.File(name)), HostError) << name;
    EXPECT_TRUE(services_->Files().WriteTextFile("x", folder_.File(name))) << name;
  }
  EXPECT_EQ(test::ReadFile(folder_.File("tienda.db")), "la tienda");
  EXPECT_FALSE(services_->Files().WriteTextFile("x", folder_.File("tienda.txt")));
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
  EXPECT_EQ(context_->Application().Dialect().Engine(), DatabaseEngine::PostgreSql);
}

TEST_F(ConfiguredHostFactoryTest, NamesFoldersFromTheConfiguration) {
  std::filesystem::create_directory(folder_.Path() / "app");
  Assemble("carpeta = app\npermisos = uno, dos\n");
  EXPECT_EQ(services_->ApplicationFolder(), std::filesystem::canonical(folder_.Path()).native() + "/app/");
  EXPECT_TRUE(context_->Application().HasPermission("dos"));
  EXPECT_FALSE(context_->Application().HasPermission("importar-precios"));
  services_->WriteRegistry("Ventanas", "IMPEXP_L", 40);
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

  const test::LoopbackServer web("http_server.py", {received.Path()});
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
