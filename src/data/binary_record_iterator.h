#ifndef MCBINNING_DATA_BINARY_RECORD_ITERATOR_H
#define MCBINNING_DATA_BINARY_RECORD_ITERATOR_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "platform/file_system.h"

namespace MCBinning {

/// Reads a column file (docs/column-files.md) value by value, one value ahead of the caller. The
/// file is read in blocks, so a value costs no call into the operating system; being final, the
/// class is called without a virtual call where its type is known.
class BinaryRecordIterator final {
 public:
  /// What GetStatus() and Rewind() answer.
  static constexpr std::int32_t kReady = 0;
  static constexpr std::int32_t kAtEnd = 1;
  static constexpr std::int32_t kFailed = 3;
  static constexpr std::int32_t kNotRewindable = 4;

  /// Opens the file and reads ahead. When it cannot be opened, the status is 3 and a message goes
  /// to standard output. `files` is borrowed and must outlive the iterator.
  explicit BinaryRecordIterator(const std::string& fileName, FileSystem& files = realFileSystem());
  BinaryRecordIterator(const BinaryRecordIterator&) = delete;
  BinaryRecordIterator& operator=(const BinaryRecordIterator&) = delete;
  ~BinaryRecordIterator();

  /// Whether a value is ready.
  virtual bool HasNext() { return status_ == kReady; }

  /// The next value; 0.0 when none is ready.
  virtual double Next() {
    if (status_ != kReady) {
      return 0.0;
    }
    ReadAhead();
    return nextValue_;
  }

  /// Hands out the next values as Next() does, until `values` is full or none is ready, and returns
  /// how many there were.
  std::size_t Take(std::span<double> values);

  /// 0 a value is ready, 1 the end of the file, 3 the file could not be opened or read.
  virtual std::int32_t GetStatus() { return status_; }

  /// Goes back to the first value and returns the resulting status. A file that did not open stays
  /// at status 3. Bytes after the last whole value are no value.
  virtual std::int32_t Rewind();

 private:
  void ReadAhead() {
    nextValue_ = readAhead_;
    if (position_ == filled_) {
      ReadBlock();
    }
    if (status_ == kReady) {
      readAhead_ = block_[position_++];
    }
  }

  void ReadBlock();

  double nextValue_ = 0.0;
  double readAhead_ = 0.0;
  FileHandle file_ = kNoFile;
  std::int32_t status_ = kFailed;
  std::string fileName_;
  FileSystem& files_;
  std::unique_ptr<double[]> block_;
  std::size_t filled_ = 0;
  std::size_t position_ = 0;
};

}  // namespace MCBinning

#endif
