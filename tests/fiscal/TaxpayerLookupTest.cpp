#include "fiscal/TaxpayerLookup.h"

#include <gtest/gtest.h>

#include <tuple>

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
const std::string start = "<form><input name=\"txtRncCed\"></form><td>101012341</td><td>";

TEST(TaxpayerLookup, TellsNamesFromAbsenceAndFromChangedPages) {
  const std::vector<std::tuple<const char*, std::string, LookupOutcome, std::string, bool>> cases = {
      {"a name", start + "  ACME, SRL </td><td>ACTIVO", LookupOutcome::Found, "ACME, SRL", true},
      {"entities and mark-up stay", start + "A &amp; B<br></td><td>", LookupOutcome::Found, "A &amp; B<br>", true},
      {"UTF-8 stays", start + "PEÑA</td><td>", LookupOutcome::Found, "PEÑA", true},
      {"Windows-1252 is converted", start + "MU\xD1OZ</td><td>", LookupOutcome::Found, "MUÑOZ", true},
      {"tabs are no blanks", start + "\tACME</td><td>", LookupOutcome::Found, "\tACME", true},
      {"the first row counts", start + "UNO</td><td></td>" + start + "DOS</td><td>", LookupOutcome::Found, "UNO", true},
      {"cut in the name", start + "ACME IMPORT", LookupOutcome::Found, "ACME IMPORT", false},
      {"cut in the end marker", start + "ACME</td><t", LookupOutcome::Found, "ACME</td><t", false},
      {"cut before the name", start.substr(0, start.size() - 3), LookupOutcome::UnknownPage, "", true},
      {"the form without a row", "<input name=\"txtRncCed\" value=\"101012341\">", LookupOutcome::NotListed, "", true},
      {"another row", "txtRncCed <td>101012342</td><td>OTRO</td><td>", LookupOutcome::NotListed, "", true},
      {"the row in new mark-up", "txtRncCed <td class=x>101012341</td><td>ACME</td>", LookupOutcome::UnknownPage, "",
       true},
      {"an empty name", start + "  </td><td>ACTIVO", LookupOutcome::UnknownPage, "", true},
      {"some other page", "<html>En mantenimiento</html>", LookupOutcome::UnknownPage, "", true},
      {"nothing", "", LookupOutcome::UnknownPage, "", true},
  };
  Answers client;
  const TaxpayerLookup lookup(client, {"dgii.test", "", ""});
  for (const auto& [what, page, outcome, name, complete] : cases) {
    client.response.body = page;
    const LookupResult result = lookup.Ask(code);
    SCOPED_TRACE(what);
    EXPECT_EQ(result.outcome, outcome);
    EXPECT_EQ(result.name, name);
    EXPECT_EQ(result.complete, complete);
    EXPECT_EQ(TextForPeople(result).empty(), outcome == LookupOutcome::Found && complete);
  }
}

TEST(clsInfoFiscalClienteDO, LooksUpOnlyWhatIsValidAndKeepsTheLastAnswerOtherwise) {
  Answers client;
  const TaxpayerLookup lookup(client, {"dgii.test", "", ""});
  clsInfoFiscalClienteDO identity(&lookup);
  std::string typed = code;
  identity.ReconocerRif(typed);
  client.response.body = start + "ACME</td><td>";
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
