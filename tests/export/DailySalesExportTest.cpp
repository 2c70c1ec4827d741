#include "export/DailySalesExport.h"

#include <gtest/gtest.h>

#include <tuple>

#include "export/SalesTotals.h"
#include "support/FakeHost.h"

namespace tolvan {
namespace {

using test::FakeDialogs;
using test::FakeHost;

/// A host whose database gives `total` for every day, with the folder /out.
struct SalesHost : FakeHost {
  explicit SalesHost(const FieldValue& total = 15234.0) {
    application.fakeDatabase.names = {"SumaDeGranTotal"};
    application.fakeDatabase.rows = {{total}};
    services.files.folders.insert("/out");
    settings.SetText(Setting::CarpetaDestino, "/out");
    settings.SetText(Setting::CodigoTienda, "0001");
    settings.SetInteger(Setting::FechaReporteDia, 31);
    settings.SetInteger(Setting::FechaReporteMes, 1);
    settings.SetInteger(Setting::FechaReporteAnno, 2024);
  }

  DailySalesFile Run(bool interactive) {
    report = DailySalesExport(context).Run(interactive);
    return report.DetailsAs<DailySalesFile>();
  }

  ActionReport report;
};

TEST(DailySalesExport, WritesTheLineByteForByte) {
  const std::vector<std::tuple<FieldValue, int, std::string>> cases = {
      {15234.0, 0, "0001,15234,19:00,31/01/2024"},
      {15234.0, 1, "0001,15234,\"19:00\",\"31/01/2024\","},
      {{}, 1, "0001,0,\"19:00\",\"31/01/2024\","},
      {1234.56, 0, "0001,1235,19:00,31/01/2024"},
      {0.4, 0, "0001,0,19:00,31/01/2024"},
      {0.5, 0, "0001,1,19:00,31/01/2024"},
      {std::int64_t{2}, 0, "0001,2,19:00,31/01/2024"},
      {DecimalText{"2.5"}, 0, "0001,3,19:00,31/01/2024"},
      {-0.4, 0, "0001,0,19:00,31/01/2024"},
      {-1234.5, 0, "0001,-1235,19:00,31/01/2024"},
      {123456789012.0, 2, "0001,123456789012,\"19:00\",\"31/01/2024\","},
  };
  for (const auto& [total, quotes, line] : cases) {
    SalesHost host(total);
    host.settings.SetInteger(Setting::MostrarComillas, quotes);
    const DailySalesFile file = host.Run(true);
    EXPECT_TRUE(host.report.done) << host.report.text;
    EXPECT_EQ(file.path, "/out/240131.txt");
    EXPECT_EQ(host.services.files.contents["/out/240131.txt"], line);
    EXPECT_EQ(file.record, line);
    EXPECT_EQ(host.report.text, "");
  }
}

// The two texts differ in the subtraction and in the closing ";", which only one has.
TEST(DailySalesExport, AsksForOneCalendarDayInExactlyTheAgreedText) {
  const std::string where =
      "From Ventas WHERE (((Ventas.VentaRealizada)=?) AND ((Ventas.Anulado)<>?)) AND Ventas.FechaValidacion >= ? AND "
      "Ventas.FechaValidacion < ?";
  EXPECT_EQ(SumDaySalesStatement(Date::FromParts(2024, 2, 29), true).ParameterText(),
            "SELECT Sum(Ventas.GranTotal) AS SumaDeGranTotal " + where + ";");
  SalesHost host;
  host.services.diagnostic = true;
  host.services.clock.now.date = Date::FromParts(2024, 3, 1);
  host.settings.SetInteger(Setting::HoraFinalVentaHoras, 7);
  host.settings.SetInteger(Setting::HoraFinalVentaMinutos, 5);
  const auto before = host.application.settings.values;
  const DailySalesFile file = host.Run(false);
  EXPECT_EQ(file.path, "/out/240229.txt") << "unattended it is yesterday's";
  EXPECT_EQ(file.record, "0001,15234,\"07:05\",\"29/02/2024\",");
  const FakeDialogs::Box line{MessageIcon::None, "Tolvan", file.record};
  const FakeDialogs::Box path{MessageIcon::None, "Tolvan", file.path};
  EXPECT_EQ(host.services.dialogs.boxes, (std::vector{line, path}));
  EXPECT_EQ(host.application.settings.values, before);
  ASSERT_EQ(host.application.fakeDatabase.statements.size(), 1U);
  const SqlStatement& asked = host.application.fakeDatabase.statements[0];
  EXPECT_EQ(asked.ParameterText(), "SELECT Sum(Ventas.GranTotal - Ventas.Impuestos) AS SumaDeGranTotal " + where);
  EXPECT_EQ(asked.Literals()[2], SqlLiteral(DateTime{.date = Date::FromParts(2024, 2, 29)}));
  EXPECT_EQ(asked.Literals()[3], SqlLiteral(DateTime{.date = Date::FromParts(2024, 3, 1)}));
}

TEST(DailySalesExport, WhatFailsBeforeWritingLeavesTheEarlierFile) {
  SalesHost host;
  host.settings.SetInteger(Setting::FechaReporteMes, 2);
  EXPECT_EQ(host.Run(true).path, "/out/240302.txt") << "stored parts carry";
  const std::vector<std::pair<std::function<void(SalesHost&)>, const char*>> cases = {
      {[](SalesHost& it) { it.settings.SetInteger(Setting::FechaReporteAnno, 2'000'000'000); }, "no es una fecha"},
      {[](SalesHost& it) { it.settings.SetText(Setting::CodigoTienda, "店1"); },
       "MicrosExp_CodigoTienda (código de la empresa) tiene el carácter «店»"},
      {[](SalesHost& it) { it.application.databaseFailure = HostError(HostErrorKind::Busy, "la tienda está ocupada"); },
       "la tienda está ocupada"},
      {[](SalesHost& it) { it.application.fakeDatabase.rows = {{1e18}}; }, "no es un importe: 1000000000000000000"},
  };
  for (const auto& [arrange, text] : cases) {
    SalesHost failing;
    failing.services.files.contents["/out/240131.txt"] = "earlier";
    arrange(failing);
    failing.Run(true);
    EXPECT_FALSE(failing.report.done);
    EXPECT_NE(failing.report.text.find(text), std::string::npos) << failing.report.text;
    EXPECT_EQ(failing.services.files.contents["/out/240131.txt"], "earlier");
  }
}

TEST(DailySalesExport, AFailedWriteRemovesTheOldFileAndSendsNothing) {
  SalesHost host;
  host.settings.SetText(Setting::CarpetaDestino, "/falta");
  host.settings.SetText(Setting::NombreArchivo, "Ventas del día.DAT");
  host.settings.SetInteger(Setting::EnviarEmail, 1);
  host.services.files.contents["/falta/Ventas del día.DAT"] = "yesterday's line";
  host.Run(true);
  EXPECT_FALSE(host.report.done);
  EXPECT_TRUE(host.services.files.contents.empty());
  EXPECT_TRUE(host.application.mail.sent.empty());
}

TEST(DailySalesExport, SendsToTheRecipientOrAsksForOne) {
  SalesHost host;
  host.settings.SetInteger(Setting::EnviarEmail, 1);
  EXPECT_TRUE(host.Run(false).sent);
  host.settings.SetText(Setting::EnviarDireccionEmail, "");
  EXPECT_TRUE(host.Run(true).sent);
  const std::vector<std::string> expected = {"/out/240131.txt -> reportes@example.com", "/out/240131.txt -> ?"};
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
    EXPECT_TRUE(host.Run(true).written);
    EXPECT_FALSE(host.report.done);
    EXPECT_EQ(host.report.text.find("\r\n" + text), 0U) << host.report.text;
    EXPECT_TRUE(host.report.text.ends_with("\r\n550 no"));
  }
}

}  // namespace
}  // namespace tolvan
