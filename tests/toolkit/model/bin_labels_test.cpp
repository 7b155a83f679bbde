#include "toolkit/model/bin_labels.h"

#include <gtest/gtest.h>

#include "tests/toolkit/support/example_model.h"
#include "toolkit/errors.h"
#include "toolkit/model/evidence.h"
#include "toolkit/text/number_text.h"

namespace {

using mcbin::BinLabels;
using mcbin::ClosedSide;
using mcbin::LabelStyle;
using mcbin::Placement;
using Cells = std::vector<std::string>;

constexpr Placement kMissing{Placement::Kind::Missing, 0};
constexpr Placement kUserMissing{Placement::Kind::UserMissing, 0};

BinLabels labelsOf(std::vector<double> cutPoints, ClosedSide side, LabelStyle style) {
  mcbin::Model model;
  model.closedSide = side;
  mcbin::AttributeModel attribute;
  attribute.name = "x";
  attribute.cutPoints = std::move(cutPoints);
  return {model, attribute, style};
}

TEST(BinLabelsTest, IntervalsAreOpenAtInfinity) {
  const std::vector<double> cuts = {3.5, 7.0};
  EXPECT_EQ(mcbin::intervalText(cuts, ClosedSide::Right, 0), "(-inf, 3.5]");
  EXPECT_EQ(mcbin::intervalText(cuts, ClosedSide::Right, 1), "(3.5, 7]");
  EXPECT_EQ(mcbin::intervalText(cuts, ClosedSide::Right, 2), "(7, inf)");
  EXPECT_EQ(mcbin::intervalText(cuts, ClosedSide::Left, 0), "(-inf, 3.5)");
  EXPECT_EQ(mcbin::intervalText(cuts, ClosedSide::Left, 1), "[3.5, 7)");
  EXPECT_EQ(mcbin::intervalText(cuts, ClosedSide::Left, 2), "[7, inf)");
  EXPECT_EQ(mcbin::intervalText({}, ClosedSide::Right, 0), "(-inf, inf)");
}

TEST(BinLabelsTest, Index) {
  const BinLabels labels = labelsOf({1.5, 2}, ClosedSide::Right, LabelStyle::Index);
  EXPECT_EQ(labels.Of({Placement::Kind::Bin, 0}), Cells{"0"});
  EXPECT_EQ(labels.Of({Placement::Kind::Bin, 2}), Cells{"2"});
  EXPECT_EQ(labels.Of(kMissing), Cells{"-1"});
  EXPECT_EQ(labels.Of(kUserMissing), Cells{"-2"});
}

TEST(BinLabelsTest, Interval) {
  const BinLabels labels = labelsOf({1.5, 2}, ClosedSide::Left, LabelStyle::Interval);
  EXPECT_EQ(labels.Of({Placement::Kind::Bin, 1}), Cells{"[1.5, 2)"});
  EXPECT_EQ(labels.Of(kMissing), Cells{"missing"});
  EXPECT_EQ(labels.Of(kUserMissing), Cells{"user-missing"});
}

TEST(BinLabelsTest, Bounds) {
  const BinLabels labels = labelsOf({1.5}, ClosedSide::Right, LabelStyle::Bounds);
  EXPECT_EQ(labels.Of({Placement::Kind::Bin, 0}), (Cells{"-inf", "1.5"}));
  EXPECT_EQ(labels.Of({Placement::Kind::Bin, 1}), (Cells{"1.5", "inf"}));
  EXPECT_EQ(labels.Of(kMissing), (Cells{"", ""}));
  EXPECT_EQ(labels.Of(kUserMissing), (Cells{"", ""}));
}

TEST(BinLabelsTest, EvidenceOfBinsAndMissingCases) {
  const mcbin::Model model = mcbin::testing::exampleModel();
  const BinLabels labels(model, model.attributes[0], LabelStyle::Evidence);
  const auto rows = mcbin::evidenceOf(model, model.attributes[0])->rows;
  const auto text = [&](std::size_t row) {
    return Cells{mcbin::shortestNumber(rows[row].weightOfEvidence)};
  };
  EXPECT_EQ(labels.Of({Placement::Kind::Bin, 2}), text(2));
  EXPECT_EQ(labels.Of(kMissing), text(3));
  EXPECT_EQ(labels.Of(kUserMissing), text(4));
}

TEST(BinLabelsTest, EvidenceNeedsTwoCategories) {
  EXPECT_THROW(labelsOf({1.5}, ClosedSide::Right, LabelStyle::Evidence), mcbin::DataError);
}

TEST(BinLabelsTest, ColumnNames) {
  EXPECT_EQ(mcbin::labelColumns("x", LabelStyle::Evidence, false), Cells{"x_woe"});
  EXPECT_EQ(mcbin::labelColumns("x", LabelStyle::Index, false), Cells{"x_bin"});
  EXPECT_EQ(mcbin::labelColumns("x", LabelStyle::Interval, true), Cells{"x"});
  EXPECT_EQ(mcbin::labelColumns("x", LabelStyle::Bounds, true), (Cells{"x_lower", "x_upper"}));
}

TEST(BinLabelsTest, EveryStyleHasItsName) {
  EXPECT_STREQ(mcbin::nameOf(mcbin::kLabelStyles, LabelStyle::Index), "index");
  EXPECT_STREQ(mcbin::nameOf(mcbin::kLabelStyles, LabelStyle::Interval), "interval");
  EXPECT_STREQ(mcbin::nameOf(mcbin::kLabelStyles, LabelStyle::Bounds), "bounds");
}

}  // namespace
