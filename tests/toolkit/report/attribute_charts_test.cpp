#include "toolkit/report/attribute_charts.h"

#include <gmock/gmock.h>

#include <limits>

#include "tests/toolkit/support/example_model.h"

namespace mcbin {
namespace {

using ::testing::DoubleEq;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Bins of weights 4, 5 and 1 between 0, 1, 6 and 10.
Model plainModel() {
  Model model = testing::exampleModel();
  model.closedSide = ClosedSide::Right;
  AttributeModel& attribute = model.attributes[0];
  attribute.minimum = 0.0;
  attribute.maximum = 10.0;
  attribute.cutPoints = {1.0, 6.0};
  return model;
}

TEST(ShortTexts, AreTheShortestThatReadBackOrHaveFourDigits) {
  EXPECT_THAT(shortTexts({-kInfinity, -20100.0, -0.0, 0.1 + 0.2, 1234567.0, 1e300, kInfinity}),
              ElementsAre("-inf", "-20100", "0", "0.3", "1.235e+06", "1e+300", "inf"));
}

TEST(ShortTexts, NeighboursStayApart) {
  EXPECT_THAT(shortTexts({0.123456781, 0.123456789}), ElementsAre("0.12345678", "0.12345679"));
  EXPECT_THAT(shortTexts({1.0, 1.0 + 0x1p-52}), ElementsAre("1", "1.0000000000000002"));
}

TEST(HistogramOf, TheAreaIsTheWeight) {
  const Model model = plainModel();
  ASSERT_TRUE(hasDrawableWidths(model.attributes[0]));
  const Histogram histogram = histogramOf(model, model.attributes[0], "x");
  ASSERT_THAT(histogram.bars, SizeIs(3));
  EXPECT_THAT(histogram.bars[1].left, DoubleEq(0.1));
  EXPECT_THAT(histogram.bars[1].right, DoubleEq(0.6));
  EXPECT_THAT(histogram.bars[0].height, DoubleEq(1.0));
  EXPECT_THAT(histogram.bars[1].height, DoubleEq(0.25));
  EXPECT_THAT(histogram.bars[2].height, DoubleEq(0.0625));
  EXPECT_EQ(histogram.bars[1].label, "38.5%");
  EXPECT_EQ(histogram.bars[1].tooltip, "(1, 6]: 5 (38.5%); no 0 (0.0%); yes 5 (100.0%)");
}

TEST(HistogramOf, CutsAreMarkedFirstThenTheEnds) {
  const Model model = plainModel();
  const std::vector<Histogram::Mark> marks = histogramOf(model, model.attributes[0], "x").marks;
  ASSERT_THAT(marks, SizeIs(4));
  EXPECT_EQ(marks[0].text, "1");
  EXPECT_THAT(marks[0].at, DoubleEq(0.1));
  EXPECT_TRUE(marks[1].cut);
  EXPECT_EQ(marks[2].text, "0");
  EXPECT_EQ(marks[3].text, "10");
  EXPECT_FALSE(marks[3].cut);
}

TEST(HistogramOf, BarsAreEquallyWideWhereWidthsCannotBeDrawn) {
  const Model model = testing::exampleModel();
  const AttributeModel& endless = model.attributes[0];
  ASSERT_FALSE(hasDrawableWidths(endless));
  const Histogram histogram = histogramOf(model, endless, "x");
  EXPECT_THAT(histogram.bars[1].left, DoubleEq(1.0 / 3.0));
  EXPECT_THAT(histogram.bars[1].right, DoubleEq(2.0 / 3.0));
  EXPECT_THAT(histogram.bars[0].height, DoubleEq(0.8));
  EXPECT_THAT(histogram.bars[1].height, DoubleEq(1.0));
}

TEST(HasDrawableWidths, NeedsEveryBinWideEnoughAndFinite) {
  AttributeModel attribute = plainModel().attributes[0];
  attribute.minimum = 1.0;  // The lowest bin holds nothing but its cut point.
  EXPECT_FALSE(hasDrawableWidths(attribute));
  attribute.minimum = 0.92;
  EXPECT_FALSE(hasDrawableWidths(attribute));
  attribute.minimum = 0.9;
  EXPECT_TRUE(hasDrawableWidths(attribute));
  attribute.maximum.reset();
  EXPECT_FALSE(hasDrawableWidths(attribute));
  attribute.minimum = -std::numeric_limits<double>::max();
  attribute.maximum = std::numeric_limits<double>::max();
  EXPECT_FALSE(hasDrawableWidths(attribute));
}

TEST(ShareChartOf, MissingAndUserMissingAreSetApart) {
  const Model model = plainModel();
  const ShareChart chart = shareChartOf(model, model.attributes[0], "x");
  ASSERT_THAT(chart.rows, SizeIs(5));
  EXPECT_EQ(chart.rows[0].label, "\u2264 1");
  EXPECT_EQ(chart.rows[1].label, "(1, 6]");
  EXPECT_EQ(chart.rows[2].label, "> 6");
  EXPECT_FALSE(chart.rows[2].setApart);
  EXPECT_EQ(chart.rows[3].label, "missing");
  EXPECT_TRUE(chart.rows[3].setApart);
  EXPECT_EQ(chart.rows[4].label, "user-missing");
  EXPECT_THAT(chart.rows[0].classShares, ElementsAre(0.75, 0.25));
  EXPECT_THAT(chart.rows[0].length, DoubleEq(0.8));
  EXPECT_EQ(chart.rows[0].weight, "30.8%");
  EXPECT_EQ(chart.classHeading, "class shares");
}

TEST(ShareChartOf, LabelsFollowTheClosedSide) {
  Model model = plainModel();
  model.closedSide = ClosedSide::Left;
  const ShareChart chart = shareChartOf(model, model.attributes[0], "x");
  EXPECT_EQ(chart.rows[0].label, "< 1");
  EXPECT_EQ(chart.rows[1].label, "[1, 6)");
  EXPECT_EQ(chart.rows[2].label, "\u2265 6");
}

TEST(ShareChartOf, ALongLabelGivesWayToTheNumberOfTheBin) {
  Model model = plainModel();
  model.attributes[0].cutPoints = {-123456.789, 123456.789};
  EXPECT_EQ(shareChartOf(model, model.attributes[0], "x").rows[1].label, "bin 1");
}

TEST(ShareChartOf, NoCasesNoShares) {
  const Model model = testing::exampleModel();
  const ShareChart chart = shareChartOf(model, model.attributes[1], "x");
  ASSERT_THAT(chart.rows, SizeIs(1));
  EXPECT_EQ(chart.rows[0].label, "all values");
  EXPECT_EQ(chart.rows[0].length, 0.0);
  EXPECT_EQ(chart.rows[0].weight, "-");
  EXPECT_THAT(chart.rows[0].classShares, IsEmpty());
}

TEST(ShareChartOf, WithoutATargetThereAreNoClasses) {
  Model model = plainModel();
  model.target.reset();
  for (WeightedCounts& bin : model.attributes[0].bins) bin.classWeights.clear();
  const ShareChart chart = shareChartOf(model, model.attributes[0], "x");
  EXPECT_EQ(chart.classHeading, "");
  EXPECT_EQ(chart.names.title, "Bin weights of in\"come");
  EXPECT_EQ(chart.rows[1].tooltip, "(1, 6]: 5 (38.5%)");
}

}  // namespace
}  // namespace mcbin
