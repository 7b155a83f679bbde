// Loaded in front of the program's libraries, makes one of its calls fail:
//
//   MCB_FAULT=write:17:28    the 17th call of write() fails with error number 28
//   MCB_FAULT=malloc:5       the 5th allocation fails
//   MCB_FAULT=malloc:5+      that and every later one
//   MCB_FAULT_COUNTS=FILE    how often each was called is written to FILE at the end
//
// Whatever calls from inside the C library is not seen, so streams have wrappers of their own.
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
}

namespace {

struct Counter {
  const char* name = nullptr;
  std::atomic<long> calls{0};
};

constexpr int kMostFunctions = 64;
Counter counters[kMostFunctions];
char faultName[32];
long faultAt = 0;
bool staysFaulty = false;
int faultError = EIO;
bool isActive = false;

bool mustFail(Counter& counter, const char* name) {
  if (!isActive) return false;
  counter.name = name;
  const long call = ++counter.calls;
  if (faultAt == 0 || std::strcmp(name, faultName) != 0) return false;
  if (call != faultAt && !(staysFaulty && call > faultAt)) return false;
  errno = faultError;
  return true;
}

__attribute__((constructor)) void start() {
  if (const char* const fault = std::getenv("MCB_FAULT")) {
    char sign = 0;
    if (std::sscanf(fault, "%31[^:]:%ld%c%d", faultName, &faultAt, &sign, &faultError) >= 3) {
      staysFaulty = sign == '+';
    }
    if (std::strcmp(faultName, "malloc") == 0) faultError = ENOMEM;
  }
  isActive = true;
}

__attribute__((destructor)) void finish() {
  isActive = false;
  const char* const path = std::getenv("MCB_FAULT_COUNTS");
  if (path == nullptr) return;
  const long file = syscall(SYS_openat, AT_FDCWD, path, O_WRONLY | O_CREAT | O_TRUNC, 0600);
  for (const Counter& counter : counters) {
    if (counter.name == nullptr) continue;
    char line[64];
    const int size = std::snprintf(line, sizeof line, "%s %ld\n", counter.name, +counter.calls);
    syscall(SYS_write, file, line, size);
  }
  syscall(SYS_close, file);
}

template <class Function>
Function* next(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

// number: its counter; failed: what the call answers when it fails.
#define MCB_WRAP(number, result, failed, name, parameters, arguments)     \
  extern "C" result name parameters {                                     \
    static auto* const real = next<result parameters>(#name);             \
    return mustFail(counters[number], #name) ? (failed) : real arguments; \
  }

extern "C" void* malloc(std::size_t size) {
  return mustFail(counters[0], "malloc") ? nullptr : __libc_malloc(size);
}
extern "C" void* calloc(std::size_t count, std::size_t size) {
  return mustFail(counters[0], "malloc") ? nullptr : __libc_calloc(count, size);
}
extern "C" void* realloc(void* block, std::size_t size) {
  return mustFail(counters[0], "malloc") ? nullptr : __libc_realloc(block, size);
}

extern "C" int open(const char* path, int flags, ...) {
  static auto* const real = next<int(const char*, int, mode_t)>("open");
  std::va_list rest;
  va_start(rest, flags);
  const auto mode = static_cast<mode_t>((flags & O_CREAT) != 0 ? va_arg(rest, int) : 0);
  va_end(rest);
  return mustFail(counters[1], "open") ? -1 : real(path, flags, mode);
}
extern "C" int open64(const char* path, int flags, ...) {
  static auto* const real = next<int(const char*, int, mode_t)>("open64");
  std::va_list rest;
  va_start(rest, flags);
  const auto mode = static_cast<mode_t>((flags & O_CREAT) != 0 ? va_arg(rest, int) : 0);
  va_end(rest);
  return mustFail(counters[1], "open") ? -1 : real(path, flags, mode);
}

extern "C" int openat(int folder, const char* path, int flags, ...) {
  static auto* const real = next<int(int, const char*, int, mode_t)>("openat");
  std::va_list rest;
  va_start(rest, flags);
  const auto mode = static_cast<mode_t>((flags & O_CREAT) != 0 ? va_arg(rest, int) : 0);
  va_end(rest);
  return mustFail(counters[49], "openat") ? -1 : real(folder, path, flags, mode);
}

// Whatever the command, its argument goes through a register as wide as a pointer.
extern "C" int fcntl(int file, int command, ...) {
  static auto* const real = next<int(int, int, void*)>("fcntl");
  std::va_list rest;
  va_start(rest, command);
  void* const argument = va_arg(rest, void*);
  va_end(rest);
  return mustFail(counters[50], "fcntl") ? -1 : real(file, command, argument);
}
extern "C" int fcntl64(int file, int command, ...) {
  static auto* const real = next<int(int, int, void*)>("fcntl64");
  std::va_list rest;
  va_start(rest, command);
  void* const argument = va_arg(rest, void*);
  va_end(rest);
  return mustFail(counters[50], "fcntl") ? -1 : real(file, command, argument);
}

// A descriptor is closed also when closing it fails.
extern "C" int close(int file) {
  static auto* const real = next<int(int)>("close");
  const bool fails = mustFail(counters[2], "close");
  const int error = errno;
  const int result = real(file);
  if (fails) errno = error;
  return fails ? -1 : result;
}
extern "C" int fclose(std::FILE* file) {
  static auto* const real = next<int(std::FILE*)>("fclose");
  const bool fails = mustFail(counters[3], "fclose");
  const int error = errno;
  const int result = real(file);
  if (fails) errno = error;
  return fails ? EOF : result;
}

MCB_WRAP(4, ssize_t, -1, read, (int file, void* bytes, std::size_t size), (file, bytes, size))
MCB_WRAP(5, ssize_t, -1, write, (int file, const void* bytes, std::size_t size),
         (file, bytes, size))
MCB_WRAP(6, ssize_t, -1, pread64, (int file, void* bytes, std::size_t size, off64_t at),
         (file, bytes, size, at))
MCB_WRAP(7, off64_t, -1, lseek64, (int file, off64_t to, int from), (file, to, from))
MCB_WRAP(8, off_t, -1, lseek, (int file, off_t to, int from), (file, to, from))
MCB_WRAP(9, std::FILE*, nullptr, fopen, (const char* path, const char* mode), (path, mode))
MCB_WRAP(10, std::FILE*, nullptr, fopen64, (const char* path, const char* mode), (path, mode))
MCB_WRAP(11, std::FILE*, nullptr, fdopen, (int file, const char* mode), (file, mode))
MCB_WRAP(12, std::size_t, 0, fwrite,
         (const void* bytes, std::size_t size, std::size_t count, std::FILE* file),
         (bytes, size, count, file))
MCB_WRAP(13, int, EOF, fflush, (std::FILE * file), (file))
MCB_WRAP(14, int, EOF, fputs, (const char* text, std::FILE* file), (text, file))
MCB_WRAP(15, int, -1, fstat, (int file, struct stat* status), (file, status))
MCB_WRAP(16, int, -1, stat, (const char* path, struct stat* status), (path, status))
MCB_WRAP(17, int, -1, lstat, (const char* path, struct stat* status), (path, status))
MCB_WRAP(18, int, -1, fstat64, (int file, struct stat64* status), (file, status))
MCB_WRAP(19, int, -1, stat64, (const char* path, struct stat64* status), (path, status))
MCB_WRAP(20, int, -1, rename, (const char* from, const char* to), (from, to))
MCB_WRAP(21, int, -1, unlink, (const char* path), (path))
MCB_WRAP(22, int, -1, unlinkat, (int folder, const char* path, int flags), (folder, path, flags))
MCB_WRAP(23, int, -1, rmdir, (const char* path), (path))
MCB_WRAP(24, int, -1, mkdir, (const char* path, mode_t mode), (path, mode))
MCB_WRAP(25, char*, nullptr, mkdtemp, (char* pattern), (pattern))
MCB_WRAP(26, int, -1, mkstemp, (char* pattern), (pattern))
MCB_WRAP(27, int, -1, mkostemp, (char* pattern, int flags), (pattern, flags))
MCB_WRAP(28, int, -1, dup, (int file), (file))
MCB_WRAP(29, int, -1, dup2, (int from, int to), (from, to))
MCB_WRAP(30, int, -1, flock, (int file, int operation), (file, operation))
MCB_WRAP(31, int, -1, ftruncate, (int file, off_t size), (file, size))
MCB_WRAP(32, int, -1, fsync, (int file), (file))
MCB_WRAP(33, int, -1, fchmod, (int file, mode_t mode), (file, mode))
MCB_WRAP(34, int, -1, fchown, (int file, uid_t user, gid_t group), (file, user, group))
MCB_WRAP(35, DIR*, nullptr, opendir, (const char* path), (path))
MCB_WRAP(36, int, -1, pipe2, (int* ends, int flags), (ends, flags))
MCB_WRAP(37, int, -1, sigaction,
         (int number, const struct sigaction* action, struct sigaction* before),
         (number, action, before))
MCB_WRAP(38, void*, MAP_FAILED, mmap64,
         (void* at, std::size_t size, int protection, int flags, int file, off64_t offset),
         (at, size, protection, flags, file, offset))
MCB_WRAP(39, char*, nullptr, realpath, (const char* path, char* resolved), (path, resolved))
MCB_WRAP(40, ssize_t, -1, readlink, (const char* path, char* target, std::size_t size),
         (path, target, size))
MCB_WRAP(41, int, -1, poll, (pollfd * files, nfds_t count, int milliseconds),
         (files, count, milliseconds))
MCB_WRAP(42, DIR*, nullptr, fdopendir, (int file), (file))
MCB_WRAP(43, dirent*, nullptr, readdir, (DIR * directory), (directory))
MCB_WRAP(44, int, -1, faccessat, (int folder, const char* path, int mode, int flags),
         (folder, path, mode, flags))
MCB_WRAP(45, int, -1, fstatat, (int folder, const char* path, struct stat* status, int flags),
         (folder, path, status, flags))
MCB_WRAP(46, int, -1, linkat,
         (int folder, const char* from, int otherFolder, const char* to, int flags),
         (folder, from, otherFolder, to, flags))
MCB_WRAP(47, int, -1, access, (const char* path, int mode), (path, mode))
MCB_WRAP(48, char*, nullptr, getcwd, (char* path, std::size_t size), (path, size))
