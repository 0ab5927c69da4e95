#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

namespace vemra::test {

// How much is done: little in the ordinary tests, as much as the environment says in a soak.
inline int Count(const char* variable, int ordinary) {
  const char* const value = std::getenv(variable);
  return value == nullptr ? ordinary : std::atoi(value);
}

// Runs work in a process of its own, which ends well after it unless work ends it.
template <typename Work>
pid_t Start(Work work) {
  const pid_t process = ::fork();
  if (process == 0) {
    work();
    ::_exit(0);
  }
  return process;
}

// The process's end, as waitpid tells it; 0 when it ended well.
inline int Wait(pid_t process) {
  int status = -1;
  return ::waitpid(process, &status, 0) == process ? status : -1;
}

}  // namespace vemra::test
