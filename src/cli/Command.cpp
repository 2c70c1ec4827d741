#include "cli/Command.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <ostream>

#include "cli/CommandHost.h"
#include "cli/CommandLine.h"
#include "cli/ConsoleDialogs.h"
#include "cli/HelpText.h"
#include "cli/Order.h"
#include "cli/OrderAyuda.h"
#include "host/HostError.h"

namespace tolvan {
namespace {

/// A document of one text.
std::string JsonOf(const char* key, const std::string& text) {
  return nlohmann::ordered_json{{key, text}}.dump(2, ' ', false, nlohmann::json::error_handler_t::replace);
}

class Call : public OrderCall {
 public:
  Call(const ParsedCommand& command, const CommandEnvironment& environment)
      : command_(&command),
        environment_(&environment),
        dialogs_(environment.input, environment.messages, environment.inputIsTerminal, command.global.Has("--si")) {}

  const ParsedOrder& Given() const override { return command_->given; }
  bool WantsJson() const override { return command_->global.Has("--json"); }
  bool ShowsProgress() const override {
    return environment_->messagesAreTerminal && !command_->global.Has("--silencio") && !WantsJson();
  }
  std::ostream& Out() override { return environment_->output; }
  std::ostream& Messages() override { return environment_->messages; }
  const TerminalColumns& OutColumns() const override { return environment_->outputColumns; }
  const TerminalColumns& MessagesColumns() const override { return environment_->messagesColumns; }
  void PrintJson(const std::string& document) override {
    environment_->output << document << '\n';
    jsonPrinted_ = true;
  }
  bool JsonPrinted() const { return jsonPrinted_; }
  Clock& SystemClock() override { return environment_->clock; }
  Interruption& UserInterruption() override { return environment_->interruption; }

  CommandHost& Host() override {
    if (!host_) host_ = OpenHost(HostPath());
    return *host_;
  }

  std::string HostPath() const override {
    const std::string path = command_->global.Value("--host", environment_->defaultHost);
    return path.empty() ? path : std::filesystem::absolute(path).native();
  }
  bool HostIsNamed() const override { return command_->global.Has("--host"); }
  std::string WindowProgram() const override { return environment_->windowProgram; }

  std::unique_ptr<CommandHost> OpenHost(const std::string& path) override {
    auto host = std::make_unique<CommandHost>(path, HostFront{.dialogs = dialogs_,
                                                              .clock = environment_->clock,
                                                              .interruption = environment_->interruption,
                                                              .userPresent = dialogs_.UserPresent()});
    const std::string notice = host->Notice();
    if (!notice.empty()) environment_->messages << ForTerminal(notice) << '\n';
    return host;
  }

 private:
  const ParsedCommand* command_;
  const CommandEnvironment* environment_;
  ConsoleDialogs dialogs_;
  std::unique_ptr<CommandHost> host_;
  bool jsonPrinted_ = false;
};

ExitCode Fail(Call& call, ExitCode code, const std::string& componentText) {
  const std::string text = ForTerminal(componentText);
  call.Messages() << text << '\n';
  if (call.WantsJson() && !call.JsonPrinted()) {
    call.PrintJson(JsonOf("error", text));
  }
  return code;
}

ExitCode RunOrder(const Order& order, Call& call) {
  try {
    return order.Run(call);
  } catch (const CommandFailure& failure) {
    return Fail(call, failure.Code(), failure.what());
  } catch (const HostError& error) {
    return Fail(call, ExitCode::Failed, TextForPeople(error));
  } catch (const std::exception& error) {
    return Fail(call, ExitCode::Failed, std::string("Error inesperado: ") + error.what());
  }
}

/// "X --ayuda" is "ayuda X".
void TurnIntoHelp(ParsedCommand& command) {
  command.given = {};
  if (!command.order.empty()) command.given.arguments = {command.order};
  command.order = OrderAyuda::name;
}

ExitCode UsageFailure(const std::vector<std::string>& arguments, const CommandEnvironment& environment,
                      const std::string& text) {
  environment.messages << text << "\nLa ayuda: " << programName << " --ayuda\n";
  if (std::ranges::find(arguments, "--json") != arguments.end()) {
    environment.output << JsonOf("error", text) << '\n';
  }
  return ExitCode::Usage;
}

ExitCode Run(const std::vector<std::string>& arguments, const CommandEnvironment& environment) {
  const std::vector<OrderDefinition> definitions = AllDefinitions();
  ParsedCommand command;
  try {
    command = ParseCommandLine(arguments, definitions);
  } catch (const CommandFailure& failure) {
    return UsageFailure(arguments, environment, failure.what());
  }
  if (command.version) {
    const bool json = command.global.Has("--json");
    environment.output << (json ? JsonOf("version", VersionText()) : VersionText()) << '\n';
    return ExitCode::Done;
  }
  if (command.help) TurnIntoHelp(command);
  const auto chosen = std::ranges::find(definitions, command.order, &OrderDefinition::name) - definitions.begin();
  Call call(command, environment);
  return RunOrder(*AllOrders()[static_cast<std::size_t>(chosen)], call);
}

/// A result that did not reach whoever asked for it is a failure, whatever it told.
ExitCode AfterOutput(ExitCode code, const CommandEnvironment& environment) {
  if (environment.output.flush()) return code;
  const bool wasDone = code == ExitCode::Done || code == ExitCode::Rejected;
  environment.messages << (wasDone ? "La orden terminó, pero no" : "No")
                       << " se pudo escribir el resultado en la salida estándar\n";
  if (environment.outputFailure) environment.messages << environment.outputFailure() << '\n';
  return wasDone ? ExitCode::Failed : code;
}

}  // namespace

int RunCommand(const std::vector<std::string>& arguments, const CommandEnvironment& environment) {
  return static_cast<int>(AfterOutput(Run(arguments, environment), environment));
}

}  // namespace tolvan
