#include "cli/CommandCall.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <ostream>

#include "base/Text.h"
#include "cli/Program.h"
#include "store/ConfiguredHostFactory.h"

namespace tolvan {
namespace {

using nlohmann::ordered_json;

std::string AbsolutePath(const std::string& path) {
  if (path.empty()) return {};
  return std::filesystem::absolute(path).lexically_normal();
}

ordered_json JsonOf(const Result& result) {
  ordered_json object = ordered_json::object();
  for (const ResultField& field : result) {
    std::visit([&](const auto& value) { object[field.key] = value; }, field.value);
  }
  return object;
}

std::string Dump(const ordered_json& document) {
  return document.dump(2, ' ', false, ordered_json::error_handler_t::replace);
}

struct ValueText {
  std::string operator()(std::nullptr_t) const { return {}; }
  std::string operator()(bool value) const { return value ? "sí" : "no"; }
  std::string operator()(std::int64_t value) const { return std::to_string(value); }
  std::string operator()(const std::string& value) const { return value; }
  std::string operator()(const std::vector<std::string>& values) const { return std::to_string(values.size()); }
};

/// Runs what reaches for the host; its failure is that the host cannot be reached, unless the user did not want to wait
/// for it.
template <class Work>
auto Reaching(const Work& work) {
  try {
    return work();
  } catch (const HostError& error) {
    const bool stopped = error.Kind() == HostErrorKind::Interrupted;
    throw CommandFailure(stopped ? ExitCode::Failed : ExitCode::Unreachable, TextForPeople(error));
  }
}

/// Reads the configuration; where there is none, the failure names the next step.
HostConfiguration Configuration(const std::string& path) {
  try {
    return OpenHostConfiguration(path);
  } catch (const HostError& error) {
    const std::filesystem::path inFolder = std::filesystem::path(path) / "tolvan.ini";
    std::error_code ignored;
    std::string next;
    if (std::filesystem::exists(inFolder, ignored)) {
      next = "\r\nIndique el archivo de esa carpeta: --host " + inFolder.native();
    } else if (!std::filesystem::exists(path, ignored)) {
      next =
          "\r\nIndique la configuración de su tienda con --host RUTA o en la variable TOLVAN_HOST, o cree una tienda "
          "de demostración: tolvan-impexp demo CARPETA";
    }
    throw CommandFailure(ExitCode::Unreachable, TextForPeople(error) + next);
  }
}

}  // namespace

std::string JsonText(const Result& result) {
  return Dump(JsonOf(result));
}

CommandHost::CommandHost(const std::string& path, const HostFront& front)
    : factory_(Reaching([&] { return std::make_unique<ConfiguredHostFactory>(Configuration(path), front); })),
      component_(Reaching([&] { return std::make_unique<clsImpExp>(*factory_, OptionsWindow()); })) {
  Reaching([&] { component_->DefineSettings(); });
}

CommandHost::~CommandHost() = default;

DatabaseServices& CommandHost::RequireDatabase() const {
  return *Reaching([&] { return &Context().application.Database(); });
}

std::string CommandHost::Notice() const {
  const std::string ofConfiguration = factory_->Notice();
  const std::string ofSettings = Context().application.Settings().Notice();
  return ofConfiguration + (ofConfiguration.empty() || ofSettings.empty() ? "" : "\r\n") + ofSettings;
}

CommandCall::CommandCall(const ParsedCommandLine& line, const ProgramEnvironment& environment)
    : line_(line),
      environment_(environment),
      dialogs_(environment.input, environment.messages, environment.inputIsTerminal, line.global.Has("--si")) {}

std::string CommandCall::PathArgument() const {
  return Given().arguments.empty() ? std::string() : AbsolutePath(Given().arguments.front());
}

std::string CommandCall::PathOption(const std::string& name) const {
  return AbsolutePath(Given().Value(name));
}

std::optional<Date> CommandCall::GivenDate() const {
  if (!Given().Has("--fecha")) return std::nullopt;
  const std::string text = Given().Value("--fecha");
  const auto date = Date::Parse(text);
  if (!date) throw CommandFailure(ExitCode::Usage, "La fecha \"" + text + "\" no es AAAA-MM-DD");
  return date;
}

bool CommandCall::ShowsProgress() const {
  return environment_.messagesAreTerminal && !line_.global.Has("--silencio") && !WantsJson();
}

std::ostream& CommandCall::Out() {
  return environment_.output;
}

void CommandCall::Print(const Result& result) {
  if (WantsJson()) return PrintJson(result);
  std::size_t width = 0;
  for (const ResultField& field : result) width = std::max(width, CountColumns(field.label));
  for (const auto& [key, value, label] : result) {
    if (label.empty()) continue;
    Out() << label << ": " << std::string(width - CountColumns(label), ' ') << std::visit(ValueText(), value) << '\n';
  }
}

void CommandCall::PrintJson(const std::vector<Result>& array) {
  ordered_json document = ordered_json::array();
  for (const Result& object : array) document.push_back(JsonOf(object));
  PrintJsonText(Dump(document));
}

void CommandCall::PrintJsonText(std::string_view document) {
  Out() << document << '\n';
  jsonPrinted_ = true;
}

void CommandCall::PrintMessage(std::string_view text) {
  Messages() << ForTerminal(text) << '\n';
}

std::ostream& CommandCall::Messages() {
  return environment_.messages;
}

const TerminalColumns& CommandCall::OutColumns() const {
  return environment_.outputColumns;
}

const TerminalColumns& CommandCall::MessagesColumns() const {
  return environment_.messagesColumns;
}

Clock& CommandCall::SystemClock() {
  return environment_.clock;
}

Interruption& CommandCall::UserInterruption() {
  return environment_.interruption;
}

CommandHost& CommandCall::Host() {
  if (!host_) host_ = OpenHost(HostPath());
  return *host_;
}

std::unique_ptr<CommandHost> CommandCall::OpenHost(const std::string& path) {
  auto host = std::make_unique<CommandHost>(path, HostFront{.dialogs = dialogs_,
                                                            .clock = environment_.clock,
                                                            .interruption = environment_.interruption,
                                                            .userPresent = dialogs_.UserPresent()});
  const std::string notice = host->Notice();
  if (!notice.empty()) PrintMessage(notice);
  return host;
}

std::string CommandCall::HostPath() const {
  const std::string path = line_.global.Value("--host", environment_.defaultHost);
  return path.empty() ? path : std::filesystem::absolute(path).native();
}

std::string CommandCall::WindowProgram() const {
  return environment_.windowProgram;
}

}  // namespace tolvan
