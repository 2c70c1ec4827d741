#include "export/SalesUpload.h"

#include <gmock/gmock.h>

#include <tuple>

#include "export/SalesProtocol.h"
#include "support/FakeHost.h"

namespace tolvan {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

HttpResponse Page(const std::string& body, const std::string& status = "200") {
  return {.succeeded = true, .statusText = status, .body = body, .failure = {}};
}

/// A store that sold the same on every day: 12 sales of 1234.565 in all, 34.565 off, 216.005 of taxes.
struct UploadHost : test::FakeHost {
  UploadHost() {
    application.http.response = Page("OK");
    settings.SetText(Setting::DireccionServidor, "ventas.test");
    application.fakeDatabase.names = {"SumaDeOperaciones", "SumaDeSubTotal", "SumaDeDescuentos", "SumaDeImpuestos"};
    totals = {{std::int64_t{12}, DecimalText{"1234.565"}, 34.565, DecimalText{"216.005"}}};
  }

  /// Uploads to a server that gives these answers, and "OK" to every further request.
  SalesUploadResult Upload(std::vector<HttpResponse> answers) {
    application.http.answers = std::move(answers);
    report = UploadSales(context);
    return report.DetailsAs<SalesUploadResult>();
  }

  std::string Reference() const {
    return settings.Text(Setting::OffsetAnno) + "-" + settings.Text(Setting::OffsetMes) + "-" +
           settings.Text(Setting::OffsetDia);
  }

  std::vector<HttpRequest>& Requests() { return application.http.requests; }

