#include "fiscal/TaxpayerLookup.h"

#include <gtest/gtest.h>

#include "fiscal/clsInfoFiscalClienteDO.h"
#include "host/HostError.h"
#include "support/FakeHost.h"

namespace tolvan {
namespace {

struct Answers : test::FakeHttp {
  Answers() { response = {.succeeded = true, .statusText = "200", .body = {}, .failure = {}}; }
  HttpResponse Get(const HttpRequest& request) override {
    if (interrupted) throw HostError(HostErrorKind::Interrupted, "");
    return FakeHttp::Get(request);
  }
  bool interrupted = false;
};

constexpr const char* code = "101012341";
constexpr const char* row = "<form><input name=\"txtRncCed\"></form><td>101012341</td><td>";

TEST(TaxpayerLookup, TellsNamesFromAbsenceAndFromChangedPages) {
  struct Case {
    const char* what;
    std::string page;
    LookupOutcome outcome;
    std::string name;
    bool complete = true;
  };
  const std::string start = row;
  const Case cases[] = {
      {"a name", start + "  ACME, SRL </td><td>ACTIVO", LookupOutcome::Found, "ACME, SRL"},
      {"entities and mark-up stay", start + "A &amp; B<br></td><td>", LookupOutcome::Found, "A &amp; B<br>"},
      {"UTF-8 stays", start + "PEÑA</td><td>", LookupOutcome::Found, "PEÑA"},
      {"Windows-1252 is converted",
       start + "PE\xD1"
               "A</td><td>",
       LookupOutcome::Found, "PEÑA"},
      {"tabs are no blanks", start + "\tACME</td><td>", LookupOutcome::Found, "\tACME"},
      {"the first row counts", start + "UNO</td><td></td>" + start + "DOS</td><td>", LookupOutcome::Found, "UNO"},
      {"cut in the name", start + "ACME IMPORT", LookupOutcome::Found, "ACME IMPORT", false},
      {"cut in the end marker", start + "ACME</td><t", LookupOutcome::Found, "ACME</td><t", false},
      {"cut before the name", start.substr(0, start.size() - 3), LookupOutcome::UnknownPage, ""},
      {"the form without a row", "<input name=\"txtRncCed\" value=\"101012341\">", LookupOutcome::NotListed, ""},
      {"another row", "txtRncCed <td>101012342</td><td>OTRO</td><td>", LookupOutcome::NotListed, ""},
      {"the row in new mark-up", "txtRncCed <td class=x>101012341</td><td>ACME</td>", LookupOutcome::UnknownPage, ""},
      {"an empty name", start + "  </td><td>ACTIVO", LookupOutcome::UnknownPage, ""},
      {"some other page", "<html>En mantenimiento</html>", LookupOutcome::UnknownPage, ""},
      {"nothing", "", LookupOutcome::UnknownPage, ""},
  };
  Answers client;
  const TaxpayerLookup lookup(client, {"dgii.test:8080", "VS+/=", "EV+/="});
  for (const Case& one : cases) {
    client.response.body = one.page;
    const LookupResult result = lookup.Ask(code);
    SCOPED_TRACE(one.what);
    EXPECT_EQ(result.outcome, one.outcome);
    EXPECT_EQ(result.name, one.name);
    EXPECT_EQ(result.complete, one.complete);
    EXPECT_EQ(TextForPeople(result).empty(), one.outcome == LookupOutcome::Found && one.complete);
  }
  EXPECT_EQ(client.requests.back().host, "dgii.test");
  EXPECT_EQ(client.requests.back().port, 8080);
  EXPECT_EQ(client.requests.back().pathAndQuery,
            "app/WebApps/Consultas/rnc/RncWeb.aspx?__VIEWSTATE=VS+/=&__EVENTVALIDATION=EV+/="
            "&rbtnlTipoBusqueda=0&btnBuscaRncCed=Buscar&txtRncCed=101012341");
}

TEST(TaxpayerLookup, ReportsRefusals) {
  Answers client;
  const TaxpayerLookup lookup(client, {"dgii.test", "", ""});
  client.response.statusText = "302";
  client.response.body = std::string(row) + "ACME</td><td>";
  EXPECT_EQ(lookup.Ask(code).outcome, LookupOutcome::OtherStatus);
  client.response = {.succeeded = false, .statusText = {}, .body = {}, .failure = "tiempo agotado"};
  EXPECT_EQ(TextForPeople(lookup.Ask(code)), "La DGII no respondió: tiempo agotado");
  for (const char* server : {"", "http://dgii.test"}) {
    EXPECT_EQ(TaxpayerLookup(client, {server, "", ""}).Ask(code).outcome, LookupOutcome::NotConfigured);
  }
  EXPECT_EQ(client.requests.size(), 2U);
}

TEST(clsInfoFiscalClienteDO, LooksUpOnlyWhatIsValidAndKeepsTheLastAnswerOtherwise) {
  Answers client;
  const TaxpayerLookup lookup(client, {"dgii.test", "", ""});
  clsInfoFiscalClienteDO identity(&lookup);
  std::string typed = code;
  identity.ReconocerRif(typed);
  client.response.body = std::string(row) + "ACME</td><td>";
  EXPECT_TRUE(identity.ObtenerInfoInternet());
  EXPECT_EQ(identity.NombreRazonSocialObtenidoInternet(), "ACME");

  std::string invalid = "101012348";
  identity.ReconocerRif(invalid);
  EXPECT_FALSE(identity.ObtenerInfoInternet());
  EXPECT_EQ(identity.NombreRazonSocialObtenidoInternet(), "ACME") << "an invalid identifier asks and clears nothing";
  EXPECT_EQ(client.requests.size(), 1U);

  identity.ReconocerRif(typed);
  client.interrupted = true;
  EXPECT_THROW(identity.ObtenerInfoInternet(), HostError);
  EXPECT_EQ(identity.NombreRazonSocialObtenidoInternet(), "");
  EXPECT_FALSE(clsInfoFiscalClienteDO().ObtenerInfoInternet());
}

}  // namespace
}  // namespace tolvan
