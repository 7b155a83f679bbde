#ifndef MCBINNING_TESTS_SYSTEM_CHILD_PROCESS_H
#define MCBINNING_TESTS_SYSTEM_CHILD_PROCESS_H

#include <sys/wait.h>
#include <unistd.h>

#include <exception>

namespace mcbinning_tests {

/// Starts a process that runs `body` (a callable returning int) and ends with its answer, 99 when
/// it throws. Returns the process id.
template <typename Body>
pid_t StartChild(Body body) {
  const pid_t child = fork();
  if (child != 0) {
    return child;
  }
  int answer = 99;
  try {
    answer = body();
  } catch (const std::exception&) {
  }
  _exit(answer);
}

/// What the child answered; -1 when it did not end by itself.
inline int AnswerOf(pid_t child) {
  int state = 0;
  return child > 0 && waitpid(child, &state, 0) == child && WIFEXITED(state) ? WEXITSTATUS(state)
                                                                             : -1;
}

}  // namespace mcbinning_tests

#endif
