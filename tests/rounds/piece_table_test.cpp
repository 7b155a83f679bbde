#include "rounds/piece_table.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace MCBinning {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

PieceTable threePieces() {
  PieceTable pieces;
  pieces.Append(0.0, 1.0, std::vector<ClassWeight>{{0, 5}, {2, 1}});
  pieces.Append(1.0, 1.0, std::vector<ClassWeight>{{1, 2}});
  pieces.Append(1.0, 3.0, std::vector<ClassWeight>{{0, 4}});
  return pieces;
}

TEST(PieceTableTest, PiecesCarryTheirClassesAndTheSumOfThem) {
  const PieceTable pieces = threePieces();
  ASSERT_EQ(pieces.Size(), 3U);
  EXPECT_TRUE(pieces[0].IsStretch());
  EXPECT_FALSE(pieces[1].IsStretch());
  EXPECT_EQ(pieces[0].weight, 6.0);
  ASSERT_EQ(pieces.ClassWeights(0).size(), 2U);
  EXPECT_EQ(pieces.ClassWeights(0)[1].code, 2U);
  EXPECT_EQ(pieces.ClassWeights(2)[0].weight, 4.0);
  EXPECT_EQ(pieces.Count(3), (ClassCounts{12, 9, 2, 1}));
}

TEST(PieceTableTest, PieceWithoutWeightIsLeftOut) {
  PieceTable pieces;
  pieces.Append(0.0, 1.0, {});
  EXPECT_EQ(pieces.Size(), 0U);
  EXPECT_FALSE(pieces.HasStretch());
  EXPECT_EQ(pieces.Count(2), (ClassCounts{0, 0, 0}));
}

TEST(PieceTableTest, PartHoldsSomeOfThePieces) {
  const PieceTable part = threePieces().Part(1, 3);
  ASSERT_EQ(part.Size(), 2U);
  EXPECT_EQ(part[0].low, 1.0);
  EXPECT_EQ(part.Count(3), (ClassCounts{6, 4, 2, 0}));
  EXPECT_FALSE(threePieces().Part(1, 2).HasStretch());
  EXPECT_TRUE(part.HasStretch());
}

TEST(PieceTableTest, WishedWeightIsThatOfStretchesOfWhichSomethingIsWished) {
  PieceTable pieces = threePieces();
  EXPECT_EQ(pieces.WishedWeight(), 0.0);
  pieces.WishValues(0);
  EXPECT_EQ(pieces.WishedWeight(), 6.0);
  pieces.WishParts(2, 7);
  EXPECT_EQ(pieces.WishedWeight(), 10.0);
  EXPECT_EQ(pieces[2].parts, 7U);
}

TEST(PieceTableTest, OuterStretchesStandForTheExtremesWhenTightened) {
  PieceTable pieces;
  pieces.Append(-kInfinity, 1.0, std::vector<ClassWeight>{{0, 5}});
  pieces.Append(1.0, 2.0, std::vector<ClassWeight>{{0, 5}, {1, 1}});
  pieces.Append(2.0, kInfinity, std::vector<ClassWeight>{{1, 5}});
  pieces.Tighten(-7.5, 12.5);
  const auto rows = pieces.Rows();
  ASSERT_EQ(rows.size(), 4U);
  EXPECT_EQ(rows[0].value, -7.5);
  EXPECT_GT(rows[1].value, 1.0);
  EXPECT_LT(rows[1].value, 2.0);
  EXPECT_EQ(rows[2].value, rows[1].value);
  EXPECT_EQ(rows[2].code, 1);
  EXPECT_EQ(rows[2].weight, 1.0);
  EXPECT_EQ(rows[3].value, 12.5);
}

TEST(PieceTableTest, TighteningLeavesValuesAlone) {
  PieceTable pieces;
  pieces.Tighten(1.0, 2.0);
  EXPECT_EQ(pieces.Size(), 0U);
  pieces.Append(4.0, 4.0, std::vector<ClassWeight>{{0, 5}});
  pieces.Tighten(4.0, 4.0);
  EXPECT_EQ(pieces[0].low, 4.0);
  EXPECT_EQ(pieces[0].high, 4.0);
}

}  // namespace
}  // namespace MCBinning
