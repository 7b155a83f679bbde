#include "data/column_files.h"

#include <array>
#include <charconv>
#include <utility>

#include "platform/cpu_clock.h"
#include "platform/process.h"
#include "status/status_codes.h"

namespace MCBinning {
namespace {

std::string withSeparator(std::string directory) {
  if (!directory.empty() && directory.back() != '\\' && directory.back() != '/') {
    directory += '/';
  }
  return directory;
}

std::string hexadecimal(unsigned long tick) {
  std::array<char, 2 * sizeof tick> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), tick, 16).ptr;
  return {digits.data(), end};
}

}  // namespace

ColumnFiles::ColumnFiles(std::string directory, CancelState& cancelState, FileSystem& files)
    : prefix_(withSeparator(std::move(directory))), cancelState_(cancelState), files_(files) {}

ColumnFiles::~ColumnFiles() {
  Remove();
  DropClaim();
}

MCStatus ColumnFiles::SetUp(std::size_t columns) {
  Remove();
  names_.assign(columns, std::string());
  created_.assign(columns, false);
  tick_ = static_cast<unsigned long>(readClock());
  if (prefix_.find('\0') != std::string::npos) {
    // The system would stop reading there, find the directory that stands before it under every
    // name, and the search would never end.
    return errorStatus(kNoTempDirectory);
  }
  files_.RemoveAbandoned(prefix_);
  MCStatus status;
  for (std::size_t column = 0; column < columns && status.IsOK(); ++column) {
    status = ChooseName(names_[column]);
  }
  return status;
}

MCStatus ColumnFiles::ChooseName(std::string& name) {
  for (bool cancelled = false;; ++tick_) {
    std::string candidate = prefix_ + hexadecimal(tick_);
    switch (files_.Probe(candidate)) {
      case NameState::Taken:
        // A wish to stop does not end the search: only a free name or an error does.
        cancelled = cancelState_.IsCancelled();
        continue;
      case NameState::NoDirectory:
        return errorStatus(kNoTempDirectory);
      case NameState::TooManyOpenFiles:
      case NameState::DirectoryRefused:
        return errorStatus(kNoTempFile);
      case NameState::Free:
        ++tick_;
        if (cancelled) {
          return errorStatus(kCancelled);
        }
        name = std::move(candidate);
        return MCStatus();
    }
  }
}

MCStatus ColumnFiles::Flush(ColumnBuffer& buffer) {
  MCStatus status;
  if (IsForkedCopy()) {
    status = MCStatus(120021, false);
  }
  for (std::size_t column = 0; column < buffer.Columns() && status.IsOK(); ++column) {
    status = Append(column, buffer.Values(column), buffer.Count(column));
  }
  buffer.Reset();
  if (!status.IsOK()) {
    ForgetUnusedNames();
  }
  return status;
}

/// Somebody else may have a file under a name that was chosen and not used.
void ColumnFiles::ForgetUnusedNames() {
  for (std::size_t column = 0; column < names_.size(); ++column) {
    if (!created_[column]) {
      names_[column].clear();
    }
  }
}

MCStatus ColumnFiles::OpenToAppend(std::size_t column, FileHandle& file) {
  if (created_[column]) {
    return files_.OpenForAppend(names_[column], file) ? MCStatus() : errorStatus(kNoTempFile);
  }
  if (creator_ == 0) {
    creator_ = currentProcess();
    files_.MakeClaim(prefix_, claim_);
  }
  for (;;) {
    switch (files_.Create(names_[column], claim_, file)) {
      case CreateResult::Created:
        created_[column] = true;
        return MCStatus();
      case CreateResult::Failed:
        return errorStatus(kNoTempFile);
      case CreateResult::NameTaken: {
        // Somebody else took the name since it was chosen; it is theirs.
        const MCStatus status = ChooseName(names_[column]);
        if (!status.IsOK()) {
          return status;
        }
      }
    }
  }
}

MCStatus ColumnFiles::Append(std::size_t column, const double* values, std::size_t count) {
  FileHandle file = kNoFile;
  const MCStatus status = OpenToAppend(column, file);
  if (!status.IsOK()) {
    return status;
  }
  const bool written = files_.Write(file, values, count * sizeof(double));
  const bool closed = files_.Close(file);
  return written && closed ? MCStatus() : errorStatus(kNoTempFile);
}

bool ColumnFiles::IsForkedCopy() const { return creator_ != 0 && creator_ != currentProcess(); }

void ColumnFiles::Remove() noexcept {
  bool allGone = true;
  for (std::size_t column = 0; column < created_.size(); ++column) {
    // Tried twice: somebody who looks at new files may hold one for a moment.
    if (created_[column] && (IsForkedCopy() || files_.Remove(names_[column], claim_) ||
                             files_.Remove(names_[column], claim_))) {
      created_[column] = false;
    }
    allGone = allGone && !created_[column];
  }
  if (allGone) {
    DropClaim();
    names_.clear();
    created_.clear();
    creator_ = 0;
  }
}

void ColumnFiles::DropClaim() noexcept {
  if (claim_.handle != kNoFile) {
    files_.DropClaim(claim_, !IsForkedCopy());
  }
}

}  // namespace MCBinning
