#ifndef MCBINNING_BENCH_BENCH_DATA_H
#define MCBINNING_BENCH_BENCH_DATA_H

#include <mccomvor/record.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

#include "data/row_order.h"
#include "mcbinning/case_iterator.h"

namespace mcbinning_bench {

enum class Shape { Uniform, HundredValues, TenThousandValues, Money };

/// One attribute of made-up cases with its target, in memory.
struct Column {
  std::vector<double> values;
  std::vector<std::uint16_t> codes;
  std::vector<double> weights;  // fractions, when asked for

  MCBinning::CaseColumns Cases(bool weighted) const {
    return {values, codes.data(), weighted ? weights.data() : nullptr};
  }
};

/// A value of the given shape at a place from 0 to 1 of its distribution.
inline double valueAt(Shape shape, double place) {
  switch (shape) {
    case Shape::HundredValues:
      return std::floor(place * 100.0);
    case Shape::TenThousandValues:
      return std::floor(place * 10000.0);
    case Shape::Money:  // log-logistic, in cents
      return std::round(200000.0 * std::sqrt((place + 1e-9) / (1.0 - place + 1e-9))) / 100.0;
    default:
      return place;
  }
}

/// Where a case of category `code` lies: anywhere, or with an informative target in half of the
/// cases within the category's own stretch.
inline double placeOf(unsigned code, unsigned k, bool informative, std::mt19937_64& random) {
  std::uniform_real_distribution<double> uniform(0.0, 1.0);
  const bool own = informative && random() % 2 == 0;
  return own ? (code + uniform(random)) / k : uniform(random);
}

inline Column makeColumn(Shape shape, std::size_t n, unsigned k, bool informative) {
  std::mt19937_64 random(20240229);
  Column column;
  for (std::size_t i = 0; i < n; ++i) {
    const auto code = static_cast<unsigned>(random() % k);
    column.codes.push_back(static_cast<std::uint16_t>(code));
    column.values.push_back(valueAt(shape, placeOf(code, k, informative, random)));
    column.weights.push_back(static_cast<double>(random() % 1000 + 1) / 997.0);
  }
  return column;
}

/// A host's cases in memory: ten attributes of all shapes, every other one informative, then the
/// target.
class MemoryCases : public BINCaseIterator {
 public:
  static constexpr int kAttributes = 10;

  MemoryCases(std::size_t n, unsigned k) {
    constexpr Shape kShapes[] = {Shape::Uniform, Shape::Money, Shape::TenThousandValues,
                                 Shape::HundredValues, Shape::Uniform};
    std::mt19937_64 random(7);
    records_.reserve(n);
    for (std::size_t i = 0; i < n; ++i) {
      MCCommon::Record& record = records_.emplace_back(kAttributes + 1);
      const auto code = static_cast<unsigned>(random() % k);
      for (int a = 0; a < kAttributes; ++a) {
        record[a] = valueAt(kShapes[a / 2], placeOf(code, k, a % 2 == 0, random));
      }
      record[kAttributes] = code;
    }
  }

  void Restart() { next_ = 0; }
  std::size_t Size() const { return records_.size(); }
  bool HasNext() override { return next_ < records_.size(); }
  const MCCommon::Record* Next() override { return &records_[next_++]; }

 private:
  std::vector<MCCommon::Record> records_;
  std::size_t next_ = 0;
};

/// Cases made as they are asked for, so that a run's memory is the library's alone.
class FlowingCases : public BINCaseIterator {
 public:
  FlowingCases(std::size_t n, bool weighted) : left_(n), weighted_(weighted), record_(3) {}

  bool HasNext() override { return left_ > 0; }
  const MCCommon::Record* Next() override {
    --left_;
    const auto code = static_cast<unsigned>(random_() % 2);
    record_[0] = placeOf(code, 2, true, random_);
    record_[1] = code;
    record_[2] = weighted_ ? static_cast<double>(random_() % 1000 + 1) / 997.0 : 1.0;
    return &record_;
  }

 private:
  std::size_t left_;
  bool weighted_;
  MCCommon::Record record_;
  std::mt19937_64 random_{11};
};

}  // namespace mcbinning_bench

#endif
