// How a path that the component or a setting holds becomes a path of this system, and where the settings are.
//
// A path that begins with "/" is taken as it stands: a backslash is an ordinary character of a name there. Any other
// path is meant from the application folder, and in it both "\" and "/" separate, because the component composes names
// such as "PlantillasImpresion\Excel\Formato.XLT" itself. A path that begins with a drive letter ("C:\") or with "\\"
// belongs to Windows: it is never taken for a relative one, so nothing is ever made under such a name.
#pragma once

#include <string>
#include <string_view>

namespace tolvan {

bool IsWindowsPath(std::string_view path);

/// Without empty and "." parts and without a separator at the end; ".." stays, because a symbolic link may stand before
/// it. The root folder is "/".
std::string Collapsed(std::string_view absolutePath);

/// The absolute path, collapsed. `base` is absolute. Throws HostError Unreachable for a Windows path, InvalidValue for
/// a path with a NUL.
std::string ResolvePath(std::string_view path, std::string_view base);

/// The folder part of an absolute path, "/" for a file in the root folder.
std::string FolderOf(std::string_view absolutePath);

/// What follows the folder: "" for the root folder.
std::string_view NameOf(std::string_view absolutePath);

/// Whether both paths are there and lead to one file or folder, possibly by another spelling or a link. Throws
/// HostError when the system cannot tell, as on a failing device.
bool AreOneFile(const std::string& path, const std::string& other);

/// Whether the file's own mode lets every user of the machine read it.
bool IsReadableByEverybody(const std::string& path);

/// The user's home folder without a separator at the end; empty when there is none.
std::string HomeFolder();

/// The path with its symbolic links followed as far as it exists. Throws HostError when a part cannot be looked at.
std::string CanonicalPath(const std::string& absolutePath);

/// Where the settings and the window layouts of a host configuration are kept. Every configuration has its own files,
/// because their names are made of the configuration's path, in which "/" becomes "+" and everything but ASCII letters,
/// digits, "-", "_" and points is written "%" with two hexadecimal digits; so is a point at the beginning, which would
/// hide the file. A name that would be too long keeps its end, after a hash of the whole.
struct SettingsLocation {
  std::string settingsFile;  ///< absolute, ends in ".ajustes"
  std::string layoutFile;    ///< absolute, ends in ".ventanas"
};

/// `configurationFile` is absolute. With an empty `folder` the files lie in "tolvan" under the XDG configuration and
/// state folders and are named by the configuration's canonical path. Otherwise both lie in `folder` (absolute), named
/// by the configuration's path relative to it, so that a shop's folder can be moved with its settings. Throws HostError
/// Configuration when there is neither a folder nor a home.
SettingsLocation LocateSettings(const std::string& configurationFile, const std::string& folder);

}  // namespace tolvan
