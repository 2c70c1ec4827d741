// Runs a part of a test in a process of its own: with other rights, other limits, or to be killed.
#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

namespace tolvan::test {

/// Runs `work` in a child, which says what is wrong, or nothing. The result is that text, or how the child ended.
std::string RunInChild(const std::function<std::string()>& work);

/// The same as a user without privileges, whoever runs the test.
std::string RunWithoutPrivileges(const std::function<std::string()>& work);

/// In a child: no file grows past so many bytes. What does not fit fails as on a full disk.
void LimitFileSizes(std::size_t bytes);

/// Starts `work` in a child; the caller ends it with KillChild.
pid_t StartChild(const std::function<void()>& work);

/// Starts a program, by its path and arguments, with its output going to `output`. It is killed when this process ends.
/// The child does `prepare` before.
pid_t StartProgram(
    std::vector<std::string> words, int output, const std::function<void()>& prepare = [] {});

/// What comes from a pipe until nobody writes into it any more; closes it.
std::string ReadToEnd(int pipe);

/// Kills the child with SIGKILL and waits for its end.
void KillChild(pid_t child);

}  // namespace tolvan::test
