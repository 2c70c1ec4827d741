// Lists, reads and writes the settings of the section.
#include <algorithm>
#include <optional>
#include <ostream>

#include "base/Text.h"
#include "cli/CommandCall.h"
#include "cli/commands/AllCommands.h"
#include "export/DailySalesExport.h"
#include "services/ComponentContext.h"

namespace tolvan {
namespace {

/// One word of the command line: a setting to read, or to write when there is a value.
struct Wish {
  SettingDefinition setting;
  std::optional<std::string> value;
};

/// Each followed by `end`.
std::vector<std::string> KeysOf(const std::vector<SettingDefinition>& definitions, const char* end) {
  std::vector<std::string> keys;
  keys.reserve(definitions.size());
  for (const SettingDefinition& definition : definitions) keys.push_back(std::string(definition.key) + end);
  return keys;
}

SettingDefinition Find(const std::vector<SettingDefinition>& definitions, std::string_view keyOrIndex) {
  const auto index = ParseInteger(keyOrIndex);
  const auto found = std::ranges::find_if(definitions, [&](const SettingDefinition& definition) {
    return index ? static_cast<std::int32_t>(definition.index) == *index
                 : EqualIgnoringCase(definition.key, keyOrIndex);
  });
  if (found == definitions.end()) {
    throw CommandFailure(ExitCode::Usage, "No existe la opción \"" + std::string(keyOrIndex) + '"' +
                                              DidYouMean(keyOrIndex, KeysOf(definitions, "")));
  }
  return *found;
}

std::vector<Wish> Wishes(const std::vector<std::string>& words, const std::vector<SettingDefinition>& definitions) {
  std::vector<Wish> wishes;
  for (const std::string& word : words) {
    const std::size_t equals = word.find('=');
    Wish wish{.setting = Find(definitions, word.substr(0, equals)), .value = {}};
    if (equals != std::string::npos) wish.value = word.substr(equals + 1);
    wishes.push_back(std::move(wish));
  }
  if (!wishes.empty()) return wishes;
  for (const SettingDefinition& definition : definitions) wishes.push_back({.setting = definition, .value = {}});
  return wishes;
}

void Write(CommandHost& host, const std::vector<Wish>& wishes) {
  bool changed = false;
  for (const Wish& wish : wishes) {
    if (!wish.value) continue;
    if (!IsValidUtf8(*wish.value)) {
      throw CommandFailure(ExitCode::Usage, "El valor de " + std::string(wish.setting.key) + " no es texto UTF-8");
    }
    const std::string objection =
        wish.setting.index == Setting::CodigoTienda ? StoreCodeObjection(*wish.value) : std::string();
    if (!objection.empty()) throw CommandFailure(ExitCode::Failed, "No se guardó nada: " + objection);
    try {
      host.Context().settings.SetText(wish.setting.index, *wish.value);
    } catch (const ApplicationError& error) {
      throw CommandFailure(ExitCode::Failed, std::string(error.what()) + ": " + std::string(wish.setting.key) +
                                                 " no admite \"" + *wish.value + "\"");
    }
    changed = true;
  }
  if (changed) host.Component().SaveSettings();
}

ExitCode RunOpciones(CommandCall& call) {
  CommandHost& host = call.Host();
  const auto definitions = ImpExpSettings::Definitions(call.SystemClock().Today(), {});
  const std::vector<Wish> wishes = Wishes(call.Given().arguments, definitions);
  Write(host, wishes);
  Result result;
  for (const Wish& wish : wishes) {
    const std::string value = host.Context().settings.Text(wish.setting.index);
    result.push_back({std::string(wish.setting.key), value});
    if (!call.WantsJson()) call.Out() << wish.setting.key << '=' << value << '\n';
  }
  if (call.WantsJson()) call.PrintJson(result);
  return ExitCode::Done;
}

}  // namespace

Command OpcionesCommand() {
  return {.name = "opciones",
          .summary = "Lista, lee o cambia las opciones guardadas",
          .arguments = {{.name = "CLAVE[=VALOR]",
                         .summary = "una opción por su clave o su número; con =VALOR la cambia",
                         .required = false,
                         .repeated = true,
                         .words = KeysOf(ImpExpSettings::Definitions({}, {}), "=")}},
          .notes = "Varios cambios de una misma llamada se guardan todos o ninguno.",
          .examples = {{"opciones", "todas, con sus valores"},
                       {"opciones MicrosExp_CodigoTienda=0002 MicrosExp_CarpetaDestino=Exportar", "cambia dos"}},
          .run = &RunOpciones};
}

}  // namespace tolvan
