#include "toolkit/fit/target_classes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace mcbin {
namespace {

using ::testing::ElementsAre;

TargetClasses classesOf(const std::vector<std::string>& texts) {
  TargetClasses classes;
  for (const std::string& text : texts) EXPECT_TRUE(classes.Add(text)) << text;
  return classes;
}

TEST(TargetClasses, TextsStandInTheOrderOfTheirBytes) {
  const TargetClasses classes = classesOf({"b", "a", "\xC3\xA4", "B", "b", "10", "9"});
  EXPECT_THAT(classes.Names(), ElementsAre("10", "9", "B", "a", "b", "\xC3\xA4"));
  EXPECT_EQ(classes.Codes().at("a"), 3);
}

TEST(TargetClasses, NumbersStandInNumericOrderWhateverTheirSpelling) {
  const TargetClasses classes = classesOf({"10", "9", "1.0", "-2", "1", "1e0", "+1", "0.5", "-0"});
  EXPECT_THAT(classes.Names(), ElementsAre("-2", "0", "0.5", "1", "9", "10"));
  const ClassCodes codes = classes.Codes();
  for (const char* const one : {"1", "1.0", "1e0", "+1"}) EXPECT_EQ(codes.at(one), 3) << one;
  EXPECT_EQ(codes.at("-0"), 1);
}

TEST(TargetClasses, ATextThatLooksLikeANumberButIsNoneKeepsEveryText) {
  EXPECT_THAT(classesOf({"1", "1.0", "x"}).Names(), ElementsAre("1", "1.0", "x"));
  EXPECT_THAT(classesOf({"1", "01"}).Names(), ElementsAre("01", "1"));
  EXPECT_THAT(classesOf({"-1", "-01"}).Names(), ElementsAre("-01", "-1"));
  EXPECT_THAT(classesOf({"inf", "1e0", "1"}).Names(), ElementsAre("1", "1e0", "inf"));
}

TEST(TargetClasses, NumbersThatDoublesCannotTellApartStayTexts) {
  EXPECT_THAT(classesOf({"9007199254740993", "9007199254740992"}).Names(),
              ElementsAre("9007199254740992", "9007199254740993"));
  EXPECT_THAT(classesOf({"123456789012345", "123456789012345.0"}).Names(),
              ElementsAre("123456789012345", "123456789012345.0"));
}

TEST(TargetClasses, SpellingsAreNoClasses) {
  TargetClasses classes;
  for (int i = 0; i < 256; ++i) {
    EXPECT_TRUE(classes.Add(std::to_string(i)));
    EXPECT_TRUE(classes.Add(std::to_string(i) + ".0"));
  }
  EXPECT_EQ(classes.Names().size(), 256U);
  EXPECT_FALSE(classes.Add("256"));
}

TEST(TargetClasses, OneTextAmongManySpellingsMayBeAClassTooMany) {
  TargetClasses classes;
  for (int i = 0; i < 200; ++i) {
    EXPECT_TRUE(classes.Add(std::to_string(i)));
    EXPECT_TRUE(classes.Add(std::to_string(i) + ".0"));
  }
  EXPECT_FALSE(classes.Add("x"));
}

TEST(TargetClasses, SameClass) {
  EXPECT_TRUE(namesSameClass("1", "1.0"));
  EXPECT_TRUE(namesSameClass("x", "x"));
  EXPECT_FALSE(namesSameClass("1", "01"));
  EXPECT_FALSE(namesSameClass("x", "y"));
}

}  // namespace
}  // namespace mcbin
