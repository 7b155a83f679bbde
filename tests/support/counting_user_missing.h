#ifndef MCBINNING_TESTS_SUPPORT_COUNTING_USER_MISSING_H
#define MCBINNING_TESTS_SUPPORT_COUNTING_USER_MISSING_H

#include "mcbinning/user_missing.h"

namespace mcbinning_tests {

/// How many definitions were destroyed and how many are alive, clones included.
struct UserMissingCount {
  int destroyed = 0;
  int alive = 0;
};

/// A definition that reports its birth and death to a counter, which must outlive it.
template <typename Definition>
class CountingUserMissing : public Definition {
 public:
  explicit CountingUserMissing(UserMissingCount& count) : count_(&count) { ++count_->alive; }
  CountingUserMissing(const CountingUserMissing& other) : Definition(other), count_(other.count_) {
    ++count_->alive;
  }
  CountingUserMissing& operator=(const CountingUserMissing&) = delete;
  ~CountingUserMissing() override {
    --count_->alive;
    ++count_->destroyed;
  }
  IBINUserMissing* Clone() const override { return new CountingUserMissing(*this); }

 private:
  UserMissingCount* count_;
};

using CountingNumericUserMissing = CountingUserMissing<BINNumericUserMissing>;
using CountingStringUserMissing = CountingUserMissing<BINStringUserMissing>;

/// A host's own implementation of the interface: it claims a data type and holds no values.
class ForeignUserMissing : public IBINUserMissing {
 public:
  explicit ForeignUserMissing(DataType dataType) : dataType_(dataType) {}
  DataType GetDataType() override { return dataType_; }
  int GetNDiscreteValues() const override { return 0; }
  bool HasInterval() const override { return false; }
  IBINUserMissing* Clone() const override { return new ForeignUserMissing(*this); }
  bool IsEqualTo(const IBINUserMissing* other) const override { return other == this; }
  void Display(std::ostream& /*os*/) const override {}

 private:
  DataType dataType_;
};

}  // namespace mcbinning_tests

#endif
