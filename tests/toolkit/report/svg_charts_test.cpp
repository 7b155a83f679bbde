#include "toolkit/report/svg_charts.h"

#include <gmock/gmock.h>

#include <limits>
#include <regex>
#include <string>
#include <vector>

namespace mcbin {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

/// What a chart writes, in order.
std::vector<std::string> textsOf(const std::string& svg) {
  static const std::regex kText("<text [^>]*>([^<]*)</text>");
  std::vector<std::string> texts;
  for (std::sregex_iterator match(svg.begin(), svg.end(), kText), end; match != end; ++match) {
    texts.push_back((*match)[1]);
  }
  return texts;
}

std::size_t countOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

TEST(HistogramSvg, BarsCutsAndEnds) {
  Histogram histogram;
  histogram.names = {"a", "Weight of <x>", "Two bins"};
  histogram.bars = {{0.0, 0.25, 0.5, "33.3%", "low"}, {0.25, 1.0, 1.0, "66.7%", "high"}};
  histogram.marks = {{0.25, "2.5", true}, {0.0, "1", false}, {1.0, "7", false}};
  EXPECT_EQ(histogramSvg(histogram),
            "<svg viewBox=\"0 0 360 180\" role=\"img\" aria-labelledby=\"at ad\">"
            "<title id=\"at\">Weight of &lt;x&gt;</title><desc id=\"ad\">Two bins</desc>\n"
            "<g><title>low</title>"
            "<rect class=\"bin\" x=\"4\" y=\"103\" width=\"88\" height=\"57\"/>"
            "<text class=\"mid\" x=\"48\" y=\"100\">33.3%</text></g>\n"
            "<g><title>high</title>"
            "<rect class=\"bin\" x=\"92\" y=\"46\" width=\"264\" height=\"114\"/>"
            "<text class=\"mid\" x=\"224\" y=\"43\">66.7%</text></g>\n"
            "<line class=\"axis\" x1=\"0\" y1=\"160\" x2=\"360\" y2=\"160\"/>"
            "<text class=\"mid\" x=\"92\" y=\"175\">2.5</text>"
            "<line class=\"cut\" x1=\"92\" y1=\"28\" x2=\"92\" y2=\"164\"/>"
            "<text class=\"mid\" x=\"4\" y=\"175\">1</text>"
            "<text class=\"mid\" x=\"356\" y=\"175\">7</text></svg>");
}

TEST(HistogramSvg, ANarrowBarHasNoLabel) {
  Histogram histogram;
  histogram.bars = {{0.0, 0.1, 1.0, "90.0%", ""}, {0.1, 1.0, 0.0, "10.0%", ""}};
  EXPECT_THAT(textsOf(histogramSvg(histogram)), ElementsAre("10.0%"));
}

TEST(HistogramSvg, TextsOfCutsMoveUpOrStayAwayBeforeTheyOverlap) {
  Histogram histogram;
  histogram.bars = {{0.0, 1.0, 1.0, "", ""}};
  histogram.marks = {
      {0.50, "11111", true}, {0.51, "22222", true}, {0.52, "33333", true}, {0.5, "0", false}};
  const std::string svg = histogramSvg(histogram);
  EXPECT_THAT(svg, HasSubstr("y=\"175\">11111<"));
  EXPECT_THAT(svg, HasSubstr("y=\"11\">22222<"));
  EXPECT_THAT(textsOf(svg), ElementsAre("", "11111", "22222"));
  EXPECT_EQ(countOf(svg, "class=\"cut\""), 3);
}

TEST(HistogramSvg, AmongManyBarsOnlyCutsWithATextHaveALine) {
  Histogram histogram;
  for (int bar = 0; bar < 100; ++bar) {
    histogram.bars.push_back({bar / 100.0, (bar + 1) / 100.0, 1.0, "1.0%", ""});
    histogram.marks.push_back({bar / 100.0, "12345", true});
  }
  const std::string svg = histogramSvg(histogram);
  EXPECT_EQ(countOf(svg, "class=\"cut\""), countOf(svg, ">12345<"));
  EXPECT_LT(countOf(svg, "class=\"cut\""), 20);
}

TEST(HistogramSvg, TextsStayInsideTheChart) {
  Histogram histogram;
  histogram.marks = {{0.0, "-12345.6789", false}};
  EXPECT_THAT(histogramSvg(histogram), HasSubstr("<text class=\"mid\" x=\"37.4\""));
}

TEST(ShareChartSvg, RowsOfWeightsAndShares) {
  ShareChart chart;
  chart.names = {"s", "t", "d"};
  chart.weightHeading = "weight";
  chart.classHeading = "class shares";
  chart.rows = {{"> 1", 1.0, "60.0%", {0.75, 0.25}, false, "tip"},
                {"missing", 0.5, "30.0%", {0.0, 1.0}, true, "gone"}};
  EXPECT_EQ(shareChartSvg(chart),
            "<svg viewBox=\"0 0 360 68\" role=\"img\" aria-labelledby=\"st sd\">"
            "<title id=\"st\">t</title><desc id=\"sd\">d</desc>\n"
            "<text class=\"lab\" x=\"114\" y=\"12\">weight</text>"
            "<text class=\"lab\" x=\"198\" y=\"12\">class shares</text>\n"
            "<g><title>tip</title>"
            "<rect class=\"bar\" x=\"114\" y=\"19\" width=\"34\" height=\"16\"/>"
            "<text class=\"lab\" x=\"0\" y=\"31\">&gt; 1</text>"
            "<text class=\"lab\" x=\"151\" y=\"31\">60.0%</text>"
            "<rect class=\"s c0\" x=\"198\" y=\"19\" width=\"121.5\" height=\"16\"/>"
            "<text class=\"mid t0\" x=\"258.75\" y=\"31\">75%</text>"
            "<rect class=\"s c1\" x=\"319.5\" y=\"19\" width=\"40.5\" height=\"16\"/>"
            "<text class=\"mid t1\" x=\"339.75\" y=\"31\">25%</text></g>\n"
            "<line class=\"axis\" x1=\"0\" y1=\"43.5\" x2=\"360\" y2=\"43.5\"/>"
            "<g><title>gone</title>"
            "<rect class=\"bar\" x=\"114\" y=\"48\" width=\"17\" height=\"16\"/>"
            "<text class=\"lab\" x=\"0\" y=\"60\">missing</text>"
            "<text class=\"lab\" x=\"134\" y=\"60\">30.0%</text>"
            "<rect class=\"s c1\" x=\"198\" y=\"48\" width=\"162\" height=\"16\"/>"
            "<text class=\"mid t1\" x=\"279\" y=\"60\">100%</text></g>\n"
            "</svg>");
}

TEST(ShareChartSvg, WithoutClassesTheWeightsTakeTheWidth) {
  ShareChart chart;
  chart.weightHeading = "weight";
  chart.rows = {{"a", 1.0, "100.0%", {}, false, ""}};
  const std::string svg = shareChartSvg(chart);
  EXPECT_THAT(svg, HasSubstr("<rect class=\"bar\" x=\"114\" y=\"19\" width=\"204\""));
  EXPECT_THAT(textsOf(svg), ElementsAre("weight", "a", "100.0%"));
}

TEST(ShareChartSvg, ManyRowsGetThinAndShareTexts) {
  ShareChart chart;
  chart.classHeading = "class shares";
  for (int row = 0; row < 300; ++row) {
    chart.rows.push_back({std::to_string(row), 0.5, "w", {0.5, 0.5}, false, ""});
  }
  const std::string svg = shareChartSvg(chart);
  EXPECT_THAT(svg, HasSubstr("viewBox=\"0 0 360 919\""));
  EXPECT_THAT(svg, Not(HasSubstr("50%")));
  EXPECT_EQ(countOf(svg, ">w</text>"), 60);
}

TEST(ShareChartSvg, NothingToShare) {
  ShareChart chart;
  chart.classHeading = "class shares";
  chart.rows = {{"all values", 0.0, "-", {}, false, ""}};
  EXPECT_THAT(shareChartSvg(chart), Not(HasSubstr("<rect")));
}

TEST(ShareChartSvg, NumbersThatAreNoneDrawNothingWrong) {
  ShareChart chart;
  chart.rows = {{"x", std::numeric_limits<double>::infinity(), "", {}, false, ""}};
  EXPECT_THAT(shareChartSvg(chart), HasSubstr("width=\"0\""));
}

TEST(ClassStyle, TwoClassesDifferInLightness) {
  EXPECT_EQ(classStyle(2),
            ".c0{fill:hsl(212,42%,90%)}\n.t0{fill:#111;stroke:hsl(212,42%,90%)}\n"
            ".c1{fill:hsl(212,42%,27%)}\n.t1{fill:#fff;stroke:hsl(212,42%,27%)}\n");
  EXPECT_EQ(countOf(classPatternsSvg(2), "<pattern"), 0);
  EXPECT_THAT(classStyle(0), IsEmpty());
}

TEST(ClassStyle, OfManyClassesEveryOtherIsHatched) {
  const std::string style = classStyle(4);
  EXPECT_THAT(style, HasSubstr(".c1{fill:url(#h1)}\n.t1{fill:#111;stroke:#fff}\n"));
  EXPECT_THAT(style, HasSubstr(".c2{fill:hsl(212,42%,48%)}\n.t2{fill:#fff;"));
  EXPECT_THAT(classPatternsSvg(4), HasSubstr("<pattern id=\"h1\" "));
  EXPECT_EQ(countOf(classPatternsSvg(4), "<pattern"), 2);
}

}  // namespace
}  // namespace mcbin
