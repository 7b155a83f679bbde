#ifndef MCBINNING_TESTS_FAULTS_NOTING_FILE_SYSTEM_H
#define MCBINNING_TESTS_FAULTS_NOTING_FILE_SYSTEM_H

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstring>
#include <string>

#include "platform/file_system.h"

namespace mcbinning_tests {

enum class FileState { Creating, Created, Removing, Removed };

enum class Phase { None, Pass, Search };

/// What a process does to the files of a directory, kept in memory that outlives the process.
struct FileNotes {
  struct Note {
    std::array<char, 32> name{};
    std::atomic<FileState> state = FileState::Creating;
  };

  /// Null when there is none.
  Note* Find(const std::string& name) {
    for (std::size_t i = 0; i < count; ++i) {
      if (name == notes[i].name.data()) {
        return &notes[i];
      }
    }
    return nullptr;
  }

  bool AllRemoved() const {
    return std::all_of(notes.begin(), notes.begin() + static_cast<std::ptrdiff_t>(count.load()),
                       [](const Note& note) { return note.state == FileState::Removed; });
  }

  /// For the next use, when all files of the last one are gone.
  void Clear() {
    phase = Phase::None;
    count = 0;
  }

  std::array<Note, 16> notes;
  std::atomic<std::size_t> count = 0;
  std::atomic<Phase> phase = Phase::None;
};

/// The real files of one directory, with notes of which are there and how far the use has come.
class NotingFileSystem final : public MCBinning::FileSystem {
 public:
  explicit NotingFileSystem(FileNotes& notes) : notes_(notes) {}

  MCBinning::NameState Probe(const std::string& name) override {
    notes_.phase = Phase::Pass;
    return files_.Probe(name);
  }

  bool MakeClaim(const std::string& prefix, MCBinning::FileClaim& claim) override {
    return files_.MakeClaim(prefix, claim);
  }

  void DropClaim(MCBinning::FileClaim& claim, bool isOwner) noexcept override {
    files_.DropClaim(claim, isOwner);
  }

  void RemoveAbandoned(const std::string& prefix) noexcept override {
    files_.RemoveAbandoned(prefix);
  }

  MCBinning::CreateResult Create(const std::string& name, const MCBinning::FileClaim& claim,
                                 MCBinning::FileHandle& file) override {
    FileNotes::Note& note = notes_.notes.at(notes_.count);
    const std::string fileName = name.substr(name.rfind('/') + 1);
    note.state = FileState::Creating;
    std::strncpy(note.name.data(), fileName.c_str(), note.name.size() - 1);
    ++notes_.count;
    const auto result = files_.Create(name, claim, file);
    if (result == MCBinning::CreateResult::Created) {
      note.state = FileState::Created;
    } else {
      --notes_.count;
    }
    return result;
  }

  bool OpenForAppend(const std::string& name, MCBinning::FileHandle& file) override {
    return files_.OpenForAppend(name, file);
  }

  bool OpenForReading(const std::string& name, MCBinning::FileHandle& file) override {
    notes_.phase = Phase::Search;
    return files_.OpenForReading(name, file);
  }

  bool Write(MCBinning::FileHandle file, const void* bytes, std::size_t size) override {
    return files_.Write(file, bytes, size);
  }

  bool Read(MCBinning::FileHandle file, void* bytes, std::size_t size,
            std::size_t& bytesRead) override {
    return files_.Read(file, bytes, size, bytesRead);
  }

  bool SeekToStart(MCBinning::FileHandle file) override { return files_.SeekToStart(file); }

  bool Close(MCBinning::FileHandle file) noexcept override { return files_.Close(file); }

  bool Remove(const std::string& name, const MCBinning::FileClaim& claim) noexcept override {
    FileNotes::Note* note = notes_.Find(name.substr(name.rfind('/') + 1));
    note->state = FileState::Removing;
    const bool removed = files_.Remove(name, claim);
    if (removed) {
      note->state = FileState::Removed;
    }
    return removed;
  }

 private:
  MCBinning::FileSystem& files_ = MCBinning::realFileSystem();
  FileNotes& notes_;
};

}  // namespace mcbinning_tests

#endif
