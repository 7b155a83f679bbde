#include "toolkit/model/attribute_choice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "toolkit/errors.h"

namespace {

mcbin::Model modelOf(std::initializer_list<const char*> names) {
  mcbin::Model model;
  for (const char* name : names) {
    model.attributes.emplace_back();
    model.attributes.back().name = name;
  }
  return model;
}

std::vector<std::string> keptBy(const std::vector<std::string>& patterns) {
  mcbin::Model model = modelOf({"age", "income", "debt_ratio"});
  mcbin::keepAttributes(model, patterns);
  std::vector<std::string> names;
  for (const auto& attribute : model.attributes) names.push_back(attribute.name);
  return names;
}

TEST(AttributeChoiceTest, WithoutPatternsAllStay) {
  EXPECT_THAT(keptBy({}), testing::ElementsAre("age", "income", "debt_ratio"));
}

TEST(AttributeChoiceTest, NamesNumbersAndPatternsKeepTheModelsOrder) {
  EXPECT_THAT(keptBy({"debt*", "1", "age"}), testing::ElementsAre("age", "debt_ratio"));
}

TEST(AttributeChoiceTest, AnUnknownNameIsAnError) {
  EXPECT_THROW(keptBy({"nope"}), mcbin::DataError);
}

}  // namespace
