#include "toolkit/input/byte_source.h"

#include <fmt/format.h>
#include <zlib.h>

#include <cerrno>
#include <cstring>
#include <new>
#include <string_view>
#include <vector>

#include "toolkit/errors.h"
#include "toolkit/system/files.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

constexpr unsigned kReadSize = 1U << 17U;
constexpr std::size_t kStartSize = 16;

}  // namespace

ByteSource::ByteSource(const std::string& path, Monitor& monitor)
    : name_(shownName(path)), monitor_(monitor), file_(openForReading(path, monitor)) {
  try {
    storedSize_ = fileSize(file_.descriptor);
    OpenStream();
  } catch (...) {
    closeDescriptor(file_.descriptor);
    throw;
  }
}

ByteSource::~ByteSource() {
  if (stream_ != nullptr) gzclose(stream_);
  closeDescriptor(file_.descriptor);
}

void ByteSource::OpenStream() {
  const int copy = duplicateDescriptor(file_.descriptor);
  if (copy < 0) Fail(std::strerror(errno));
  stream_ = gzdopen(copy, "rb");
  if (stream_ == nullptr) {
    closeDescriptor(copy);
    throw std::bad_alloc();
  }
  gzbuffer(stream_, kReadSize);
  compressed_ = gzdirect(stream_) == 0;
}

std::string ByteSource::Start() {
  char start[kStartSize];
  const std::size_t size = Read(start, sizeof start);
  Rewind();
  return {start, size};
}

std::size_t ByteSource::Read(char* buffer, std::size_t size) {
  monitor_.ThrowIfStopped();
  const int count = gzread(stream_, buffer, static_cast<unsigned>(size));
  if (count < 0 || (count == 0 && compressed_)) {
    int error = Z_OK;
    const std::string_view message = gzerror(stream_, &error);
    if (error == Z_BUF_ERROR) Fail("the gzip data end too early: the file is cut short");
    if (error == Z_MEM_ERROR) throw std::bad_alloc();
    if (error == Z_ERRNO) Fail(std::strerror(errno));
    if (error != Z_OK && error != Z_STREAM_END) {
      // zlib's own name for the file stands in front.
      Fail(fmt::format("broken gzip data: {}", message.substr(message.rfind(": ") + 2)));
    }
  }
  return static_cast<std::size_t>(count);
}

void ByteSource::Rewind() {
  if (gzrewind(stream_) != 0) Fail("cannot be read a second time");
}

double ByteSource::ShareRead() const {
  if (storedSize_ == 0) return 1.0;
  return static_cast<double>(gzoffset(stream_)) / static_cast<double>(storedSize_);
}

void ByteSource::Fail(const std::string& what) const { throw DataError(name_ + ": " + what); }

std::string shownName(const std::string& path) {
  if (path.empty()) return "the data";
  return path == "-" ? "standard input" : visibleText(path);
}

std::string readWhole(const std::string& path, Monitor& monitor) {
  ByteSource source(path, monitor);
  std::vector<char> buffer(kReadSize);
  std::string text;
  while (const std::size_t size = source.Read(buffer.data(), buffer.size())) {
    text.append(buffer.data(), size);
  }
  return text;
}

}  // namespace mcbin
