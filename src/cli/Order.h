// One order of the command: its definition, and the work on the services that a call gives it.
#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cli/CommandFailure.h"
#include "cli/OrderDefinition.h"
#include "cli/TerminalColumns.h"

namespace tolvan {

class Clock;
class CommandHost;
class Interruption;

/// What one call of an order works with.
class OrderCall {
 public:
  virtual ~OrderCall() = default;

  virtual const ParsedOrder& Given() const = 0;
  virtual bool WantsJson() const = 0;

  /// Whether progress may be drawn: standard error is a terminal and nobody asked for silence or plain output.
  virtual bool ShowsProgress() const = 0;

  /// Standard output; nothing goes there but the result. With --json use PrintJson only.
  virtual std::ostream& Out() = 0;
  virtual std::ostream& Messages() = 0;

  /// The terminal behind either.
  virtual const TerminalColumns& OutColumns() const = 0;
  virtual const TerminalColumns& MessagesColumns() const = 0;

  /// Prints the one JSON document of the call. After a failure that it tells too, Run still throws or returns its code.
  virtual void PrintJson(const std::string& document) = 0;

  virtual Clock& SystemClock() = 0;
  virtual Interruption& UserInterruption() = 0;

  /// The configured host with the component on it, opened at the first call. Throws CommandFailure Unreachable.
  virtual CommandHost& Host() = 0;

  /// The path of the configuration that Host() opens, and of the program that shows the windows; both absolute.
  virtual std::string HostPath() const = 0;
  virtual std::string WindowProgram() const = 0;

  /// Whether the call itself names the configuration; else it is the usual one, which may not be there yet.
  virtual bool HostIsNamed() const = 0;

  /// A host of the order's own making, from the configuration at `path`. Throws CommandFailure Unreachable.
  virtual std::unique_ptr<CommandHost> OpenHost(const std::string& path) = 0;
};

class Order {
 public:
  virtual ~Order() = default;

  virtual OrderDefinition Definition() const = 0;

  /// Does the work. Throws CommandFailure, or HostError, which ends with exit code 1.
  virtual ExitCode Run(OrderCall& call) const = 0;
};

/// All orders, in the order in which help lists them.
std::vector<std::unique_ptr<Order>> AllOrders();

/// Their definitions.
std::vector<OrderDefinition> AllDefinitions();

}  // namespace tolvan
