/// Exact counts of distinct values in bounded memory.
#ifndef MCBIN_TOOLKIT_ROUNDS_DISTINCT_RUNS_H
#define MCBIN_TOOLKIT_ROUNDS_DISTINCT_RUNS_H

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace mcbin {

/// Takes values in and keeps one of each. Those that do not fit in memory go to a file, a sorted
/// run at a time.
class DistinctRuns {
 public:
  /// Holds at most `capacity` values, at least 2; `path` is of a file to be made when it is needed.
  DistinctRuns(std::size_t capacity, std::string path);

  /// No NaN; -0.0 is 0.0. DataError when the file cannot be written.
  void Add(double value) {
    if (values_.size() == capacity_) MakeRoom();
    values_.push_back(value + 0.0);
  }

 private:
  friend class RunsReader;

  void KeepOneOfEach();
  void MakeRoom();

  std::size_t capacity_;
  std::string path_;
  std::vector<double> values_;
  std::vector<std::uint64_t> runEnds_;  ///< In the file, in values.
};

/// How many values all `parts` took in, each counted once. DataError when a file cannot be read,
/// Abandoned when `isAbandoned` becomes true.
std::uint64_t countDistinct(std::vector<DistinctRuns>& parts, const std::atomic<bool>& isAbandoned);

}  // namespace mcbin

#endif
