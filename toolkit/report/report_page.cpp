#include "toolkit/report/report_page.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <vector>

#include "toolkit/model/evidence.h"
#include "toolkit/report/attribute_charts.h"
#include "toolkit/report/class_grouping.h"
#include "toolkit/report/html_table.h"
#include "toolkit/report/markup.h"
#include "toolkit/report/page_frame.h"
#include "toolkit/report/svg_charts.h"
#include "toolkit/tables/model_tables.h"
#include "toolkit/text/number_text.h"

namespace mcbin {
namespace {

std::size_t classCountOf(const Model& model) {
  return model.target ? model.target->categories.size() : 0;
}

std::string titleOf(const Model& model) {
  const std::string bins = "Bins of " + model.source.data;
  return model.target ? bins + " by " + model.target->name : bins;
}

/// " Neighbouring bins were joined until ...", empty without limits.
std::string limitsText(const BinLimits& limits) {
  std::vector<std::string> texts;
  if (limits.minShare > 0.0) {
    texts.push_back("each held a share of " + shortestNumber(limits.minShare));
  }
  if (limits.minWeight > 0.0) texts.push_back("each weighed " + weightText(limits.minWeight));
  if (limits.maxBins > 0) texts.push_back(fmt::format("there were at most {}", limits.maxBins));
  if (texts.empty()) return "";
  return fmt::format(" Neighbouring bins were joined until {}.", fmt::join(texts, " and "));
}

/// How bins are closed, and what shaped them besides the data.
std::string optionsText(const Model& model) {
  const FitOptions& options = model.options;
  std::string text = model.closedSide == ClosedSide::Right
                         ? "A value on a cut point belongs to the bin below it: (a, b]."
                         : "A value on a cut point belongs to the bin above it: [a, b).";
  if (!model.target) return fmt::format("{} {} bins were asked for.", text, options.bins);
  if (options.distinctValueThreshold > 0) {
    text += fmt::format(
        " Attributes with more than {} distinct values were first reduced to {} bins"
        " of equal weight.",
        options.distinctValueThreshold, options.bins);
  }
  if (options.smallBinThreshold > 0.0) {
    text += fmt::format(" Inner bins lighter than {} of their lighter neighbour were merged.",
                        shortestNumber(options.smallBinThreshold));
  }
  text += limitsText(options.limits);
  if (eventOf(model)) {
    text += fmt::format(
        " Weight of evidence (WoE) is the logarithm of a bin's share of all non-events over its"
        " share of all events, with {} added to both counts where one of them is 0.",
        shortestNumber(model.target->evidence.value_or(EvidenceOptions()).adjustment));
  }
  return text;
}

void addLegend(Markup& html, const Model& model) {
  html.Open("ul", {{"class", "legend"}, {"aria-label", "Classes of " + model.target->name}});
  for (std::size_t c = 0; c < classCountOf(model); ++c) {
    html.Open("li").Raw(classSampleSvg(c)).Text(model.target->categories[c]).Close();
  }
  html.Close().LineEnd();
}

std::string sectionId(std::size_t rank) { return fmt::format("a{}", rank); }

void addRanking(Markup& html, const Model& model, const std::vector<std::size_t>& ranked) {
  html.Element("h2", model.target ? "Attributes by gain over all cases" : "Attributes",
               {{"id", "attributes"}});
  html.LineEnd();
  const TextTable table = rankingTable(model);
  const std::vector<std::string>& header = table.Rows().front();
  const auto gainColumn = static_cast<std::size_t>(
      std::find(header.begin(), header.end(), kGainOverAll) - header.begin());
  const double largest = ranked.empty() ? 0.0 : model.attributes[ranked.front()].GainOverAllCases();
  addTable(html, table, "Attributes", [&](Markup& cell, std::size_t row, std::size_t column) {
    const AttributeModel& attribute = model.attributes[ranked[row - 1]];
    if (column == 1) {
      cell.Element("a", attribute.name, {{"href", "#" + sectionId(row)}});
      return true;
    }
    const double gain = attribute.GainOverAllCases();
    if (column == gainColumn && gain > 0.0) cell.Raw(inlineBarSvg(gain / largest));
    return false;
  });
}

std::string numberList(const std::vector<double>& values) {
  std::string text;
  for (const double value : values) {
    if (!text.empty()) text += ", ";
    text += shortestNumber(value);
  }
  return text;
}

std::string missingRulesText(const MissingRules& rules) {
  std::string text = numberList(rules.values);
  if (rules.range) {
    text += fmt::format("{}{} to {}", text.empty() ? "" : ", ", shortestNumber(rules.range->first),
                        shortestNumber(rules.range->second));
  }
  return text;
}

void addAttributeText(Markup& html, const AttributeModel& attribute) {
  std::string text = binningSummary(attribute);
  if (attribute.minimum && attribute.maximum) {
    text += fmt::format(", values from {} to {}", shortestNumber(*attribute.minimum),
                        shortestNumber(*attribute.maximum));
  }
  html.Element("p", text).LineEnd();
  if (!attribute.status.reason.empty()) {
    html.Element("p", attribute.status.reason, {{"class", "note"}}).LineEnd();
  }
  const std::string declared = missingRulesText(attribute.missing);
  if (!declared.empty()) html.Element("p", "Declared missing: " + declared).LineEnd();
}

void addHistogram(Markup& html, const Model& model, const AttributeModel& attribute,
                  const std::string& id) {
  const char* const caption =
      hasDrawableWidths(attribute)
          ? "Distribution: the area of a bar is the weight of its bin. Dashed lines are the cut "
            "points."
          : "Distribution: the height of a bar is the weight of its bin. Widths are not to scale, "
            "as some bins are too narrow to see or have no end. Dashed lines are the cut points.";
  html.Open("figure").Element("figcaption", caption);
  html.Raw(histogramSvg(histogramOf(model, attribute, id))).Close().LineEnd();
}

void addShareChart(Markup& html, const Model& model, const AttributeModel& attribute,
                   const std::string& id) {
  html.Open("figure");
  if (model.target) {
    html.Element("figcaption", "Share of the weight, and how it splits over the classes of " +
                                   model.target->name + ":");
    addLegend(html, model);
  } else {
    html.Element("figcaption", "Share of the weight in each bin.");
  }
  html.Raw(shareChartSvg(shareChartOf(model, attribute, id))).Close().LineEnd();
}

void addAttribute(Markup& html, const Model& model, const AttributeModel& attribute,
                  std::size_t rank) {
  const std::string id = sectionId(rank);
  html.Open("section", {{"id", id}}).LineEnd();
  html.Element("h2", fmt::format("{}. {}", rank, attribute.name)).LineEnd();
  addAttributeText(html, attribute);
  html.Open("div", {{"class", "charts"}}).LineEnd();
  if (!attribute.cutPoints.empty()) addHistogram(html, model, attribute, id + "h");
  addShareChart(html, model, attribute, id + "s");
  html.Close().LineEnd();
  addTable(html, binTable(model, attribute), "Bins of " + attribute.name);
  html.Open("p", {{"class", "small up"}});
  html.Element("a", "Back to the list", {{"href", "#attributes"}});
  html.Close().Close().LineEnd();
}

void addLeftOut(Markup& html, const Model& model) {
  if (model.leftOut.empty()) return;
  html.Open("section").Element("h2", "Columns left out").LineEnd().Open("ul").LineEnd();
  for (const LeftOutColumn& column : model.leftOut) {
    html.Element("li", column.name + ": " + column.reason).LineEnd();
  }
  html.Close().Close().LineEnd();
}

}  // namespace

std::string reportPage(const Model& fitted) {
  const Model model = withReportClasses(fitted);
  const std::vector<std::size_t> ranked = rankByGain(model);
  Markup html;
  const std::size_t classes = classCountOf(model);
  openPage(html, titleOf(model), classStyle(classes), classPatternsSvg(classes));
  addLines(html, summaryText(model) + optionsText(model));
  addRanking(html, model, ranked);
  for (std::size_t i = 0; i < ranked.size(); ++i) {
    addAttribute(html, model, model.attributes[ranked[i]], i + 1);
  }
  addLeftOut(html, model);
  html.Element("p", fmt::format("Made by {} with {}", fitted.program, fitted.library),
               {{"class", "small"}});
  html.LineEnd().Close().LineEnd().Close().LineEnd();
  return std::move(html).Take();
}

}  // namespace mcbin
