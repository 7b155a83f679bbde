#include "toolkit/report/class_grouping.h"

#include <gmock/gmock.h>

#include <string>

#include "tests/toolkit/support/example_model.h"

namespace mcbin {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

Model modelWithClasses(const std::vector<std::string>& categories,
                       const std::vector<double>& weights) {
  Model model;
  model.target = TargetModel{"t", categories, {}, weights, 0.0};
  AttributeModel attribute;
  attribute.bins = {{0.0, weights}};
  attribute.missingCases.classWeights = weights;
  attribute.userMissingCases.classWeights = weights;
  model.attributes.push_back(attribute);
  return model;
}

TEST(ClassGrouping, NamesKeepTheirOrder) {
  const Model model = withReportClasses(modelWithClasses({"b", "1", "a"}, {1.0, 2.0, 3.0}));
  EXPECT_THAT(model.target->categories, ElementsAre("b", "1", "a"));
  EXPECT_THAT(model.attributes[0].bins[0].classWeights, ElementsAre(1.0, 2.0, 3.0));
}

TEST(ClassGrouping, NumbersAscend) {
  const Model model = withReportClasses(modelWithClasses({"10", "9", "-1"}, {1.0, 2.0, 3.0}));
  EXPECT_THAT(model.target->categories, ElementsAre("-1", "9", "10"));
  EXPECT_THAT(model.target->classWeights, ElementsAre(3.0, 2.0, 1.0));
  EXPECT_THAT(model.attributes[0].bins[0].classWeights, ElementsAre(3.0, 2.0, 1.0));
  EXPECT_THAT(model.attributes[0].missingCases.classWeights, ElementsAre(3.0, 2.0, 1.0));
  EXPECT_THAT(model.attributes[0].userMissingCases.classWeights, ElementsAre(3.0, 2.0, 1.0));
}

TEST(ClassGrouping, TenClassesStayApart) {
  std::vector<std::string> categories;
  for (int c = 0; c < 10; ++c) categories.push_back("c" + std::to_string(c));
  const Model model = withReportClasses(modelWithClasses(categories, std::vector<double>(10, 1.0)));
  EXPECT_EQ(model.target->categories, categories);
}

TEST(ClassGrouping, OfManyClassesTheLightestAreSummedUp) {
  std::vector<std::string> categories;
  std::vector<double> weights;
  for (int c = 0; c < 256; ++c) {
    categories.push_back("c" + std::to_string(c));
    weights.push_back(c < 8 ? 100.0 - c : c == 200 ? 50.0 : 1.0);
  }
  const Model model = withReportClasses(modelWithClasses(categories, weights));
  EXPECT_THAT(model.target->categories, ElementsAre("c0", "c1", "c2", "c3", "c4", "c5", "c6", "c7",
                                                    "c200", "247 other classes"));
  EXPECT_THAT(model.attributes[0].bins[0].classWeights,
              ElementsAre(100.0, 99.0, 98.0, 97.0, 96.0, 95.0, 94.0, 93.0, 50.0, 247.0));
  EXPECT_THAT(model.attributes[0].missingCases.classWeights, SizeIs(10));
}

TEST(ClassGrouping, AModelWithoutATargetStays) {
  Model model = testing::exampleModel();
  model.target.reset();
  EXPECT_EQ(withReportClasses(model).attributes[0].bins[0].classWeights,
            model.attributes[0].bins[0].classWeights);
}

}  // namespace
}  // namespace mcbin
