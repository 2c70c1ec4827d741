#include "export/DailySalesExport.h"

#include <gtest/gtest.h>

#include "support/FakeHost.h"

namespace tolvan {
namespace {

using test::FakeDialogs;
using test::FakeHost;

/// A host whose store sold `total` on every day, with the folder /out.
struct SalesHost : FakeHost {
  explicit SalesHost(double total = 15234) {
    application.fakeDatabase.answer = [total](const SqlStatement&) {
      return std::make_unique<test::FakeRecordset>(std::vector<std::string>{"SumaDeGranTotal"},
                                                   std::vector<std::vector<FieldValue>>{{total}});
    };
    services.files.folders.insert("/out");
    settings.SetText(Setting::CarpetaDestino, "/out");
    settings.SetText(Setting::CodigoTienda, "0001");
    settings.SetInteger(Setting::FechaReporteDia, 31);
    settings.SetInteger(Setting::FechaReporteMes, 1);
    settings.SetInteger(Setting::FechaReporteAnno, 2024);
  }

  DailySalesResult Run(bool interactive) {
    errorText.clear();
    return DailySalesExport(context).Run(interactive, errorText);
  }

  std::string errorText;
};

TEST(DailySalesExport, WritesTheLineByteForByte) {
  struct Case {
    double total;
    int quotes;
    std::string line;
  };
  const std::vector<Case> cases = {
      {15234, 0, "0001,15234,19:00,31/01/2024"},   {15234, 1, "0001,15234,\"19:00\",\"31/01/2024\","},
      {0, 1, "0001,0,\"19:00\",\"31/01/2024\","},  {1234.56, 0, "0001,1235,19:00,31/01/2024"},
      {0.4, 0, "0001,0,19:00,31/01/2024"},         {0.5, 0, "0001,1,19:00,31/01/2024"},
      {2.5, 0, "0001,3,19:00,31/01/2024"},         {-0.4, 0, "0001,0,19:00,31/01/2024"},
      {-1234.5, 0, "0001,-1235,19:00,31/01/2024"}, {123456789012, 2, "0001,123456789012,\"19:00\",\"31/01/2024\","},
  };
  for (const Case& expected : cases) {
    SalesHost host(expected.total);
    host.settings.SetInteger(Setting::MostrarComillas, expected.quotes);
    const DailySalesResult result = host.Run(true);
    EXPECT_TRUE(result.succeeded);
    EXPECT_EQ(result.path, "/out/240131.txt");
    EXPECT_EQ(host.services.files.contents["/out/240131.txt"], expected.line);
    EXPECT_EQ(result.record, expected.line);
    EXPECT_EQ(host.errorText, "");
  }
}

TEST(DailySalesExport, AnUnattendedRunReportsYesterdayAndLeavesTheStoredDateAlone) {
  SalesHost host;
  host.services.clock.now.date = Date::FromParts(2024, 3, 1);
  host.settings.SetInteger(Setting::HoraFinalVentaHoras, 7);
  host.settings.SetInteger(Setting::HoraFinalVentaMinutos, 5);
  const auto before = host.application.settings.values;
  const DailySalesResult result = host.Run(false);
  EXPECT_EQ(result.path, "/out/240229.txt");
  EXPECT_EQ(result.record, "0001,15234,\"07:05\",\"29/02/2024\",");
  EXPECT_EQ(host.application.settings.values, before);
  ASSERT_EQ(host.application.fakeDatabase.statements.size(), 1U);
  EXPECT_EQ(host.application.fakeDatabase.statements[0].Literals()[2],
            SqlLiteral(DateTime{.date = Date::FromParts(2024, 2, 29)}));
}

TEST(DailySalesExport, StoredPartsCarryAndNonsenseIsToldWithoutTouchingTheFile) {
  SalesHost host;
  host.settings.SetInteger(Setting::FechaReporteMes, 2);
  EXPECT_EQ(host.Run(true).path, "/out/240302.txt");

  host.services.files.contents = {{"/out/990101.txt", "old"}};
  host.settings.SetInteger(Setting::FechaReporteAnno, 2'000'000'000);
  EXPECT_FALSE(host.Run(true).succeeded);
  EXPECT_NE(host.errorText.find("no es una fecha"), std::string::npos);
  EXPECT_EQ(host.services.files.contents.size(), 1U);
}

TEST(DailySalesExport, AFailedWriteTellsThePathRemovesTheOldFileAndSendsNothing) {
  SalesHost host;
  host.settings.SetText(Setting::CarpetaDestino, "/falta");
  host.settings.SetText(Setting::NombreArchivo, "Ventas del día.DAT");
  host.settings.SetInteger(Setting::EnviarEmail, 1);
  host.services.files.contents["/falta/Ventas del día.DAT"] = "yesterday's line";
  const DailySalesResult result = host.Run(true);
  EXPECT_FALSE(result.succeeded);
  EXPECT_EQ(host.errorText, "\r\nError en acceso a la ruta/archivo:\r\n/falta/Ventas del día.DAT");
  EXPECT_TRUE(host.services.files.contents.empty());
  EXPECT_TRUE(host.application.mail.sent.empty());
}

TEST(DailySalesExport, ACodeOrADatabaseThatFailsLeavesTheEarlierFile) {
  SalesHost host;
  host.services.files.contents["/out/240131.txt"] = "earlier";
  const std::string code = host.settings.Text(Setting::CodigoTienda);
  host.settings.SetText(Setting::CodigoTienda, "店1");
  EXPECT_FALSE(host.Run(true).succeeded);
  EXPECT_NE(host.errorText.find("MicrosExp_CodigoTienda (código de la empresa) tiene el carácter «店»"),
            std::string::npos);
  host.settings.SetText(Setting::CodigoTienda, code);
  host.application.databaseFailure = HostError(HostErrorKind::Busy, "la tienda está ocupada");
  EXPECT_FALSE(host.Run(true).succeeded);
  EXPECT_NE(host.errorText.find("la tienda está ocupada"), std::string::npos);
  EXPECT_EQ(host.services.files.contents["/out/240131.txt"], "earlier");
}

TEST(DailySalesExport, DiagnosticBoxesShowTheLineAndThenThePath) {
  SalesHost host;
  host.services.diagnostic = true;
  host.Run(false);
  const std::vector<FakeDialogs::Box> expected = {{MessageIcon::None, "Tolvan", "0001,15234,\"19:00\",\"31/01/2024\","},
                                                  {MessageIcon::None, "Tolvan", "/out/240131.txt"}};
  EXPECT_EQ(host.services.dialogs.boxes, expected);
}

TEST(DailySalesExport, SendsToTheRecipientOrAsksForOneOnlyWhenInteractive) {
  SalesHost host;
  host.settings.SetInteger(Setting::EnviarEmail, 1);
  EXPECT_TRUE(host.Run(false).sent);
  host.settings.SetText(Setting::EnviarDireccionEmail, "");
  EXPECT_TRUE(host.Run(true).sent);
  const std::vector<std::string> expected = {"/out/240131.txt -> reportes@example.com", "/out/240131.txt -> ?"};
  EXPECT_EQ(host.application.mail.sent, expected);

  EXPECT_FALSE(host.Run(false).succeeded);
  EXPECT_EQ(host.errorText.find("\r\nNo se puede enviar archivo por e-mail"), 0U);
  EXPECT_EQ(host.application.mail.sent, expected);
}

TEST(DailySalesExport, AMailThatFailsKeepsTheFileAndTellsTheTextOfItsKind) {
  const std::vector<std::pair<MailStatus, std::string>> cases = {
      {MailStatus::NotSent, "No se puede enviar archivo por e-mail"},
      {MailStatus::Refused, "Error al intentar enviar e-mail"},
      {MailStatus::LoginRefused, "Error de inicio de sesión o inicio de sesión cancelada"},
      {MailStatus::OutOfMemory, "Memoria insuficiente"},
      {MailStatus::Unspecified, "Error no especificado"},
      {MailStatus::AttachmentUnreadable, "Error general en acceso al archivo a adjuntarse"},
      {MailStatus::AttachmentFailed, "Error general al procesar archivo adjunto"},
      {MailStatus::CancelledByUser, "Procedimiento cancelado por el usuario"},
      {MailStatus::NoService, "No se encuentra los servicios de mensajería de Windows."},
  };
  for (const auto& [status, text] : cases) {
    SalesHost host;
    host.settings.SetInteger(Setting::EnviarEmail, 1);
    host.application.mail.outcome = {status, "550 no"};
    const DailySalesResult result = host.Run(true);
    EXPECT_FALSE(result.succeeded);
    EXPECT_TRUE(result.written);
    EXPECT_EQ(host.errorText.find("\r\n" + text), 0U) << host.errorText;
    EXPECT_TRUE(host.errorText.ends_with("\r\n550 no"));
  }
}

}  // namespace
}  // namespace tolvan
