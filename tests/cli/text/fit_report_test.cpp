#include "cli/text/fit_report.h"

#include <gtest/gtest.h>

namespace mcbin {
namespace {

ColumnPlan column(const char* name, ColumnUse use, const char* reason = "") {
  ColumnPlan plan;
  plan.name = name;
  plan.use = use;
  plan.reason = reason;
  return plan;
}

TEST(FitReport, TellsWhatBecomesOfEveryColumn) {
  std::vector<ColumnPlan> columns = {
      column("id", ColumnUse::LeftOut, "excluded"), column("age", ColumnUse::Attribute),
      column("income", ColumnUse::Attribute),       column("w", ColumnUse::Weight),
      column("class", ColumnUse::Target),           column("city", ColumnUse::LeftOut, "texts"),
      column("zip", ColumnUse::LeftOut, "excluded")};
  columns[2].missingTexts = {"-1", "999"};
  columns[2].missing.range = {0.0, 10.5};
  EXPECT_EQ(planText(columns, "d.csv", 7, {"a", "b"}),
            "d.csv: 7 cases, 7 columns\n"
            "  scale, to be cut: age, income (user-missing: -1, 999, 0 to 10.5)\n"
            "  categorical, the target: class, 2 categories: a, b\n"
            "  scale, the weight: w\n"
            "  left out: id, zip (excluded)\n"
            "  left out: city (texts)\n");
}

TEST(FitReport, ShowsTenCategoriesAtMost) {
  std::vector<std::string> categories;
  for (char c = 'a'; c <= 'k'; ++c) categories.emplace_back(1, c);
  const std::string text = planText({column("t", ColumnUse::Target)}, "d", 1, categories);
  EXPECT_NE(text.find("11 categories: a, b, c, d, e, f, g, h, i, j, ...\n"), std::string::npos);
}

TEST(FitReport, TimingsAddUp) {
  EXPECT_EQ(timingsText({1.0, 2.0, 4.5}, 0.25),
            "timings (seconds):\n"
            "  reading, first pass       1.000\n"
            "  reading, second pass      2.000\n"
            "  binning (the library)     4.500\n"
            "  writing                   0.250\n"
            "  total                     7.750\n");
}

}  // namespace
}  // namespace mcbin
