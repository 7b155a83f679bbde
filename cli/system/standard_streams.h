/// Standard input, output and error.
#ifndef MCBIN_CLI_SYSTEM_STANDARD_STREAMS_H
#define MCBIN_CLI_SYSTEM_STANDARD_STREAMS_H

namespace mcbin {

/// Opens what the parent process has closed, so that no file of the program's own gets the number
/// of a standard stream and, with it, what is written there. Using such a stream stays an error.
void openStandardStreams();

/// The file that keeps nothing of what is written to it.
const char* nullDevice();

}  // namespace mcbin

#endif
