/// Bytes of a file, of standard input or of a gzip-compressed file.
#ifndef MCBIN_TOOLKIT_INPUT_BYTE_SOURCE_H
#define MCBIN_TOOLKIT_INPUT_BYTE_SOURCE_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "toolkit/monitor.h"
#include "toolkit/system/files.h"

struct gzFile_s;

namespace mcbin {

/// Reads a file front to back and again, unpacking gzip on the way. What cannot be read twice
/// (standard input, a pipe) is first copied to an unnamed temporary file. Failures are DataErrors.
class ByteSource {
 public:
  /// Opens `path`; "-" is standard input. The monitor, which must live as long, is asked with every
  /// reading.
  ByteSource(const std::string& path, Monitor& monitor);
  ByteSource(const ByteSource&) = delete;
  ByteSource& operator=(const ByteSource&) = delete;
  ~ByteSource();

  /// What messages call the input: the path, made visible, or "standard input".
  const std::string& Name() const { return name_; }

  /// The first bytes (unpacked), 16 at most, by which a format is known. To be asked before the
  /// first Read.
  std::string Start();
  bool IsCompressed() const { return compressed_; }
  /// Whether the bytes are a copy of what is no regular file.
  bool IsCopy() const { return file_.isCopy; }

  /// Fills `buffer` with up to `size` bytes; 0 at the end.
  std::size_t Read(char* buffer, std::size_t size);
  void Rewind();

  /// Share of the stored bytes read so far, 0 to 1.
  double ShareRead() const;

 private:
  void OpenStream();
  [[noreturn]] void Fail(const std::string& what) const;

  std::string name_;
  Monitor& monitor_;
  OpenedFile file_;
  std::uint64_t storedSize_ = 0;
  bool compressed_ = false;
  gzFile_s* stream_ = nullptr;
};

/// What messages call the input: the path, made visible, or "standard input"; one without a name is
/// "the data".
std::string shownName(const std::string& path);

/// All that is stored at `path`.
std::string readWhole(const std::string& path, Monitor& monitor);

}  // namespace mcbin

#endif
