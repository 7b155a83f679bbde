#include "cli/system/standard_streams.h"

#include <fcntl.h>
#include <unistd.h>

#include <initializer_list>

namespace mcbin {

void openStandardStreams() {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(descriptor, F_GETFD) != -1) continue;
    // The lowest free number is this one. Opened for the other direction, reading or writing fails.
    ::open(nullDevice(), descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
  }
}

const char* nullDevice() { return "/dev/null"; }

}  // namespace mcbin
