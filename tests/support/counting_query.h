#ifndef MCBINNING_TESTS_SUPPORT_COUNTING_QUERY_H
#define MCBINNING_TESTS_SUPPORT_COUNTING_QUERY_H

#include <cstddef>

#include "mcbinning/progress.h"

namespace mcbinning_tests {

/// Answers false, then true from the question of number `firstTrue` (from 1) on; 0 means never.
class CountingQuery : public MCQueryCancel {
 public:
  explicit CountingQuery(std::size_t firstTrue = 0) : firstTrue_(firstTrue) {}

  bool IsCancelled() override {
    ++asked_;
    return firstTrue_ != 0 && asked_ >= firstTrue_;
  }

  std::size_t Asked() const { return asked_; }

 private:
  std::size_t firstTrue_;
  std::size_t asked_ = 0;
};

}  // namespace mcbinning_tests

#endif
