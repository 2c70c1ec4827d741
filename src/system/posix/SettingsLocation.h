// Where the settings and the window layouts of a host configuration are kept. Every configuration has its own files,
// because their names are made of the configuration's path, in which "/" becomes "+" and everything but ASCII letters,
// digits, "-", "_" and points is written "%" with two hexadecimal digits; so is a point at the beginning, which would
// hide the file. A name that would be too long keeps its end, behind a hash of the whole.
#pragma once

#include <string>
#include <string_view>

namespace tolvan {

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
