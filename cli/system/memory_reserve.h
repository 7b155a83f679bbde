/// Memory for the moment when there is none left.
#ifndef MCBIN_CLI_SYSTEM_MEMORY_RESERVE_H
#define MCBIN_CLI_SYSTEM_MEMORY_RESERVE_H

namespace mcbin {

/// Holds a megabyte back from the start of the program on. The first allocation that fails gives it
/// free and is tried again, so that what the work needs to end in good order (an exception, a
/// message, the destructors of libraries that allocate) is there. Where even that does not do, and
/// before main(), the program says so and ends with the exit code of an internal error. It is done
/// before main() begins; doing it again changes nothing.
void holdMemoryBack() noexcept;

}  // namespace mcbin

#endif
