#ifndef MCBINNING_PLATFORM_FILE_SYSTEM_H
#define MCBINNING_PLATFORM_FILE_SYSTEM_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace MCBinning {

/// An open file; the operating system's descriptor or handle.
using FileHandle = std::intptr_t;

constexpr FileHandle kNoFile = -1;

/// What a look at a file name tells before anything is created under it.
enum class NameState {
  Free,
  Taken,
  NoDirectory,       // the directory does not exist or is no directory
  TooManyOpenFiles,  // of the process or of the system
  DirectoryRefused   // the directory may not be entered or written by this process
};

/// What shows other processes that the files of one pass are in use, until the process ends.
struct FileClaim {
  FileHandle handle = kNoFile;  // kNoFile where no claim could be made: files are then created
  std::string name;             // and removed all the same
};

enum class CreateResult { Created, NameTaken, Failed };

/// The file operations of the library, so that tests can make each of them fail. An operation that
/// opens a file sets `file` only when it succeeds. Interrupted calls are taken up again inside.
class FileSystem {
 public:
  FileSystem() = default;
  FileSystem(const FileSystem&) = delete;
  FileSystem& operator=(const FileSystem&) = delete;

  /// Whether a file could be created under `name`. Creates nothing. Anything that has the name, a
  /// link that points nowhere or a file that may not be read included, makes it taken.
  virtual NameState Probe(const std::string& name) = 0;

  /// Makes a claim for files whose names begin with `prefix`, a directory; false where the system
  /// does not allow it.
  virtual bool MakeClaim(const std::string& prefix, FileClaim& claim) = 0;

  /// Ends a claim whose files are removed. A forked copy of the owner only lets go of it.
  virtual void DropClaim(FileClaim& claim, bool isOwner) noexcept = 0;

  /// Removes the claimed files of processes of the same user that no longer exist.
  virtual void RemoveAbandoned(const std::string& prefix) noexcept = 0;

  /// Creates the file, open for appending and for its owner's eyes only, never through a link and
  /// never over something that exists; child programs do not inherit it.
  virtual CreateResult Create(const std::string& name, const FileClaim& claim,
                              FileHandle& file) = 0;

  /// Opens an existing file, never through a link; false when it could not be opened or is no
  /// regular file. Waits for nobody.
  virtual bool OpenForAppend(const std::string& name, FileHandle& file) = 0;
  virtual bool OpenForReading(const std::string& name, FileHandle& file) = 0;

  /// Writes all of `size` bytes; false when not every byte was taken.
  virtual bool Write(FileHandle file, const void* bytes, std::size_t size) = 0;

  /// Reads until `size` bytes are there or the file ends, and sets `bytesRead`; false on an error.
  virtual bool Read(FileHandle file, void* bytes, std::size_t size, std::size_t& bytesRead) = 0;

  virtual bool SeekToStart(FileHandle file) = 0;

  /// The handle is gone in any case; false when bytes written before may be lost.
  virtual bool Close(FileHandle file) noexcept = 0;

  /// Removes a file created under that claim; true when it is gone. Needs neither memory nor a
  /// file handle.
  virtual bool Remove(const std::string& name, const FileClaim& claim) noexcept = 0;

 protected:
  // Not virtual: with a trivial destructor the real one outlives every static object of the host.
  ~FileSystem() = default;
};

/// The operating system's files. The object has no state and may be used from any thread.
FileSystem& realFileSystem();

}  // namespace MCBinning

#endif
