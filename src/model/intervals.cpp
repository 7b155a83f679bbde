#include <limits>
#include <ostream>

#include "mcbinning/user_missing.h"

namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

}  // namespace

BINNumericInterval::BINNumericInterval() = default;

BINNumericInterval::BINNumericInterval(double left, double right)
    : leftEnd_(left), rightEnd_(right) {}

BINNumericInterval::BINNumericInterval(double end, bool upTo)
    : leftEnd_(upTo ? -kLargest : end), rightEnd_(upTo ? end : kLargest) {}

double BINNumericInterval::GetLeftEnd() const { return leftEnd_; }

double BINNumericInterval::GetRightEnd() const { return rightEnd_; }

bool BINNumericInterval::SetLeftEnd(double left) {
  leftEnd_ = left;
  return rightEnd_ >= leftEnd_;
}

bool BINNumericInterval::SetRightEnd(double right) {
  rightEnd_ = right;
  return rightEnd_ >= leftEnd_;
}

bool BINNumericInterval::IsEmpty() const { return leftEnd_ > rightEnd_; }

bool BINNumericInterval::IsLeftEndInfinite() const { return leftEnd_ == -kLargest; }

bool BINNumericInterval::IsRightEndInfinite() const { return rightEnd_ == kLargest; }

bool BINNumericInterval::Contains(double value) const {
  return leftEnd_ <= value && value <= rightEnd_;
}

bool BINNumericInterval::operator==(const BINNumericInterval& other) const {
  return leftEnd_ == other.leftEnd_ && rightEnd_ == other.rightEnd_;
}

void BINNumericInterval::Display(std::ostream& os) const {
  os << "BINNumericInterval: ";
  if (leftEnd_ <= -kLargest) {
    os << "( -infinity, ";
  } else {
    os << "[ " << leftEnd_ << ", ";
  }
  if (rightEnd_ >= kLargest) {
    os << "infinity )";
  } else {
    os << rightEnd_ << " ]";
  }
  os << std::endl;
}

BINStringInterval::BINStringInterval() = default;

BINStringInterval::BINStringInterval(const std::string& left, bool leftIncluded,
                                     const std::string& right, bool rightIncluded)
    : leftEnd_(left),
      leftEndIncluded_(leftIncluded),
      rightEnd_(right),
      rightEndIncluded_(rightIncluded) {}

BINStringInterval::BINStringInterval(const BINStringInterval& other) = default;

BINStringInterval::BINStringInterval(BINStringInterval&& other) noexcept = default;

BINStringInterval& BINStringInterval::operator=(const BINStringInterval& other) {
  return *this = BINStringInterval(other);
}

BINStringInterval& BINStringInterval::operator=(BINStringInterval&& other) noexcept = default;

BINStringInterval::~BINStringInterval() = default;

const std::string& BINStringInterval::GetLeftEnd() const { return leftEnd_; }

const std::string& BINStringInterval::GetRightEnd() const { return rightEnd_; }

bool BINStringInterval::IsLeftEndIncluded() const { return leftEndIncluded_; }

bool BINStringInterval::IsRightEndIncluded() const { return rightEndIncluded_; }

bool BINStringInterval::SetLeftEnd(const std::string& left, bool included) {
  leftEnd_ = left;
  leftEndIncluded_ = included;
  return !IsEmpty();
}

bool BINStringInterval::SetRightEnd(const std::string& right, bool included) {
  rightEnd_ = right;
  rightEndIncluded_ = included;
  return !IsEmpty();
}

bool BINStringInterval::IsEmpty() const {
  const int order = rightEnd_.compare(leftEnd_);
  return order < 0 || (order == 0 && !(leftEndIncluded_ && rightEndIncluded_));
}

bool BINStringInterval::Contains(const std::string& value) const {
  const int fromLeft = value.compare(leftEnd_);
  if (fromLeft < 0 || (fromLeft == 0 && !leftEndIncluded_)) {
    return false;
  }
  const int fromRight = value.compare(rightEnd_);
  return fromRight < 0 || (fromRight == 0 && rightEndIncluded_);
}

bool BINStringInterval::operator==(const BINStringInterval& other) const {
  return leftEnd_ == other.leftEnd_ && leftEndIncluded_ == other.leftEndIncluded_ &&
         rightEnd_ == other.rightEnd_ && rightEndIncluded_ == other.rightEndIncluded_;
}

void BINStringInterval::Display(std::ostream& os) const {
  os << "BINStringInterval: " << (leftEndIncluded_ ? "[ " : "( ") << leftEnd_ << ", " << rightEnd_
     << (rightEndIncluded_ ? " ]" : " )") << std::endl;
}
