#include "data/binary_record_iterator.h"

#include <algorithm>
#include <iostream>

namespace MCBinning {
namespace {

constexpr std::size_t kValuesPerBlock = 8192;

}  // namespace

BinaryRecordIterator::BinaryRecordIterator(const std::string& fileName, FileSystem& files)
    : fileName_(fileName),
      files_(files),
      block_(std::make_unique_for_overwrite<double[]>(kValuesPerBlock)) {
  if (!files_.OpenForReading(fileName_, file_)) {
    std::cout << "Error: file handle is NULL in BinaryRecordIterator constructor";
    return;
  }
  status_ = kReady;
  ReadAhead();
}

BinaryRecordIterator::~BinaryRecordIterator() {
  if (file_ != kNoFile) {
    files_.Close(file_);
  }
}

std::int32_t BinaryRecordIterator::Rewind() {
  if (status_ == kNotRewindable || file_ == kNoFile) {
    return status_;
  }
  position_ = 0;
  filled_ = 0;
  if (!files_.SeekToStart(file_)) {
    status_ = kFailed;
    return status_;
  }
  status_ = kReady;
  ReadAhead();
  return status_;
}

std::size_t BinaryRecordIterator::Take(std::span<double> values) {
  std::size_t taken = 0;
  while (taken < values.size() && HasNext()) {
    values[taken++] = Next();
    if (!HasNext()) {
      break;
    }
    // The value read ahead stands in the block too, one place before the position.
    const std::size_t count = std::min(values.size() - taken, filled_ - position_);
    std::copy_n(block_.get() + position_ - 1, count, values.data() + taken);
    taken += count;
    position_ += count;
    readAhead_ = block_[position_ - 1];
  }
  return taken;
}

void BinaryRecordIterator::ReadBlock() {
  position_ = 0;
  filled_ = 0;
  std::size_t bytesRead = 0;
  if (!files_.Read(file_, block_.get(), kValuesPerBlock * sizeof(double), bytesRead)) {
    status_ = kFailed;
    return;
  }
  filled_ = bytesRead / sizeof(double);
  if (filled_ == 0) {
    status_ = kAtEnd;
  }
}

}  // namespace MCBinning
