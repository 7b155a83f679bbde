#include "supervised/bins.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace MCBinning {
namespace {

TEST(BinsTest, EachBinHasItsOwnClassCounts) {
  const Bins bins = {{1.5}, {3, 1, 2, 5, 5, 0}, 3};
  ASSERT_EQ(bins.Size(), 2U);
  EXPECT_EQ(bins.Counts(0)[2], 2.0);
  EXPECT_EQ(bins.Counts(1)[0], 5.0);
  EXPECT_EQ(Bins().Size(), 0U);
}

TEST(BinsTest, RowsHaveOneRowPerBinAndOneEmptyRowWithoutBins) {
  const Bins bins = {{1.5}, {3, 1, 2, 5, 5, 0}, 3};
  EXPECT_EQ(bins.Rows(), (std::vector<std::vector<double>>{{3, 1, 2}, {5, 5, 0}}));
  EXPECT_EQ(Bins().Rows(), std::vector<std::vector<double>>{{}});
}

TEST(BinsTest, ModelEntropyWeighsTheBinsByTheirShareOfTheTotalGiven) {
  const Bins bins = {{1.5}, {4, 2, 2, 4, 1, 3}, 3};
  const double second = -(0.25 * std::log2(0.25) + 0.75 * std::log2(0.75));
  EXPECT_EQ(modelEntropy(bins, 8.0), (4 * 1.0 + 4 * second) / 8.0);
  EXPECT_EQ(modelEntropy(bins, 16.0), (4 * 1.0 + 4 * second) / 16.0);
}

TEST(BinsTest, ModelEntropyOfPureBinsIsPositiveZero) {
  const double entropy = modelEntropy({{1.5}, {4, 0, 4, 4, 4, 0}, 3}, 8.0);
  EXPECT_EQ(entropy, 0.0);
  EXPECT_FALSE(std::signbit(entropy));
}

}  // namespace
}  // namespace MCBinning
