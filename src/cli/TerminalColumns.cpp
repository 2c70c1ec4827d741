#include "cli/TerminalColumns.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace tolvan {
namespace {

std::optional<std::size_t> Ask(int descriptor) {
  if (isatty(descriptor) == 0) return std::nullopt;
  winsize size{};
  if (ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return usualColumns;
  return size.ws_col;
}

}  // namespace

TerminalColumns ColumnsOfDescriptor(int descriptor) {
  return [descriptor] { return Ask(descriptor); };
}

std::size_t ColumnsForText(const TerminalColumns& terminal) {
  return terminal ? terminal().value_or(usualColumns) : usualColumns;
}

}  // namespace tolvan
