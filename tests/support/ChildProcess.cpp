#include "support/ChildProcess.h"

#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <exception>

namespace tolvan::test {
namespace {

constexpr uid_t nobody = 65534;

std::string Outcome(const std::function<std::string()>& work) {
  try {
    return work();
  } catch (const std::exception& error) {
    return std::string("exception: ") + error.what();
  }
}

}  // namespace

std::string RunInChild(const std::function<std::string()>& work) {
  int ends[2];
  if (::pipe(ends) != 0) return "no pipe";
  const pid_t child = ::fork();
  if (child == 0) {
    const std::string text = Outcome(work);
    const bool written = ::write(ends[1], text.data(), text.size()) == static_cast<ssize_t>(text.size());
    ::_exit(written ? 0 : 1);
  }
  ::close(ends[1]);
  std::string text = ReadToEnd(ends[0]);
  int status = 0;
  ::waitpid(child, &status, 0);
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
    text += " (the child ended with status " + std::to_string(status) + ")";
  return text;
}

std::string RunWithoutPrivileges(const std::function<std::string()>& work) {
  return RunInChild([&]() -> std::string {
    if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0)) return "privileges stay";
    return work();
  });
}

void LimitFileSizes(std::size_t bytes) {
  std::signal(SIGXFSZ, SIG_IGN);
  const rlimit limit{bytes, bytes};
  ::setrlimit(RLIMIT_FSIZE, &limit);
}

pid_t StartChild(const std::function<void()>& work) {
  const pid_t child = ::fork();
  if (child != 0) return child;
  Outcome([&] {
    work();
    return std::string();
  });
  ::_exit(0);
}

pid_t StartProgram(std::vector<std::string> words, int output, const std::function<void()>& prepare) {
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  const pid_t child = ::fork();
  if (child != 0) return child;
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  ::dup2(output, STDOUT_FILENO);
  prepare();
  ::execv(pointers[0], pointers.data());
  ::_exit(127);
}

std::string ReadToEnd(int pipe) {
  std::string text;
  char buffer[4096];
  for (ssize_t count = 0; (count = ::read(pipe, buffer, sizeof buffer)) > 0;) {
    text.append(buffer, static_cast<std::size_t>(count));
  }
  ::close(pipe);
  return text;
}

void KillChild(pid_t child) {
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
}

}  // namespace tolvan::test
