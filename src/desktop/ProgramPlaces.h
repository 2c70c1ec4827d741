#pragma once

#include <filesystem>

namespace tolvan {

/// The folder of the running program, where the programs that belong to it lie too.
std::filesystem::path ProgramFolder();

/// The folder for what does not depend on the machine, in an installation as in a build folder.
std::filesystem::path ShareFolder();

}  // namespace tolvan
