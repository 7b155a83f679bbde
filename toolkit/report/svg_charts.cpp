#include "toolkit/report/svg_charts.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "toolkit/report/markup.h"

namespace mcbin {
namespace {

constexpr double kWidth = 360.0;
constexpr double kCharacterWidth = 6.8;  // Of a digit at the charts' font size, on the wide side.

constexpr double kPlotLeft = 4.0;
constexpr double kPlotWidth = kWidth - 2 * kPlotLeft;
constexpr double kUpperTextBase = 11.0;
constexpr double kPlotTop = 32.0;
constexpr double kPlotBottom = 160.0;
constexpr double kLowerTextBase = 175.0;
constexpr std::size_t kCrowdedBars = 40;
constexpr double kHistogramHeight = 180.0;

constexpr double kWeightLeft = 114.0;
constexpr double kWeightLength = 34.0;
constexpr double kWeightTextWidth = 42.0;
constexpr double kSharesLeft = 198.0;
constexpr double kSharesWidth = kWidth - kSharesLeft;
constexpr double kHeadingHeight = 19.0;
constexpr double kRowHeight = 20.0;
constexpr double kThinRowHeight = 3.0;
constexpr double kRowsHeight = 800.0;
constexpr double kTextHeight = 14.0;
constexpr double kApart = 9.0;
constexpr double kNarrowestLabelled = 34.0;

std::string units(double value) {
  if (!std::isfinite(value)) return "0";
  const double rounded = std::round(value * 100.0) / 100.0;
  return fmt::format("{}", rounded == 0.0 ? 0.0 : rounded);
}

double textWidth(const std::string& text) {
  return kCharacterWidth * static_cast<double>(text.size());
}

void openChart(Markup& svg, const ChartNames& names, double height) {
  svg.Open("svg", {{"viewBox", "0 0 " + units(kWidth) + " " + units(height)},
                   {"role", "img"},
                   {"aria-labelledby", names.id + "t " + names.id + "d"}});
  svg.Element("title", names.title, {{"id", names.id + "t"}});
  svg.Element("desc", names.description, {{"id", names.id + "d"}}).LineEnd();
}

void addBar(Markup& svg, const char* style, double x, double y, double width, double height) {
  svg.Empty("rect", {{"class", style},
                     {"x", units(x)},
                     {"y", units(y)},
                     {"width", units(width)},
                     {"height", units(height)}});
}

void addText(Markup& svg, const std::string& text, double x, double y, const char* style) {
  svg.Element("text", text, {{"class", style}, {"x", units(x)}, {"y", units(y)}});
}

void addLine(Markup& svg, const char* style, double x1, double y1, double x2, double y2) {
  svg.Empty("line", {{"class", style},
                     {"x1", units(x1)},
                     {"y1", units(y1)},
                     {"x2", units(x2)},
                     {"y2", units(y2)}});
}

double plotX(double at) { return kPlotLeft + kPlotWidth * at; }

/// Texts on one line, none over another.
class TextLine {
 public:
  /// The middle of a text as near to `x` as the chart's edges allow.
  static double MiddleOf(const std::string& text, double x) {
    const double half = textWidth(text) / 2.0;
    return std::max(half, std::min(kWidth - half, x));
  }

  bool Takes(const std::string& text, double x) {
    const double half = textWidth(text) / 2.0;
    const double middle = MiddleOf(text, x);
    for (const auto& [left, right] : taken_) {
      if (middle - half < right + kCharacterWidth && middle + half > left - kCharacterWidth) {
        return false;
      }
    }
    taken_.emplace_back(middle - half, middle + half);
    return true;
  }

