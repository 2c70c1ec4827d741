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
#include "host/HostError.h"

namespace tolvan {
namespace {

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
    const nlohmann::ordered_json document{{"error", text}};
    call.PrintJson(document.dump(2, ' ', false, nlohmann::json::error_handler_t::replace));
  }
  return code;
}

ExitCode RunOrder(const Order& order, Call& call) {
  try {
    const ExitCode code = order.Run(call);
    call.Out().flush();
    if (call.Out().good()) return code;
    return Fail(call, ExitCode::Failed, "No se pudo escribir el resultado en la salida estándar");
  } catch (const CommandFailure& failure) {
    return Fail(call, failure.Code(), failure.what());
  } catch (const HostError& error) {
    return Fail(call, ExitCode::Failed, TextForPeople(error));
  } catch (const std::exception& error) {
    return Fail(call, ExitCode::Failed, std::string("Error inesperado: ") + error.what());
  }
}

/// The definitions of all orders, in the order of `orders`.
std::vector<OrderDefinition> Definitions(const std::vector<std::unique_ptr<Order>>& orders) {
  std::vector<OrderDefinition> definitions;
  definitions.reserve(orders.size());
  for (const auto& order : orders) definitions.push_back(order->Definition());
  return definitions;
}

void PrintHelp(std::ostream& out, const ParsedCommand& command, const std::vector<OrderDefinition>& definitions) {
  if (command.version) {
    out << VersionText() << '\n';
  } else if (command.order.empty()) {
    out << CommandHelp(definitions);
  } else {
    out << OrderHelp(*std::ranges::find(definitions, command.order, &OrderDefinition::name));
  }
}

int UsageFailure(const std::vector<std::string>& arguments, const CommandEnvironment& environment,
                 const std::string& text) {
  environment.messages << text << "\nLa ayuda: " << programName << " --ayuda\n";
  if (std::ranges::find(arguments, "--json") != arguments.end()) {
    const nlohmann::ordered_json document{{"error", text}};
    environment.output << document.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
  }
  return static_cast<int>(ExitCode::Usage);
}

}  // namespace

int RunCommand(const std::vector<std::string>& arguments, const CommandEnvironment& environment) {
  const std::vector<std::unique_ptr<Order>> orders = AllOrders();
  const std::vector<OrderDefinition> definitions = Definitions(orders);
  ParsedCommand command;
  try {
    command = ParseCommandLine(arguments, definitions);
  } catch (const CommandFailure& failure) {
    return UsageFailure(arguments, environment, failure.what());
  }
  if (command.help || command.version) {
    PrintHelp(environment.output, command, definitions);
    return static_cast<int>(ExitCode::Done);
  }
  const auto chosen = std::ranges::find(definitions, command.order, &OrderDefinition::name) - definitions.begin();
  Call call(command, environment);
  return static_cast<int>(RunOrder(*orders[static_cast<std::size_t>(chosen)], call));
}

}  // namespace tolvan
