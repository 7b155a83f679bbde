#include "toolkit/tables/model_tables.h"

#include <gtest/gtest.h>

#include "tests/toolkit/support/example_model.h"

namespace mcbin {
namespace {

TEST(ModelTables, OneAttribute) {
  const Model model = testing::exampleModel();
  EXPECT_EQ(attributeText(model, model.attributes[0]),
            "in\"come: 3 bins, 5 distinct values, entropy 0.9710 before, 0.3250 after, gain "
            "0.6460\n"
            "  #  in\"come        weight   share  no       %  yes  event rate      WoE      IV\n"
            "  -  -------------  ------  ------  --  ------  ---  ----------  -------  ------\n"
            "  0  (-inf, 0.5)         4   30.8%   3   75.0%    1       25.0%   1.5686  0.7451\n"
            "  1  [0.5, 1e+300)       5   38.5%   0    0.0%    5      100.0%  -1.9279  1.2049\n"
            "  2  [1e+300, inf)       1    7.7%   1  100.0%    0        0.0%   1.5686  0.3137\n"
            "     missing             2   15.4%   1   50.0%    1       50.0%   0.4700  0.0353\n"
            "     user-missing        1    7.7%   0    0.0%    1      100.0%  -0.6286  0.0786\n"
            "     total              13  100.0%   5   38.5%    8       61.5%           2.3776\n");
}

TEST(ModelTables, OnlyATargetOfTwoCategoriesHasEvidence) {
  Model model = testing::exampleModel();
  model.target->categories.emplace_back("maybe");
  model.target->classWeights.push_back(0.0);
  for (WeightedCounts& bin : model.attributes[0].bins) bin.classWeights.push_back(0.0);
  model.attributes[0].missingCases.classWeights.push_back(0.0);
  model.attributes[0].userMissingCases.classWeights.push_back(0.0);
  const std::string text = attributeText(model, model.attributes[0]) + overviewText(model);
  for (const char* word : {"event", "WoE", "IV", "total", "trend"}) {
    EXPECT_EQ(text.find(word), std::string::npos) << word;
  }
}

TEST(ModelTables, AnUncutAttributeSaysWhy) {
  const Model model = testing::exampleModel();
  EXPECT_EQ(attributeText(model, model.attributes[1]),
            "é: 1 bin, 0 distinct values\n"
            "  not cut: because\n"
            "  #  é            weight  share  no  %  yes  event rate     WoE      IV\n"
            "  -  -----------  ------  -----  --  -  ---  ----------  ------  ------\n"
            "  0  (-inf, inf)       0      -   0  -    0           -  0.0000  0.0000\n"
            "     total             0      -   0  -    0           -          0.0000\n");
}

TEST(ModelTables, CasesInNoBinHaveARow) {
  Model model = testing::exampleModel();
  model.attributes[0].unbinnedCases = {2.0, {0.0, 2.0}};
  model.attributes[0].totalWeight += 2.0;
  const std::string text = attributeText(model, model.attributes[0]);
  EXPECT_NE(text.find("     in no bin           2   13.3%   0    0.0%    2      100.0%  "),
            std::string::npos)
      << text;
}

TEST(ModelTables, Overview) {
  EXPECT_EQ(
      overviewText(testing::exampleModel()),
      "Supervised binning of loans.csv: 16 cases, 14 used, 2 dropped for their weight\n"
      "Weight w, rounded to whole numbers\n"
      "Target default: no (5, 35.7%), yes (8, 57.1%), missing (1, 7.1%), counted in no bin; "
      "the event is yes\n"
      "\n"
      "Attributes by gain over all cases\n"
      "  #  attribute  bins  distinct                  min  max  missing    gain  over all    "
      "  IV  trend  remark\n"
      "  -  ---------  ----  --------  -------------------  ---  -------  ------  --------  "
      "------  -----  ----------------\n"
      "  1  in\"come       3         5  0.30000000000000004  inf    23.1%  0.6460    0.5578  "
      "2.3776  peak\n"
      "  2  é             1         0                    -    -        -       -    0.0000  "
      "0.0000  none   not cut: because\n");
}

TEST(ModelTables, LineEndsInNamesDoNotTearTheTable) {
  Model model = testing::exampleModel();
  model.attributes.resize(1);
  model.attributes[0].name = "two\nlines";
  model.target->categories[0] = "n\to";
  model.attributes[0].status.reason = "not\u009b31m cut";
  const std::string text = modelText(model);
  EXPECT_EQ(text.find("two\nlines"), std::string::npos);
  EXPECT_NE(text.find("two\\nlines"), std::string::npos);
  EXPECT_NE(text.find("n\\to"), std::string::npos);
  EXPECT_EQ(text.find("\u009b"), std::string::npos);
  EXPECT_NE(text.find("not\\u{9B}31m cut"), std::string::npos);
}

}  // namespace
}  // namespace mcbin
