// Runs a part of a test in a process of its own: with other rights, other limits, or to be killed.
#pragma once

#include <sys/types.h>

#include <functional>
#include <string>

namespace tolvan::test {

/// Runs `work` in a child, which says what is wrong, or nothing. The result is that text, or how the child ended.
std::string RunInChild(const std::function<std::string()>& work);

/// The same as a user without privileges, whoever runs the test.
std::string RunWithoutPrivileges(const std::function<std::string()>& work);

/// Starts `work` in a child; the caller ends it with KillChild.
pid_t StartChild(const std::function<void()>& work);

/// Kills the child with SIGKILL and waits for its end.
void KillChild(pid_t child);

}  // namespace tolvan::test
