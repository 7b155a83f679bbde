#include "cli/text/fit_report.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "toolkit/text/number_text.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

constexpr std::size_t kCategoriesShown = 10;

std::string categoryList(const std::vector<std::string>& categories) {
  return fmt::format("{} categories: {}", categories.size(),
                     excerptList(categories, kCategoriesShown));
}

std::string missingList(const ColumnPlan& column) {
  std::string text;
  for (const std::string& value : column.missingTexts) {
    text += (text.empty() ? "" : ", ") + excerpt(value);
  }
  if (column.missing.range) {
    text += fmt::format("{}{} to {}", text.empty() ? "" : ", ",
                        shortestNumber(column.missing.range->first),
                        shortestNumber(column.missing.range->second));
  }
  return text.empty() ? "" : fmt::format(" (user-missing: {})", text);
}

std::string namesOf(const std::vector<ColumnPlan>& columns, ColumnUse use) {
  std::string names;
  for (const ColumnPlan& column : columns) {
    if (column.use != use) continue;
    names += (names.empty() ? "" : ", ") + excerpt(column.name) + missingList(column);
  }
  return names;
}

/// The columns that are left out, one line a reason.
std::string leftOutText(const std::vector<ColumnPlan>& columns) {
  std::vector<std::pair<std::string, std::string>> namesByReason;
  for (const ColumnPlan& column : columns) {
    if (column.use != ColumnUse::LeftOut) continue;
    const auto known = std::find_if(namesByReason.begin(), namesByReason.end(),
                                    [&](const auto& line) { return line.first == column.reason; });
    if (known == namesByReason.end()) {
      namesByReason.emplace_back(column.reason, excerpt(column.name));
    } else {
      known->second += ", " + excerpt(column.name);
    }
  }
  std::string text;
  for (const auto& [reason, names] : namesByReason) {
    text += fmt::format("  left out: {} ({})\n", names, reason);
  }
  return text;
}

}  // namespace

std::string planText(const std::vector<ColumnPlan>& columns, const std::string& data,
                     std::uint64_t rows, const std::vector<std::string>& categories) {
  std::string text =
      fmt::format("{}: {} cases, {} columns\n", visibleText(data), rows, columns.size());
  text += "  scale, to be cut: " + namesOf(columns, ColumnUse::Attribute) + "\n";
  const std::string target = namesOf(columns, ColumnUse::Target);
  if (!target.empty()) {
    text += fmt::format("  categorical, the target: {}, {}\n", target, categoryList(categories));
  }
  const std::string weight = namesOf(columns, ColumnUse::Weight);
  if (!weight.empty()) text += "  scale, the weight: " + weight + "\n";
  return text + leftOutText(columns);
}

std::string timingsText(const FitTimings& timings, double writing) {
  const double total = timings.scanning + timings.feeding + timings.binning + writing;
  std::string text = "timings (seconds):\n";
  const std::pair<const char*, double> lines[] = {{"reading, first pass", timings.scanning},
                                                  {"reading, second pass", timings.feeding},
                                                  {"binning (the library)", timings.binning},
                                                  {"writing", writing},
                                                  {"total", total}};
  for (const auto& [name, seconds] : lines) {
    text += fmt::format("  {:<22} {:8.3f}\n", name, seconds);
  }
  return text;
}

}  // namespace mcbin
