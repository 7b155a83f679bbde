#ifndef MCBINNING_TESTS_SUPPORT_FAILING_FILE_SYSTEM_H
#define MCBINNING_TESTS_SUPPORT_FAILING_FILE_SYSTEM_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <utility>

#include "platform/file_system.h"

namespace mcbinning_tests {

enum class FileOperation {
  Probe,
  Claim,
  Create,
  OpenForAppend,
  OpenForReading,
  Write,
  Read,
  Seek,
  Close,
  Remove
};

constexpr std::size_t kFileOperations = static_cast<std::size_t>(FileOperation::Remove) + 1;

/// Counts the operations on another file system, makes one of them fail on request, and can have
/// little room. A failing write takes half of the bytes, as a full disk does; a failing close still
/// closes; a failing remove leaves the file.
class FailingFileSystem final : public MCBinning::FileSystem {
 public:
  using Hook = std::function<void(FileOperation, const std::string& name)>;

  explicit FailingFileSystem(MCBinning::FileSystem& base = MCBinning::realFileSystem())
      : base_(base) {}

  /// The call of that number (from 1) fails and `times` - 1 after it, later ones do not.
  void FailAt(FileOperation operation, std::size_t call, std::size_t times = 1) {
    failFrom_[At(operation)] = call;
    failUntil_[At(operation)] = call + times;
  }

  /// A probe that is made to fail answers this.
  void FailProbeWith(MCBinning::NameState state) { failedProbe_ = state; }

  /// Writes beyond this number of bytes in all are cut short and fail.
  void LimitRoom(std::uint64_t bytes) { room_ = bytes; }

  /// Called before every operation that names a file.
  void SetHook(Hook hook) { hook_ = std::move(hook); }

  std::size_t Calls(FileOperation operation) const { return calls_[At(operation)]; }
  std::uint64_t BytesWritten() const { return bytesWritten_; }

  /// Files opened and not closed yet.
  std::size_t OpenFiles() const { return openFiles_; }

  /// Claims made and not dropped yet.
  std::size_t Claims() const { return claims_; }

  MCBinning::NameState Probe(const std::string& name) override {
    const bool fails = IsDue(FileOperation::Probe, name);
    return fails ? failedProbe_ : base_.Probe(name);
  }

  bool MakeClaim(const std::string& prefix, MCBinning::FileClaim& claim) override {
    const bool isMade = !IsDue(FileOperation::Claim, "") && base_.MakeClaim(prefix, claim);
    claims_ += isMade ? 1 : 0;
    return isMade;
  }

  void DropClaim(MCBinning::FileClaim& claim, bool isOwner) noexcept override {
    --claims_;
    base_.DropClaim(claim, isOwner);
  }

  void RemoveAbandoned(const std::string& prefix) noexcept override {
    base_.RemoveAbandoned(prefix);
  }

  MCBinning::CreateResult Create(const std::string& name, const MCBinning::FileClaim& claim,
                                 MCBinning::FileHandle& file) override {
    if (IsDue(FileOperation::Create, name)) {
      return MCBinning::CreateResult::Failed;
    }
    const auto result = base_.Create(name, claim, file);
    openFiles_ += result == MCBinning::CreateResult::Created ? 1 : 0;
    return result;
  }

  bool OpenForAppend(const std::string& name, MCBinning::FileHandle& file) override {
    return !IsDue(FileOperation::OpenForAppend, name) && Opened(base_.OpenForAppend(name, file));
  }

  bool OpenForReading(const std::string& name, MCBinning::FileHandle& file) override {
    return !IsDue(FileOperation::OpenForReading, name) && Opened(base_.OpenForReading(name, file));
  }

  bool Write(MCBinning::FileHandle file, const void* bytes, std::size_t size) override {
    std::size_t taken = static_cast<std::size_t>(std::min<std::uint64_t>(size, room_));
    if (IsDue(FileOperation::Write, "")) {
      taken = size / 2;
    }
    room_ -= taken;
    const bool written = base_.Write(file, bytes, taken);
    bytesWritten_ += written ? taken : 0;
    return written && taken == size;
  }

  bool Read(MCBinning::FileHandle file, void* bytes, std::size_t size,
            std::size_t& bytesRead) override {
    return !IsDue(FileOperation::Read, "") && base_.Read(file, bytes, size, bytesRead);
  }

  bool SeekToStart(MCBinning::FileHandle file) override {
    return !IsDue(FileOperation::Seek, "") && base_.SeekToStart(file);
  }

  bool Close(MCBinning::FileHandle file) noexcept override {
    --openFiles_;
    const bool closed = base_.Close(file);
    return !IsDue(FileOperation::Close, "") && closed;
  }

  bool Remove(const std::string& name, const MCBinning::FileClaim& claim) noexcept override {
    return !IsDue(FileOperation::Remove, name) && base_.Remove(name, claim);
  }

 private:
  static constexpr std::size_t At(FileOperation operation) {
    return static_cast<std::size_t>(operation);
  }

  bool IsDue(FileOperation operation, const std::string& name) {
    if (hook_ && !name.empty()) {
      hook_(operation, name);
    }
    const std::size_t call = ++calls_[At(operation)];
    return call >= failFrom_[At(operation)] && call < failUntil_[At(operation)];
  }

  bool Opened(bool isOpen) {
    openFiles_ += isOpen ? 1 : 0;
    return isOpen;
  }

  MCBinning::FileSystem& base_;
  Hook hook_;
  std::array<std::size_t, kFileOperations> calls_{};
  std::array<std::size_t, kFileOperations> failFrom_{};
  std::array<std::size_t, kFileOperations> failUntil_{};
  MCBinning::NameState failedProbe_ = MCBinning::NameState::TooManyOpenFiles;
  std::uint64_t room_ = std::numeric_limits<std::uint64_t>::max();
  std::uint64_t bytesWritten_ = 0;
  std::size_t openFiles_ = 0;
  std::size_t claims_ = 0;
};

}  // namespace mcbinning_tests

#endif
