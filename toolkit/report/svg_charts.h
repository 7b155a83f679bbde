/// The two charts of a report, as inline SVG. Both are drawn 360 units wide, so that their texts
/// can be read when a page shows them 320 pixels wide, and leave colours to classes of the page's
/// style.
#ifndef MCBIN_TOOLKIT_REPORT_SVG_CHARTS_H
#define MCBIN_TOOLKIT_REPORT_SVG_CHARTS_H

#include <string>
#include <vector>

namespace mcbin {

/// The names that a chart has for readers who do not see it. `id` must be unique in the page.
struct ChartNames {
  std::string id;
  std::string title;
  std::string description;
};

/// Bars side by side over an axis from 0 to 1.
struct Histogram {
  struct Bar {
    double left = 0.0;
    double right = 0.0;
    double height = 0.0;  ///< 1 is the full height.
    std::string label;    ///< Above the bar, left out when the bar is narrower.
    std::string tooltip;
  };
  struct Mark {
    double at = 0.0;
    std::string text;
    bool cut = false;  ///< Drawn as a line through the bars.
  };
  ChartNames names;
  std::vector<Bar> bars;
  std::vector<Mark>
      marks;  ///< A mark that has no room for its text stays without; first come first.
};

std::string histogramSvg(const Histogram& histogram);

/// Rows of a weight bar and, where there are classes, a bar of class shares.
struct ShareChart {
  struct Row {
    std::string label;
    double length = 0.0;  ///< Of the weight bar; 1 is the full length.
    std::string weight;
    std::vector<double> classShares;  ///< Sum to 1; empty when there is nothing to share.
    bool setApart = false;            ///< Below a line.
    std::string tooltip;
  };
  ChartNames names;
  std::string weightHeading;
  std::string classHeading;  ///< Empty when there are no classes.
  std::vector<Row> rows;     ///< When there are many they get thin, and not each has its texts.
};

std::string shareChartSvg(const ShareChart& chart);

/// A horizontal bar as high as a line of text; 1 is the full length.
std::string inlineBarSvg(double length);

/// The sample of a class in a legend.
std::string classSampleSvg(std::size_t position);

/// Definitions and style rules for `count` classes: lightness falls from class to class, and from
/// four on every other class is hatched, so that they differ without colour.
std::string classPatternsSvg(std::size_t count);
std::string classStyle(std::size_t count);

}  // namespace mcbin

#endif
