#pragma once

#include <functional>

namespace tolvan::test {

/// Starts the window toolkit for a program of its own and runs `work` on its thread. The result of `work`, or 1 when
/// there is no display.
int RunWithToolkit(int count, char** arguments, const std::function<int()>& work);

}  // namespace tolvan::test
