/// What the library prints is not for the reader of a notebook.
#ifndef MCBIN_PYTHON_MUTED_OUTPUT_H
#define MCBIN_PYTHON_MUTED_OUTPUT_H

namespace mcbin::python {

/// As long as one lives std::cout prints nothing. Python's own output and that of C goes on.
class MutedStandardOutput {
 public:
  MutedStandardOutput();
  MutedStandardOutput(const MutedStandardOutput&) = delete;
  MutedStandardOutput& operator=(const MutedStandardOutput&) = delete;
  ~MutedStandardOutput();
};

}  // namespace mcbin::python

#endif
