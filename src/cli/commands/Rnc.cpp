// Recognises tax identifiers and, when asked to, looks their names up.
#include <optional>
#include <ostream>

#include "cli/CommandCall.h"
#include "cli/commands/AllCommands.h"
#include "fiscal/clsInfoFiscalClienteDO.h"

namespace tolvan {
namespace {

/// Whether the authority gave an answer, whatever it was.
bool IsAnswer(LookupOutcome outcome) {
  return outcome == LookupOutcome::Found || outcome == LookupOutcome::NotListed || outcome == LookupOutcome::NotAsked;
}

Result Describe(const std::string& typed, const clsInfoFiscalClienteDO& identity) {
  return {{"entrada", typed},
          {"codigo", identity.ValorCodigo()},
          {"es_rnc", identity.EsRIF()},
          {"es_cedula", identity.EsCedula()},
          {"es_valido", identity.EsValido()},
          {"codigo_valido", identity.EsCodigoValido()},
          {"personeria", identity.Personeria()},
          {"nombre", identity.NombreRazonSocialObtenidoInternet()}};
}

std::string Sentence(const std::string& typed, const clsInfoFiscalClienteDO& identity) {
  if (!identity.EsValido()) return typed + ": no es un RNC ni una cédula válidos";
  std::string text = typed + ": " + (identity.EsRIF() ? "RNC " : "cédula ") + identity.ValorCodigo() + ", ";
  text += identity.Personeria() == 1 ? identity.TituloPersonaJuridica() : identity.TituloPersonaNatural();
  if (!identity.EsCodigoValido()) text += ", escrito con caracteres de más";
  const std::string name = identity.NombreRazonSocialObtenidoInternet();
  return name.empty() ? text : text + ", " + name;
}

/// Reports how a lookup ended, apart from the name. True when the authority could be asked.
bool ReportLookup(CommandCall& call, const std::string& typed, const LookupResult& result) {
  const std::string text = result.outcome == LookupOutcome::NotAsked ? std::string() : TextForPeople(result);
  if (!text.empty()) call.PrintMessage(typed + ": " + text);
  return IsAnswer(result.outcome);
}

ExitCode RunRnc(CommandCall& call) {
  std::optional<TaxpayerLookup> lookup;
  if (call.Given().Has("--consultar")) {
    HostApplication& application = call.Host().Context().application;
    lookup.emplace(application.Http(), LookupSettingsOf(application));
  }
  std::vector<Result> results;
  bool asked = true;
  for (const std::string& typed : call.Given().arguments) {
    clsInfoFiscalClienteDO identity(lookup ? &*lookup : nullptr);
    std::string identifier = typed;
    identity.ReconocerRif(identifier);
    if (lookup) identity.ObtenerInfoInternet();
    results.push_back(Describe(typed, identity));
    if (!call.WantsJson()) call.Out() << Sentence(typed, identity) << '\n';
    if (ReportLookup(call, typed, identity.LastLookup())) continue;
    asked = false;
    results.back().push_back({"error", TextForPeople(identity.LastLookup())});
  }
  if (call.WantsJson()) call.PrintJson(results);
  return asked ? ExitCode::Done : ExitCode::Failed;
}

}  // namespace

Command RncCommand() {
  return {.name = "rnc",
          .summary = "Reconoce números de RNC y de cédula",
          .arguments = {{.name = "IDENTIFICADOR", .summary = "el número, con guiones o sin ellos", .repeated = true}},
          .options = {{.name = "--consultar", .summary = "busca además el nombre en la página de la DGII"}},
          .notes =
              "Un número que no es válido es un resultado, no un fallo. La consulta usa la sección [dgii] de la "
              "configuración.",
          .examples = {{"rnc 1-01-00157-7 40212345678", "dice qué es cada número y si es válido"}},
          .run = &RunRnc};
}

}  // namespace tolvan
