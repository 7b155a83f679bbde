#ifndef MCBINNING_TESTS_SYSTEM_CHILD_PROCESS_H
#define MCBINNING_TESTS_SYSTEM_CHILD_PROCESS_H

#include <windows.h>

#include <array>
#include <cstdlib>
#include <string>
#include <utility>

namespace mcbinning_tests {

/// This program once more, in a process that runs the test `test` alone. What it is to do stands in
/// the variable MCB_CHILD of its environment; without one such a test has nothing to do.
class ChildProcess {
 public:
  ChildProcess(const std::string& test, const std::string& task) {
    std::array<char, 4096> program{};
    GetModuleFileNameA(nullptr, program.data(), static_cast<DWORD>(program.size()));
    std::string command =
        std::string("\"") + program.data() + "\" --gtest_brief=1 --gtest_filter=" + test;
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    SetEnvironmentVariableA("MCB_CHILD", task.c_str());
    CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                   &process_);
    SetEnvironmentVariableA("MCB_CHILD", nullptr);
  }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ChildProcess(ChildProcess&& other) noexcept : process_(std::exchange(other.process_, {})) {}
  ChildProcess& operator=(ChildProcess&&) = delete;
  ~ChildProcess() {
    CloseHandle(process_.hThread);
    CloseHandle(process_.hProcess);
  }

  static constexpr unsigned kKilled = 77;

  bool Kill() const { return TerminateProcess(process_.hProcess, kKilled) != 0; }

  /// What it answers when it has ended: 0 when its test passed.
  unsigned Answer() const {
    DWORD answer = 1;
    WaitForSingleObject(process_.hProcess, INFINITE);
    GetExitCodeProcess(process_.hProcess, &answer);
    return answer;
  }

 private:
  PROCESS_INFORMATION process_{};
};

/// The task of this process; empty when it is not a child.
inline std::string TaskOfChild() {
  const char* task = std::getenv("MCB_CHILD");
  return task != nullptr ? task : "";
}

}  // namespace mcbinning_tests

#endif
