#include "toolkit/report/report_page.h"

#include <gmock/gmock.h>

#include "tests/toolkit/support/example_model.h"

namespace mcbin {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

/// The page from its heading on.
std::string bodyOf(const Model& model) {
  const std::string page = reportPage(model);
  return page.substr(page.find("<h1>"));
}

TEST(ReportPage, SaysWhatWasFitted) {
  EXPECT_THAT(bodyOf(testing::exampleModel()),
              HasSubstr("<h1>Bins of loans.csv by default</h1>\n"
                        "<p>Supervised binning of loans.csv: 16 cases, 14 used, 2 dropped for "
                        "their weight</p>\n"
                        "<p>Weight w, rounded to whole numbers</p>\n"
                        "<p>Target default: no (5, 35.7%), yes (8, 57.1%), missing (1, 7.1%), "
                        "counted in no bin; the event is yes</p>\n"
                        "<p>A value on a cut point belongs to the bin above it: [a, b). "
                        "Attributes with more than 100 distinct values were first reduced to 20 "
                        "bins of equal weight. Inner bins lighter than 0.25 of their lighter "
                        "neighbour were merged. Weight of evidence (WoE) is the logarithm of a "
                        "bin&#39;s share of all non-events over its share of all events, with 0.5 "
                        "added to both counts where one of them is 0.</p>\n"
                        "<h2 id=\"attributes\">Attributes by gain over all cases</h2>\n"));
}

TEST(ReportPage, NamesTheLimitsOfBins) {
  Model model = testing::exampleModel();
  model.options.limits = {0.05, 30.0, 4};
  EXPECT_THAT(bodyOf(model), HasSubstr(" Neighbouring bins were joined until each held a share of "
                                       "0.05 and each weighed 30 and there were at most 4. "));
}

TEST(ReportPage, TheRankingLeadsToTheSections) {
  const std::string body = bodyOf(testing::exampleModel());
  EXPECT_THAT(body, HasSubstr("<a href=\"#a1\">in&quot;come</a>"));
  EXPECT_THAT(body, HasSubstr("<section id=\"a1\">\n<h2>1. in&quot;come</h2>\n"
                              "<p>3 bins, 5 distinct values, entropy 0.9710 before, 0.3250 after, "
                              "gain 0.6460, values from 0.30000000000000004 to inf</p>\n"
                              "<p>Declared missing: -1, 999.5, -inf to -100</p>\n"));
}

TEST(ReportPage, AnUncutAttributeSaysWhyAndHasNoHistogram) {
  const std::string body = bodyOf(testing::exampleModel());
  EXPECT_THAT(body,
              HasSubstr("<section id=\"a2\">\n<h2>2. é</h2>\n<p>1 bin, 0 distinct values</p>\n"
                        "<p class=\"note\">not cut: because</p>\n"
                        "<div class=\"charts\">\n<figure><figcaption>Share of the weight"));
}

TEST(ReportPage, EndsWithTheColumnsLeftOut) {
  EXPECT_THAT(bodyOf(testing::exampleModel()),
              HasSubstr("<section><h2>Columns left out</h2>\n<ul>\n"
                        "<li>id: declared a category</li>\n</ul></section>\n"
                        "<p class=\"small\">Made by mcbin 1.0.0 with a library</p>\n"
                        "</body>\n</html>\n"));
}

TEST(ReportPage, AnEqualFrequencyModelHasNoClasses) {
  Model model = testing::exampleModel();
  model.method = Method::EqualFrequency;
  model.target.reset();
  for (WeightedCounts& bin : model.attributes[0].bins) bin.classWeights.clear();
  const std::string body = bodyOf(model);
  EXPECT_THAT(body, HasSubstr("<h1>Bins of loans.csv</h1>\n"));
  EXPECT_THAT(body, HasSubstr("[a, b). 20 bins were asked for.</p>\n"));
  EXPECT_THAT(body, HasSubstr("<figcaption>Share of the weight in each bin.</figcaption>"));
  EXPECT_THAT(body, Not(HasSubstr("legend")));
}

TEST(ReportPage, AModelWithoutAttributes) {
  Model model = testing::exampleModel();
  model.attributes.clear();
  EXPECT_THAT(bodyOf(model), HasSubstr("<tbody>\n</tbody></table>"));
}

}  // namespace
}  // namespace mcbin
