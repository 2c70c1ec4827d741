// The one translator of the operating system's error numbers.
#pragma once

#include <string>
#include <string_view>

#include "host/HostError.h"

namespace tolvan {

/// The failure of a system call. `errorNumber` is errno as it stood after the call, `path` what the call worked on.
/// ENOSPC, EDQUOT and EFBIG are Full; EACCES, EPERM and EROFS are Access; a path that leads nowhere is Unreachable; a
/// lock held by another program is Busy; a failing device is Failed.
HostError SystemFailure(int errorNumber, std::string_view path);

}  // namespace tolvan
