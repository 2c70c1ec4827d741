// What the program says of itself: its help, its manual page and its completion in bash, all made from the definitions
// of the commands.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "cli/Command.h"

namespace tolvan {

inline constexpr std::string_view programName = "tolvan-impexp";

/// The command that shows help; "--ayuda" after another command is this one with that name.
inline constexpr const char* helpCommandName = "ayuda";

/// "tolvan-impexp 1.2.3".
std::string VersionText();

/// Spanish help, wrapped to `columns`: of the program, and of one command.
std::string HelpOfAll(std::span<const Command> commands, std::size_t columns);
std::string HelpOf(const Command& command, std::size_t columns);

/// The manual page for section 1 in roff, Spanish.
std::string ManualPage(std::span<const Command> commands);

/// A script for bash to read. A word is completed by what the command takes in its place: options after a dash,
/// choices, file names, the names of commands. An argument that ends in "=" waits for its value.
std::string BashCompletion(std::span<const Command> commands);

}  // namespace tolvan