 private:
  std::vector<std::pair<double, double>> taken_;
};

/// `crowded`: only the cuts that have room for their text get a line.
void addMarks(Markup& svg, const std::vector<Histogram::Mark>& marks, bool crowded) {
  TextLine below;
  TextLine above;
  for (const Histogram::Mark& mark : marks) {
    const double x = plotX(mark.at);
    const double middle = TextLine::MiddleOf(mark.text, x);
    double top = kPlotTop - 4.0;
    double bottom = kPlotBottom;
    if (below.Takes(mark.text, x)) {
      addText(svg, mark.text, middle, kLowerTextBase, "mid");
      bottom += 4.0;
    } else if (mark.cut && above.Takes(mark.text, x)) {
      addText(svg, mark.text, middle, kUpperTextBase, "mid");
      top = kUpperTextBase + 4.0;
    } else if (crowded) {
      continue;
    }
    if (mark.cut) addLine(svg, "cut", x, top, x, bottom);
  }
}

double rowHeightOf(const ShareChart& chart) {
  const double rows = static_cast<double>(std::max<std::size_t>(chart.rows.size(), 1));
  return std::max(kThinRowHeight, std::min(kRowHeight, kRowsHeight / rows));
}

std::string percentText(double share) { return fmt::format("{:.0f}%", 100.0 * share); }

void addShares(Markup& svg, const std::vector<double>& shares, double y, double height) {
  double x = kSharesLeft;
  for (std::size_t c = 0; c < shares.size(); ++c) {
    const double width = kSharesWidth * shares[c];
    if (width <= 0.0) continue;
    const std::string style = fmt::format("s c{}", c);
    addBar(svg, style.c_str(), x, y, width, height);
    if (width >= kNarrowestLabelled && height >= kTextHeight) {
      addText(svg, percentText(shares[c]), x + width / 2.0, y + height - 4.0,
              fmt::format("mid t{}", c).c_str());
    }
    x += width;
  }
}

void addRow(Markup& svg, const ShareChart& chart, const ShareChart::Row& row, double y,
            double height, bool withTexts) {
  const double bar = height * (height < kTextHeight ? 1.0 : 0.8);
  svg.Open("g").Element("title", row.tooltip);
  const double full =
      chart.classHeading.empty() ? kWidth - kWeightLeft - kWeightTextWidth : kWeightLength;
  const double length = row.length > 0.0 ? std::max(0.5, full * row.length) : 0.0;
  if (length > 0.0) addBar(svg, "bar", kWeightLeft, y, length, bar);
  if (withTexts) {
    // The text of a thin row would lie over the bars of the next ones.
    const double end = kWeightLeft + (height < kTextHeight ? full : length);
    const double base = y + std::max(bar - 4.0, kTextHeight / 2.0);
    addText(svg, row.label, 0.0, base, "lab");
    addText(svg, row.weight, end + 3.0, base, "lab");
  }
  addShares(svg, row.classShares, y, bar);
  svg.Close().LineEnd();
}

std::string classFill(std::size_t position, std::size_t count) {
  constexpr double kLightest = 90.0;
  constexpr double kDarkest = 27.0;
  const double step =
      count > 1 ? (kLightest - kDarkest) / static_cast<double>(count - 1) : kLightest;
  return fmt::format("hsl(212,42%,{:.0f}%)", kLightest - step * static_cast<double>(position));
}

bool isDark(std::size_t position, std::size_t count) { return 2 * position >= count; }

bool isHatched(std::size_t position, std::size_t count) { return count > 3 && position % 2 == 1; }

}  // namespace

std::string histogramSvg(const Histogram& histogram) {
  Markup svg;
  openChart(svg, histogram.names, kHistogramHeight);
  for (const Histogram::Bar& bar : histogram.bars) {
    const double left = plotX(bar.left);
    const double width = plotX(bar.right) - left;
    const double full = kPlotBottom - kPlotTop - kTextHeight;
    const double height = bar.height > 0.0 ? std::max(0.5, full * bar.height) : 0.0;
    svg.Open("g").Element("title", bar.tooltip);
    addBar(svg, "bin", left, kPlotBottom - height, width, height);
    if (width >= textWidth(bar.label) + kCharacterWidth / 2.0) {
      addText(svg, bar.label, left + width / 2.0, kPlotBottom - height - 3.0, "mid");
    }
    svg.Close().LineEnd();
  }
  addLine(svg, "axis", 0.0, kPlotBottom, kWidth, kPlotBottom);
  addMarks(svg, histogram.marks, histogram.bars.size() > kCrowdedBars);
  return std::move(svg).Take();
}

std::string shareChartSvg(const ShareChart& chart) {
  const double rowHeight = rowHeightOf(chart);
  const auto labelled = static_cast<std::size_t>(std::ceil(kTextHeight / rowHeight));
  Markup rows;
  double y = kHeadingHeight;
  bool apart = false;
  for (std::size_t i = 0; i < chart.rows.size(); ++i) {
    const ShareChart::Row& row = chart.rows[i];
    if (row.setApart && !apart) {
      addLine(rows, "axis", 0.0, y + kApart / 2.0, kWidth, y + kApart / 2.0);
      y += kApart;
      apart = true;
    }
    const double height = row.setApart ? kRowHeight : rowHeight;
    addRow(rows, chart, row, y, height, row.setApart || i % labelled == 0);
    y += height;
  }
  Markup svg;
  openChart(svg, chart.names, y);
  addText(svg, chart.weightHeading, kWeightLeft, kTextHeight - 2.0, "lab");
  if (!chart.classHeading.empty()) {
    addText(svg, chart.classHeading, kSharesLeft, kTextHeight - 2.0, "lab");
  }
  svg.LineEnd().Raw(std::move(rows).Take());
  return std::move(svg).Take();
}

std::string inlineBarSvg(double length) {
  Markup svg;
  svg.Open("svg", {{"class", "inline"}, {"viewBox", "0 0 60 10"}, {"aria-hidden", "true"}});
  addBar(svg, "bar", 0.0, 0.0, 60.0 * length, 10.0);
  return std::move(svg).Take();
}

std::string classSampleSvg(std::size_t position) {
  Markup svg;
  svg.Open("svg", {{"class", "sample"}, {"viewBox", "0 0 16 16"}, {"aria-hidden", "true"}});
  addBar(svg, fmt::format("s c{}", position).c_str(), 0.5, 0.5, 15.0, 15.0);
  return std::move(svg).Take();
}

std::string classPatternsSvg(std::size_t count) {
  Markup svg;
  svg.Open("svg", {{"width", "0"}, {"height", "0"}, {"class", "defs"}, {"aria-hidden", "true"}});
  for (std::size_t c = 0; c < count; ++c) {
    if (!isHatched(c, count)) continue;
    svg.Open("pattern", {{"id", fmt::format("h{}", c)},
                         {"width", "5"},
                         {"height", "5"},
                         {"patternUnits", "userSpaceOnUse"},
                         {"patternTransform", "rotate(45)"}});
    svg.Empty("rect", {{"width", "5"}, {"height", "5"}, {"fill", classFill(c, count)}});
    svg.Empty("rect",
              {{"width", "1.3"}, {"height", "5"}, {"fill", isDark(c, count) ? "#fff" : "#222"}});
    svg.Close();
  }
  return std::move(svg).Take();
}

std::string classStyle(std::size_t count) {
  std::string style;
  for (std::size_t c = 0; c < count; ++c) {
    const std::string fill = classFill(c, count);
    style += fmt::format(".c{}{{fill:{}}}\n", c,
                         isHatched(c, count) ? fmt::format("url(#h{})", c) : fill);
    const bool hatched = isHatched(c, count);
    style += fmt::format(".t{}{{fill:{};stroke:{}}}\n", c,
                         isDark(c, count) && !hatched ? "#fff" : "#111", hatched ? "#fff" : fill);
  }
  return style;
}

}  // namespace mcbin
