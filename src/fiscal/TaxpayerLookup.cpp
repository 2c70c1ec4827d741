#include "fiscal/TaxpayerLookup.h"

#include <optional>

#include "base/Addresses.h"
#include "base/Text.h"
#include "host/HostContext.h"

namespace tolvan {
namespace {

std::string RequestPath(const LookupSettings& settings, std::string_view code) {
  // Sent as they are: the page's form values are opaque, and the code holds digits only.
  return "app/WebApps/Consultas/rnc/RncWeb.aspx?__VIEWSTATE=" + settings.viewState +
         "&__EVENTVALIDATION=" + settings.eventValidation +
         "&rbtnlTipoBusqueda=0&btnBuscaRncCed=Buscar&txtRncCed=" + std::string(code);
}

LookupResult ReadAnswer(std::string_view body, std::string_view code) {
  PageReading reading = ReadTaxpayerPage(body, code);
  LookupResult result{.outcome = LookupOutcome::UnknownPage, .name = {}, .complete = reading.complete, .detail = {}};
  if (reading.kind == PageKind::NotListed) result.outcome = LookupOutcome::NotListed;
  if (reading.kind == PageKind::NameShown) {
    result.outcome = LookupOutcome::Found;
    result.name = std::move(reading.name);
  }
  return result;
}

constexpr std::string_view cellBorder = "</td><td>";
constexpr std::string_view searchBox = "txtRncCed";

bool Contains(std::string_view text, std::string_view what) {
  return text.find(what) != std::string_view::npos;
}

/// A page that shows the identifier in other mark-up than expected is not the one that was known.
PageKind KindWithoutRow(std::string_view page, std::string_view code) {
  const bool shownElsewhere = Contains(page, std::string(">").append(code).append("<"));
  return Contains(page, searchBox) && !shownElsewhere ? PageKind::NotListed : PageKind::Unknown;
}

}  // namespace

PageReading ReadTaxpayerPage(std::string_view page, std::string_view code) {
  const std::string rowStart = std::string("<td>").append(code).append(cellBorder);
  const std::size_t found = page.find(rowStart);
  if (found == std::string_view::npos) return {.kind = KindWithoutRow(page, code), .name = {}};
  const std::size_t start = found + rowStart.size();
  const std::size_t end = page.find(cellBorder, start);
  const bool complete = end != std::string_view::npos;
  const std::string_view name = TrimBlanks(page.substr(start, complete ? end - start : end));
  // A listed taxpayer has a name; an empty cell means that the columns have moved.
  if (name.empty()) return {.kind = PageKind::Unknown, .name = {}, .complete = complete};
  return {.kind = PageKind::NameShown,
          .name = IsValidUtf8(name) ? std::string(name) : FromWindows1252(name),
          .complete = complete};
}

LookupSettings LookupSettingsOf(const HostApplication& application) {
  return {.server = application.TaxpayerLookupHost(),
          .viewState = application.TaxpayerLookupViewState(),
          .eventValidation = application.TaxpayerLookupEventValidation()};
}

LookupResult TaxpayerLookup::Ask(std::string_view code) const {
  const std::optional<ServerAddress> server = ServerAddress::Parse(settings_.server);
  if (!server) {
    return {.outcome = LookupOutcome::NotConfigured, .name = {}, .complete = true, .detail = settings_.server};
  }
  HttpRequest request;
  request.host = server->host;
  request.port = server->port;
  request.pathAndQuery = RequestPath(settings_, code);
  const HttpResponse response = client_.Get(request);
  if (!response.succeeded) {
    return {.outcome = LookupOutcome::NoAnswer, .name = {}, .complete = false, .detail = response.failure};
  }
  if (response.statusText != "200") {
    return {.outcome = LookupOutcome::OtherStatus, .name = {}, .complete = true, .detail = response.statusText};
  }
  return ReadAnswer(response.body, code);
}

std::string TextForPeople(const LookupResult& result) {
  switch (result.outcome) {
    case LookupOutcome::NotAsked:
      return "No se ha consultado a la DGII.";
    case LookupOutcome::NotConfigured:
      if (result.detail.empty()) return "No está configurado el servidor de consulta de la DGII.";
      return "El servidor de consulta de la DGII no se entiende: " + result.detail;
    case LookupOutcome::NoAnswer:
      return "La DGII no respondió: " + result.detail;
    case LookupOutcome::OtherStatus:
      return "La DGII respondió con el estado " + result.detail +
             "; puede que los valores capturados de su página ya no sirvan.";
    case LookupOutcome::NotListed:
      return "La DGII no tiene inscrito ese número.";
    case LookupOutcome::UnknownPage:
      return "La página de la DGII ha cambiado: no se reconoce su contenido, y el nombre no se puede leer.";
    case LookupOutcome::Found:
      break;
  }
  if (!result.complete) return "La respuesta de la DGII llegó cortada; el nombre puede estar incompleto.";
  return {};
}

}  // namespace tolvan
