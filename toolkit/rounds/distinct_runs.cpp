#include "toolkit/rounds/distinct_runs.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <functional>
#include <memory>
#include <queue>
#include <utility>

#include "toolkit/errors.h"
#include "toolkit/fit/team_work.h"
#include "toolkit/system/paths.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

constexpr std::uint64_t kChunk = 4096;

[[noreturn]] void fail(const char* what, const std::string& path) {
  throw DataError(fmt::format("cannot {} the temporary file {}: {}; TMPDIR names another directory",
                              what, visibleText(path), std::strerror(errno)));
}

constexpr std::streamoff bytesOfValues(std::uint64_t count) {
  return static_cast<std::streamoff>(count * sizeof(double));
}

}  // namespace

DistinctRuns::DistinctRuns(std::size_t capacity, std::string path)
    : capacity_(capacity), path_(std::move(path)) {}

void DistinctRuns::KeepOneOfEach() {
  std::sort(values_.begin(), values_.end());
  values_.erase(std::unique(values_.begin(), values_.end()), values_.end());
}

void DistinctRuns::MakeRoom() {
  KeepOneOfEach();
  if (values_.size() <= capacity_ / 2) return;
  std::ofstream file(pathOf(path_), std::ios::binary | std::ios::app);
  file.write(reinterpret_cast<const char*>(values_.data()), bytesOfValues(values_.size()));
  file.close();
  if (!file) fail("write", path_);
  runEnds_.push_back((runEnds_.empty() ? 0 : runEnds_.back()) + values_.size());
  values_.clear();
}

/// The runs of one part, in the file and in memory, front to back.
class RunsReader {
 public:
  /// Borrows `part`.
  explicit RunsReader(DistinctRuns& part) : part_(part) {
    part.KeepOneOfEach();
    std::uint64_t start = 0;
    for (const std::uint64_t end : part.runEnds_) {
      runs_.push_back({{}, 0, start, end});
      start = end;
    }
    if (!runs_.empty()) file_.open(pathOf(part.path_), std::ios::binary);
    runs_.push_back({part.values_, 0, 0, 0});
  }

  std::size_t Size() const { return runs_.size(); }

  /// The next value of a run; false behind its last.
  bool Next(std::size_t run, double& value) {
    Run& at = runs_[run];
    if (at.next == at.chunk.size() && !Fill(at)) return false;
    value = at.chunk[at.next++];
    return true;
  }

 private:
  struct Run {
    std::vector<double> chunk;
    std::size_t next;
    std::uint64_t start;  // of what is still in the file
    std::uint64_t end;
  };

  bool Fill(Run& run) {
    if (run.start == run.end) return false;
    const std::uint64_t count = std::min(kChunk, run.end - run.start);
    run.chunk.resize(count);
    run.next = 0;
    file_.seekg(bytesOfValues(run.start));
    if (!file_.read(reinterpret_cast<char*>(run.chunk.data()), bytesOfValues(count))) {
      fail("read", part_.path_);
    }
    run.start += count;
    return true;
  }

  const DistinctRuns& part_;
  std::ifstream file_;
  std::vector<Run> runs_;
};

std::uint64_t countDistinct(std::vector<DistinctRuns>& parts,
                            const std::atomic<bool>& isAbandoned) {
  struct Head {
    double value;
    std::size_t part;
    std::size_t run;
    bool operator>(const Head& other) const { return value > other.value; }
  };
  std::priority_queue<Head, std::vector<Head>, std::greater<>> heads;
  std::vector<std::unique_ptr<RunsReader>> readers;
  const auto step = [&](std::size_t part, std::size_t run) {
    Head head{0.0, part, run};
    if (readers[part]->Next(run, head.value)) heads.push(head);
  };
  for (std::size_t part = 0; part < parts.size(); ++part) {
    readers.push_back(std::make_unique<RunsReader>(parts[part]));
    for (std::size_t run = 0; run < readers[part]->Size(); ++run) step(part, run);
  }
  std::uint64_t count = 0;
  double last = 0.0;
  while (!heads.empty()) {
    const Head head = heads.top();
    heads.pop();
    if (count == 0 || head.value != last) ++count;
    if (count % kChunk == 0 && isAbandoned) throw Abandoned();
    last = head.value;
    step(head.part, head.run);
  }
  return count;
}

}  // namespace mcbin