  std::vector<std::vector<FieldValue>>& totals = application.fakeDatabase.rows;
  ActionReport report;
};

TEST(SalesUpload, SendsTheDaysListedInTheirOrderAndMovesTheReferenceDate) {
  UploadHost host;
  const SalesUploadResult sent = host.Upload({Page("x 20240201 2024%30131")});
  EXPECT_TRUE(sent.complete);
  EXPECT_THAT(sent.days, ElementsAre(Date::FromParts(2024, 2, 1), Date::FromParts(2024, 1, 31)));
  std::vector<std::string> paths;
  for (const HttpRequest& request : host.Requests()) {
    paths.push_back(request.pathAndQuery);
    EXPECT_EQ(request.host, "ventas.test");
    EXPECT_EQ(request.port, 80);
    EXPECT_GT(request.connectTimeout.count(), 0);
    EXPECT_LE(request.totalTimeout, std::chrono::seconds(30));
  }
  EXPECT_THAT(
      paths, ElementsAre("registrarventas.asp?1%201%200001%201%201%202006",
                         "registrarventas.asp?0%201%200001%201%202%202024%2012%201234.57%2034.57%20216.01%201416.01",
                         "registrarventas.asp?0%201%200001%2031%201%202024%2012%201234.57%2034.57%20216.01%201416.01"));
  EXPECT_EQ(host.Reference(), "2024-1-31") << "the last day sent, though it is not the latest";
  const SqlStatement& statement = host.application.fakeDatabase.statements.back();
  EXPECT_EQ(statement.ParameterText(),
            "SELECT Count(Ventas.idVenta) as SumaDeOperaciones, Sum(Ventas.SubTotal) AS SumaDeSubTotal, "
            "Sum(Ventas.Descuentos + Ventas.OtroDescuento) AS SumaDeDescuentos, Sum(Ventas.Impuestos) AS "
            "SumaDeImpuestos FROM Ventas WHERE Ventas.Anulado<>? AND Ventas.VentaRealizada=? AND Ventas.idCompania = ? "
            "AND Ventas.FechaValidacion >= ? AND Ventas.FechaValidacion < ?");
  EXPECT_THAT(std::vector<SqlLiteral>(statement.Literals().begin(), statement.Literals().end()),
              ElementsAre(true, true, std::int64_t{1}, DateTime{.date = Date::FromParts(2024, 1, 31)},
                          DateTime{.date = Date::FromParts(2024, 2, 1)}));
}

TEST(SalesUpload, EncodesEveryFieldAndThenTheWhole) {
  const std::vector<std::pair<std::vector<std::string>, const char*>> cases = {
      {{"1", "A b", "ñ%"}, "1%20A%2520b%20%25C3%25B1%2525"},
      {{"", "x", ""}, "x"},
      {{"a", "", "~-._"}, "a%20%20~-._"},
      {{" ", "+/\t"}, "%2520%20%252B%252F%2509"},
  };
  for (const auto& [fields, encoded] : cases) EXPECT_EQ(EncodeFields(fields), encoded);
  EXPECT_THAT(DecodeAnswer("a%20b  %C3%B1%zz%4 "), ElementsAre("a b", "", "ñ%zz%4", ""));
  EXPECT_THAT(DecodeAnswer(""), IsEmpty());
}

TEST(SalesUpload, WritesAmountsWithTwoDecimalsAndWithoutTheSeparator) {
  UploadHost host;
  host.totals = {{std::int64_t{0}, {}, {}, {}}};
  host.application.storeId = "Peñón 2";
  host.Upload({Page("1 20240131")});
  EXPECT_EQ(
      host.Requests()[1].pathAndQuery,
      "registrarventas.asp?0%201%20Pe%25C3%25B1%25C3%25B3n%25202%2031%201%202024%200%200.00%200.00%200.00%200.00");
  for (const auto& [separator, text] :
       {std::pair{",", "-1234.50"}, {".", "-123450"}, {"", "-1234.50"}, {"34", "-12.50"}}) {
    EXPECT_EQ(FormatAmount(Currency::FromTenThousandths(-12'345'000), separator), text);
  }
}

TEST(SalesUpload, StopsAtTheFirstFailureAndSaysWhy) {
  const HttpResponse cut{.succeeded = false, .statusText = "200", .body = "OK", .failure = "llegó incompleta"};
  const std::vector<std::tuple<std::vector<HttpResponse>, std::size_t, std::size_t, const char*>> cases = {
      {{Page("")}, 1, 0, "sin contenido"},
      {{Page("1")}, 1, 0, ""},
      {{Page("Error")}, 1, 0, "no pidió ningún día: respondió «Error»"},
      {{Page("<html></html>")}, 1, 0, "respondió «<html></html>»"},
      {{cut}, 1, 0, "ventas.test no respondió: llegó incompleta"},
      {{Page("1 20240131 20240201"), Page("OK", "201")}, 2, 0, "estado 201"},
      {{Page("1 20240131 20240201"), Page("OK"), cut}, 3, 1, "llegó incompleta"},
      {{Page("1 20240131 20240201"), Page("ok")}, 2, 0, "no aceptó el día 2024-01-31: respondió «ok»"},
      {{Page("1 20240131 20240201"), Page("OK\r\n")}, 2, 0, "respondió «OK  »"},
      {{Page("1 20240131"), Page("")}, 2, 0, "respondió nada"},
      {{Page("1 20240131"), Page("OK gracias")}, 2, 1, ""},
      {{Page("1 20240131 20240230 20240201")}, 2, 1, "«20240230», que no es un día"},
      {{Page("1 20240131 2024021")}, 2, 1, "«2024021», que no es un día"},
      {{Page("1 20240131 ")}, 2, 1, "«», que no es un día"},
  };
  for (const auto& [answers, requests, days, text] : cases) {
    UploadHost host;
    const SalesUploadResult result = host.Upload(answers);
    EXPECT_THAT(result.failure, HasSubstr(text));
    EXPECT_EQ(result.complete, result.failure.empty());
    EXPECT_EQ(host.report.done, result.complete && days > 0) << "with no day pending it is complete, yet not done";
    EXPECT_THAT(host.report.text, HasSubstr(result.NothingPending() ? std::string(noDayPending) : result.failure));
    EXPECT_EQ(host.Requests().size(), requests) << result.failure;
    EXPECT_EQ(result.days.size(), days) << result.failure;
    EXPECT_EQ(host.Reference(), days == 0 ? "2006-1-1" : "2024-1-31") << result.failure;
  }
}

TEST(SalesUpload, SettingsThatNameNoServerOrNoDateSendNothingAndStay) {
  const std::vector<std::tuple<Setting, const char*, bool, const char*>> cases = {
      {Setting::DireccionServidor, "", false, "No está configurada"},
      {Setting::DireccionServidor, "http://ventas", true, "no se entiende"},
      {Setting::OffsetAnno, "0", true, "la fecha de referencia guardada no es una fecha"},
  };
  for (const auto& [setting, value, ready, text] : cases) {
    UploadHost host;
    host.settings.SetText(setting, value);
    const auto before = host.application.settings.values;
    EXPECT_EQ(clsIE_SVentas(host.context).Listo(), ready);
    EXPECT_THAT(host.Upload({Page("1 20240131")}).failure, HasSubstr(text));
    EXPECT_THAT(host.Requests(), IsEmpty());
    EXPECT_EQ(host.application.settings.values, before);
  }
  UploadHost host;
  host.settings.SetText(Setting::DireccionServidor, "ventas.test:8080");
  host.settings.SetInteger(Setting::OffsetMes, 13);
  host.settings.SetInteger(Setting::OffsetDia, 0);
  host.Upload({Page("1")});
  EXPECT_EQ(host.Requests()[0].pathAndQuery, "registrarventas.asp?1%201%200001%2031%2012%202006");
  EXPECT_EQ(host.Requests()[0].port, 8080);
  EXPECT_EQ(host.Reference(), "2006-12-31") << "written back carried";
}

TEST(SalesUpload, KeepsHowFarItCameAlsoWhenItStopsEarly) {
  constexpr auto unsaved = "Error al intentar guardar opciones del sistema";
  const std::vector<std::tuple<std::function<void(UploadHost&)>, std::size_t, int, const char*>> cases = {
      {[](UploadHost&) {}, 2, 1, ""},
      {[](UploadHost& it) { it.application.databaseFailure = HostError(HostErrorKind::Timeout, ""); }, 0, 1, "tiempo"},
      {[](UploadHost& it) { it.totals[0][1] = std::string("x"); }, 0, 1, "no es un importe: x"},
      {[](UploadHost& it) { it.totals[0][1] = 922'337'203'685'477.0; }, 0, 1, "no cabe"},
      {[](UploadHost& it) { it.services.interruption.requested = true; }, 0, 1, "interrumpi"},
      {[](UploadHost& it) { it.application.settings.saveFailure = HostError(HostErrorKind::Full, ""); }, 2, 0, unsaved},
      {[](UploadHost& it) { it.application.settings.refuses = true; }, 2, 0, unsaved},
  };
  for (const auto& [arrange, days, saves, text] : cases) {
    UploadHost host;
    arrange(host);
    const SalesUploadResult result = host.Upload({Page("1 20240131 20240201")});
    EXPECT_EQ(result.days.size(), days) << text;
    EXPECT_EQ(host.application.settings.saves, saves) << text;
    EXPECT_THAT(host.report.text, HasSubstr(text));
    EXPECT_EQ(result.complete, host.report.text.empty());
    EXPECT_EQ(host.report.done, result.complete) << text;
  }
}

}  // namespace
}  // namespace tolvan
