// The program as a whole: where its files lie, the language it speaks, its icon, and the command beside it.
#pragma once

#include <filesystem>
#include <string>

namespace tolvan {

class DesktopWork;

/// The folder of the running program, where the programs that belong to it lie too.
std::filesystem::path ProgramFolder();

/// The folder for what does not depend on the machine, in an installation as in a build folder.
std::filesystem::path ShareFolder();

/// Makes the toolkit speak Spanish, with weeks from Monday, whatever the system's locale is and even where it has none
/// of Spanish. For before the toolkit starts. Numbers are written and read as before: the category of numbers stays
/// "C". Programs that are started from here are asked for Spanish too.
void SpeakSpanish();

/// Gives every window that is shown from now on, the toolkit's own too, the sign of the program.
void UseProgramIcon();

/// Makes a demo store in a folder by the command that lies beside this program, showing that it runs; the user can stop
/// it, and it has two minutes. A text for people when it failed, empty otherwise.
std::string MakeDemoByCommand(const std::string& folder, DesktopWork& work);

}  // namespace tolvan
