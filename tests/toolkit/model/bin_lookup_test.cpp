#include "toolkit/model/bin_lookup.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace mcbin {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
const std::vector<double> kCuts = {1.0, 2.5};

TEST(BinLookup, AValueOnACutPointGoesToTheClosedSide) {
  EXPECT_EQ(binOf(kCuts, ClosedSide::Right, 1.0), 0U);
  EXPECT_EQ(binOf(kCuts, ClosedSide::Left, 1.0), 1U);
  EXPECT_EQ(binOf(kCuts, ClosedSide::Right, 2.5), 1U);
  EXPECT_EQ(binOf(kCuts, ClosedSide::Left, 2.5), 2U);
}

TEST(BinLookup, ValuesBesideCutPointsAndBeyondTheData) {
  for (ClosedSide side : {ClosedSide::Right, ClosedSide::Left}) {
    EXPECT_EQ(binOf(kCuts, side, std::nextafter(1.0, 0.0)), 0U);
    EXPECT_EQ(binOf(kCuts, side, std::nextafter(1.0, 2.0)), 1U);
    EXPECT_EQ(binOf(kCuts, side, -kInfinity), 0U);
    EXPECT_EQ(binOf(kCuts, side, kInfinity), 2U);
    EXPECT_EQ(binOf({}, side, 7.0), 0U);
  }
}

TEST(BinLookup, MissingGoesBeforeUserMissingBeforeBins) {
  AttributeModel attribute;
  attribute.cutPoints = kCuts;
  attribute.missing.values = {-1.0};
  attribute.missing.range = {90.0, 99.0};
  EXPECT_EQ(place(attribute, ClosedSide::Right, std::nullopt).kind, Placement::Kind::Missing);
  for (double value : {-1.0, 90.0, 95.5, 99.0}) {
    EXPECT_EQ(place(attribute, ClosedSide::Right, value).kind, Placement::Kind::UserMissing);
  }
  const Placement placement = place(attribute, ClosedSide::Right, 89.0);
  EXPECT_EQ(placement.kind, Placement::Kind::Bin);
  EXPECT_EQ(placement.bin, 2U);
}

TEST(BinLookup, OuterBinsReachToInfinity) {
  EXPECT_EQ(boundsOf(kCuts, 0).lower, -kInfinity);
  EXPECT_EQ(boundsOf(kCuts, 0).upper, 1.0);
  EXPECT_EQ(boundsOf(kCuts, 1).lower, 1.0);
  EXPECT_EQ(boundsOf(kCuts, 2).upper, kInfinity);
  EXPECT_EQ(boundsOf({}, 0).lower, -kInfinity);
  EXPECT_EQ(boundsOf({}, 0).upper, kInfinity);
}

}  // namespace
}  // namespace mcbin
