/// The ways in which a command fails; main() turns each into its exit code.
#ifndef MCBIN_TOOLKIT_ERRORS_H
#define MCBIN_TOOLKIT_ERRORS_H

#include <stdexcept>

namespace mcbin {

enum ExitCode { kDone = 0, kDataError = 1, kUsageError = 2, kInternalError = 3 };

/// Something about the data, a file or a model is wrong.
class DataError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The command line contradicts itself; no data need be read to say so.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A signal asked the program to stop.
class Interrupted : public std::runtime_error {
 public:
  explicit Interrupted(int number) : std::runtime_error("interrupted"), signal(number) {}
  int signal;
};

}  // namespace mcbin

#endif
