#ifndef MCBINNING_TESTS_SUPPORT_VECTOR_CASES_H
#define MCBINNING_TESTS_SUPPORT_VECTOR_CASES_H

#include <mccomvor/record.h>

#include <cstddef>
#include <stdexcept>
#include <vector>

#include "mcbinning/case_iterator.h"

namespace mcbinning_tests {

/// Cases from a table in memory, with its calls counted. An empty row stands for a case to be
/// passed over (a null record).
class VectorCases : public BINCaseIterator {
 public:
  explicit VectorCases(const std::vector<std::vector<double>>& rows) {
    records_.reserve(rows.size());
    for (const auto& row : rows) {
      records_.emplace_back(static_cast<int>(row.size()));
      isNull_.push_back(row.empty());
      for (std::size_t cell = 0; cell < row.size(); ++cell) {
        records_.back()[static_cast<int>(cell)] = row[cell];
      }
    }
  }

  bool HasNext() override {
    ThrowWhenDue(++hasNextCalls_, throwAtHasNext_);
    return next_ < records_.size();
  }

  const MCCommon::Record* Next() override {
    ThrowWhenDue(++nextCalls_, throwAtNext_);
    const std::size_t current = next_++;
    return isNull_[current] ? nullptr : &records_[current];
  }

  void Restart() { next_ = 0; }

  std::size_t HasNextCalls() const { return hasNextCalls_; }
  std::size_t NextCalls() const { return nextCalls_; }

  /// Make the call of that number (from 1) throw std::runtime_error.
  void ThrowAtHasNext(std::size_t call) { throwAtHasNext_ = call; }
  void ThrowAtNext(std::size_t call) { throwAtNext_ = call; }

 private:
  static void ThrowWhenDue(std::size_t call, std::size_t due) {
    if (call == due) {
      throw std::runtime_error("the host failed");
    }
  }

  std::vector<MCCommon::Record> records_;
  std::vector<bool> isNull_;
  std::size_t next_ = 0;
  std::size_t hasNextCalls_ = 0;
  std::size_t nextCalls_ = 0;
  std::size_t throwAtHasNext_ = 0;
  std::size_t throwAtNext_ = 0;
};

}  // namespace mcbinning_tests

#endif
