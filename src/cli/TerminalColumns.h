// The one place that knows how wide the terminal is.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>

namespace tolvan {

/// The columns of the terminal that shows a stream, asked anew at every call, so that a change is followed; nothing
/// where no terminal shows it. May be empty, which says the same.
using TerminalColumns = std::function<std::optional<std::size_t>()>;

/// What texts are made for where nobody knows better.
inline constexpr std::size_t usualColumns = 80;

/// Of the terminal that a file descriptor leads to.
TerminalColumns ColumnsOfDescriptor(int descriptor);

/// What running text is wrapped to: the terminal's columns, else the usual ones.
std::size_t ColumnsForText(const TerminalColumns& terminal);

}  // namespace tolvan
