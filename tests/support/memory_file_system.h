#ifndef MCBINNING_TESTS_SUPPORT_MEMORY_FILE_SYSTEM_H
#define MCBINNING_TESTS_SUPPORT_MEMORY_FILE_SYSTEM_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "platform/file_system.h"

namespace mcbinning_tests {

/// Files in memory, in a directory that always exists, for tests of very many runs. A file that is
/// open must not be removed.
class MemoryFileSystem final : public MCBinning::FileSystem {
 public:
  std::size_t Files() const { return files_.size(); }
  std::size_t OpenFiles() const { return open_.size(); }

  MCBinning::NameState Probe(const std::string& name) override {
    return files_.count(name) != 0 ? MCBinning::NameState::Taken : MCBinning::NameState::Free;
  }

  bool MakeClaim(const std::string& /*prefix*/, MCBinning::FileClaim& /*claim*/) override {
    return false;
  }

  void DropClaim(MCBinning::FileClaim& /*claim*/, bool /*isOwner*/) noexcept override {}

  void RemoveAbandoned(const std::string& /*prefix*/) noexcept override {}

  MCBinning::CreateResult Create(const std::string& name, const MCBinning::FileClaim& /*claim*/,
                                 MCBinning::FileHandle& file) override {
    const auto [entry, added] = files_.try_emplace(name);
    if (!added) {
      return MCBinning::CreateResult::NameTaken;
    }
    return Open(name, file) ? MCBinning::CreateResult::Created : MCBinning::CreateResult::Failed;
  }

  bool OpenForAppend(const std::string& name, MCBinning::FileHandle& file) override {
    return Open(name, file);
  }

  bool OpenForReading(const std::string& name, MCBinning::FileHandle& file) override {
    return Open(name, file);
  }

  bool Write(MCBinning::FileHandle file, const void* bytes, std::size_t size) override {
    std::vector<std::uint8_t>& content = *open_.at(file).content;
    const auto* first = static_cast<const std::uint8_t*>(bytes);
    content.insert(content.end(), first, first + size);
    return true;
  }

  bool Read(MCBinning::FileHandle file, void* bytes, std::size_t size,
            std::size_t& bytesRead) override {
    OpenFile& from = open_.at(file);
    bytesRead = std::min(size, from.content->size() - from.position);
    if (bytesRead != 0) {
      std::memcpy(bytes, from.content->data() + from.position, bytesRead);
    }
    from.position += bytesRead;
    return true;
  }

  bool SeekToStart(MCBinning::FileHandle file) override {
    open_.at(file).position = 0;
    return true;
  }

  bool Close(MCBinning::FileHandle file) noexcept override { return open_.erase(file) == 1; }

  bool Remove(const std::string& name, const MCBinning::FileClaim& /*claim*/) noexcept override {
    return files_.erase(name) == 1;
  }

 private:
  struct OpenFile {
    std::vector<std::uint8_t>* content;
    std::size_t position;
  };

  bool Open(const std::string& name, MCBinning::FileHandle& file) {
    const auto entry = files_.find(name);
    if (entry == files_.end()) {
      return false;
    }
    file = ++lastHandle_;
    open_[file] = {&entry->second, 0};
    return true;
  }

  std::map<std::string, std::vector<std::uint8_t>> files_;
  std::map<MCBinning::FileHandle, OpenFile> open_;
  MCBinning::FileHandle lastHandle_ = MCBinning::kNoFile;
};

}  // namespace mcbinning_tests

#endif
