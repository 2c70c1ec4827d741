#pragma once

#include <string>

#include "store/HostConfiguration.h"

namespace tolvan {

/// The text of a configuration file that names every key, each with its explanation as a comment. Read again it gives
/// the same configuration. Throws HostError InvalidValue for a value that no file can give: one that a comment would
/// cut short, one with blanks at its ends, or one with a control character.
std::string WriteHostConfiguration(const HostConfiguration& configuration);

}  // namespace tolvan
