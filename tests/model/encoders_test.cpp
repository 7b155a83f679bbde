#include "mcbinning/encoders.h"

#include <gtest/gtest.h>
#include <mccomvor/missing_value.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <limits>
#include <memory>
#include <type_traits>

#include "support/counting_user_missing.h"
#include "support/display.h"
#include "support/virtual_slots.h"

namespace {

using mcbinning_tests::CountingNumericUserMissing;
using mcbinning_tests::CountingStringUserMissing;
using mcbinning_tests::DisplayOf;
using mcbinning_tests::Flushing;
using mcbinning_tests::ForeignUserMissing;
using mcbinning_tests::UserMissingCount;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

IBINUserMissing* NewNumericDefinition(double value) {
  auto definition = std::make_unique<BINNumericUserMissing>();
  definition->AddValue(value, "nine");
  return definition.release();
}

IBINUserMissing* NewStringDefinition(const std::string& value) {
  auto definition = std::make_unique<BINStringUserMissing>();
  definition->AddValue(value, "ex");
  return definition.release();
}

TEST(EncoderTest, TypeValues) {
  static_assert(IBINEncoder::CatNumEncoderType == 2);
  static_assert(IBINEncoder::StringEncoderType == 3);
  static_assert(IBINEncoder::RoundEncoderType == 4);
  EXPECT_EQ(BINCatNumEncoder(0).GetEncoderType(), IBINEncoder::CatNumEncoderType);
  EXPECT_EQ(BINStringEncoder(0).GetEncoderType(), IBINEncoder::StringEncoderType);
  EXPECT_EQ(BINRoundEncoder().GetEncoderType(), IBINEncoder::RoundEncoderType);
}

TEST(EncoderTest, SlotOrder) {
  using mcbinning_tests::VirtualSlot;
  static_assert(std::has_virtual_destructor_v<IBINEncoder>);
  EXPECT_EQ(VirtualSlot(&IBINEncoder::GetEncoderType), 1U);
  EXPECT_EQ(VirtualSlot(&IBINEncoder::GetNumberOfCategories), 2U);
  EXPECT_EQ(VirtualSlot(&IBINEncoder::SetValueLabels), 3U);
  EXPECT_EQ(VirtualSlot(&IBINEncoder::SetValueLabel), 4U);
  EXPECT_EQ(VirtualSlot(&IBINEncoder::GetValueLabels), 5U);
  EXPECT_EQ(VirtualSlot(&IBINEncoder::SetUserMissingInfo), 6U);
  EXPECT_EQ(VirtualSlot(&IBINEncoder::GetUserMissingInfo), 7U);
  EXPECT_EQ(VirtualSlot(&IBINEncoder::Clone), 8U);
  EXPECT_EQ(VirtualSlot(&IBINEncoder::Display), 9U);
}

TEST(EncoderTest, AnyExpectedNumberOfCategoriesIsTaken) {
  for (const int expected : {INT_MIN, -1, 0, 1, 1000, INT_MAX}) {
    EXPECT_EQ(BINCatNumEncoder(expected).GetNumberOfCategories(), 0);
    EXPECT_EQ(BINStringEncoder(expected).GetNumberOfCategories(), 0);
  }
}

TEST(CatNumEncoderTest, CodesFollowTheOrderOfFirstAppearance) {
  BINCatNumEncoder encoder(0);
  EXPECT_EQ(encoder.Encode(5.0), 0.0);
  EXPECT_EQ(encoder.Encode(3.0), 1.0);
  EXPECT_EQ(encoder.Encode(5.0), 0.0);
  EXPECT_EQ(encoder.Encode(9.0), 2.0);
  EXPECT_EQ(encoder.GetNumberOfCategories(), 3);
  EXPECT_EQ(encoder.Decode(1), 3.0);
}

TEST(CatNumEncoderTest, ConstructorEncodesTheValuesInOrder) {
  const BINCatNumEncoder encoder(std::vector<double>{5.0, 3.0, 5.0, 9.0});
  EXPECT_EQ(encoder.GetNumberOfCategories(), 3);
  EXPECT_EQ(encoder.EncodeConst(9.0), 2.0);
}

TEST(CatNumEncoderTest, SystemMissingIsNoCategory) {
  BINCatNumEncoder encoder(0);
  EXPECT_EQ(encoder.Encode(MCMV::gMissingValue), -1.0);
  EXPECT_EQ(encoder.EncodeConst(MCMV::gMissingValue), -1.0);
  EXPECT_EQ(encoder.GetNumberOfCategories(), 0);
  for (const int code : {INT_MIN, -1, 0, 1, INT_MAX}) {
    EXPECT_EQ(encoder.Decode(code), MCMV::gMissingValue);
  }
}

TEST(CatNumEncoderTest, UserMissingIsNoCategory) {
  BINCatNumEncoder encoder(0);
  ASSERT_TRUE(encoder.SetUserMissingInfo(NewNumericDefinition(9.0)));
  EXPECT_EQ(encoder.Encode(9.0), -1.0);
  EXPECT_EQ(encoder.GetNumberOfCategories(), 0);
  EXPECT_EQ(encoder.Encode(8.0), 0.0);
}

TEST(CatNumEncoderTest, AValueDeclaredMissingLaterIsMissingFromThenOn) {
  BINCatNumEncoder encoder(std::vector<double>{8.0, 9.0});
  ASSERT_TRUE(encoder.SetUserMissingInfo(NewNumericDefinition(9.0)));
  EXPECT_EQ(encoder.Encode(9.0), -1.0);
  EXPECT_EQ(encoder.EncodeConst(9.0), -1.0);
  EXPECT_EQ(encoder.Decode(1), 9.0);
  EXPECT_EQ(encoder.GetNumberOfCategories(), 2);
}

TEST(CatNumEncoderTest, EncodeConstAddsNothing) {
  const BINCatNumEncoder encoder(std::vector<double>{1.0});
  EXPECT_EQ(encoder.EncodeConst(1.0), 0.0);
  EXPECT_EQ(encoder.EncodeConst(2.0), -1.0);
  EXPECT_EQ(encoder.GetNumberOfCategories(), 1);
}

TEST(CatNumEncoderTest, ZeroAndNegativeZeroAreOneValue) {
  BINCatNumEncoder encoder(0);
  EXPECT_EQ(encoder.Encode(0.0), 0.0);
  EXPECT_EQ(encoder.Encode(-0.0), 0.0);
  EXPECT_EQ(encoder.GetNumberOfCategories(), 1);
}

TEST(CatNumEncoderTest, AllNaNAreOneValueAfterAllNumbers) {
  BINCatNumEncoder encoder(0);
  EXPECT_EQ(encoder.Encode(1.0), 0.0);
  EXPECT_EQ(encoder.Encode(kNaN), 1.0);
  EXPECT_EQ(encoder.Encode(-kNaN), 1.0);
  EXPECT_EQ(encoder.Encode(kInfinity), 2.0);
  EXPECT_EQ(encoder.Encode(-kInfinity), 3.0);
  EXPECT_EQ(encoder.Encode(std::nan("7")), 1.0);
  EXPECT_EQ(encoder.EncodeConst(kInfinity), 2.0);
  EXPECT_EQ(encoder.EncodeConst(kNaN), 1.0);
  EXPECT_EQ(encoder.GetNumberOfCategories(), 4);
  EXPECT_TRUE(std::isnan(encoder.Decode(1)));
}

TEST(CatNumEncoderTest, LabelsAreSetWholeOrOneByOne) {
  BINCatNumEncoder encoder(std::vector<double>{1.0, 2.0, 3.0});
  ASSERT_NE(encoder.GetValueLabels(), nullptr);
  EXPECT_TRUE(encoder.GetValueLabels()->empty());
  encoder.SetValueLabel(1, "two");
  EXPECT_EQ(*encoder.GetValueLabels(), (std::vector<std::string>{"", "two", ""}));
  encoder.SetValueLabels({"a", "b", "c", "d", "e"});
  encoder.SetValueLabel(2, "third");
  encoder.SetValueLabel(4, "no such code");
  EXPECT_EQ(*encoder.GetValueLabels(), (std::vector<std::string>{"a", "b", "third", "d", "e"}));
}

TEST(CatNumEncoderTest, ALabelForAnUnknownCodeOnlyLengthensTheLabels) {
  BINCatNumEncoder encoder(std::vector<double>{1.0, 2.0, 3.0});
  encoder.SetValueLabel(4, "x");
  EXPECT_EQ(*encoder.GetValueLabels(), std::vector<std::string>(3));
  for (const int code : {INT_MIN, -1, 3, INT_MAX}) {
    encoder.SetValueLabel(code, "x");
  }
  EXPECT_EQ(*encoder.GetValueLabels(), std::vector<std::string>(3));
}

TEST(CatNumEncoderTest, OneOfItsOwnLabelsCanBeSet) {
  const std::string label(100, 'l');
  BINCatNumEncoder encoder(std::vector<double>{1.0, 2.0, 3.0});
  encoder.SetValueLabels({label});
  encoder.SetValueLabel(2, encoder.GetValueLabels()->front());
  EXPECT_EQ(*encoder.GetValueLabels(), (std::vector<std::string>{label, "", label}));
  encoder.SetValueLabels(*encoder.GetValueLabels());
  EXPECT_EQ(*encoder.GetValueLabels(), (std::vector<std::string>{label, "", label}));
}

TEST(CatNumEncoderTest, RefusesAStringDefinitionAndKeepsItsOwn) {
  UserMissingCount count;
  CountingStringUserMissing refused(count);
  BINCatNumEncoder encoder(0);
  IBINUserMissing* own = NewNumericDefinition(9.0);
  ASSERT_TRUE(encoder.SetUserMissingInfo(own));
  EXPECT_FALSE(encoder.SetUserMissingInfo(&refused));
  EXPECT_EQ(encoder.GetUserMissingInfo(), own);
  EXPECT_EQ(count.destroyed, 0);
}

TEST(CatNumEncoderTest, OwnsTheDefinitionItAccepts) {
  UserMissingCount count;
  {
    BINCatNumEncoder encoder(0);
    auto* first = new CountingNumericUserMissing(count);
    EXPECT_TRUE(encoder.SetUserMissingInfo(first));
    EXPECT_TRUE(encoder.SetUserMissingInfo(first));
    EXPECT_EQ(count.destroyed, 0);
    EXPECT_TRUE(encoder.SetUserMissingInfo(new CountingNumericUserMissing(count)));
    EXPECT_EQ(count.destroyed, 1);
    EXPECT_TRUE(encoder.SetUserMissingInfo(nullptr));
    EXPECT_EQ(count.destroyed, 2);
    EXPECT_EQ(encoder.GetUserMissingInfo(), nullptr);
    EXPECT_TRUE(encoder.SetUserMissingInfo(new CountingNumericUserMissing(count)));
  }
  EXPECT_EQ(count.destroyed, 3);
  EXPECT_EQ(count.alive, 0);
}

TEST(CatNumEncoderTest, CloneIsDeep) {
  UserMissingCount count;
  std::unique_ptr<IBINEncoder> clone;
  {
    BINCatNumEncoder encoder(std::vector<double>{5.0, 3.0});
    encoder.SetValueLabels({"five", "three"});
    encoder.SetUserMissingInfo(new CountingNumericUserMissing(count));
    clone.reset(encoder.Clone());
    EXPECT_EQ(DisplayOf(*clone), DisplayOf(encoder));
    EXPECT_EQ(count.alive, 2);
  }
  EXPECT_EQ(count.alive, 1);
  auto& copy = static_cast<BINCatNumEncoder&>(*clone);
  EXPECT_EQ(copy.Encode(3.0), 1.0);
  EXPECT_EQ(copy.Encode(4.0), 2.0);
  EXPECT_EQ(copy.Decode(2), 4.0);
  EXPECT_EQ(*copy.GetValueLabels(), (std::vector<std::string>{"five", "three"}));
  clone.reset();
  EXPECT_EQ(count.alive, 0);
}

TEST(CatNumEncoderTest, DisplayOfAFreshEncoder) {
  EXPECT_EQ(DisplayOf(BINCatNumEncoder(3)), Flushing("\tBINCatNumEncoder: Last code = -1\n"
                                                     "\t\tNumeric values of categories: \n"
                                                     "\n"));
}

TEST(CatNumEncoderTest, DisplayBreaksAfterSevenAndShowsLabels) {
  BINCatNumEncoder encoder(std::vector<double>{1, 2, 3, 4, 5, 6, 7, 8.5});
  encoder.SetValueLabels({"a", "b", "c", "d", "e", "f", "g"});
  EXPECT_EQ(DisplayOf(encoder), Flushing("\tBINCatNumEncoder: Last code = 7\n"
                                         "\t\tNumeric values of categories: 1 2 3 4 5 6 7 \n"
                                         "8.5 \n") +
                                    "\t\tValue Labels:\n" +
                                    Flushing("a b c d e f g \n"
                                             "\n"
                                             "\n"));
}

TEST(CatNumEncoderTest, DisplayShowsTheDefinition) {
  BINCatNumEncoder encoder(std::vector<double>{1.0});
  encoder.SetUserMissingInfo(NewNumericDefinition(9.0));
  EXPECT_EQ(DisplayOf(encoder), Flushing("\tBINCatNumEncoder: Last code = 0\n"
                                         "\t\tNumeric values of categories: 1 \n") +
                                    "\t\tUser-missing values for this encoder:\n" +
                                    Flushing("\t\t\n"
                                             "Start of BINNumericUserMissing display\n"
                                             "Discrete missing values:\n"
                                             "\t0\t9, label = nine\n"
                                             "End of BINNumericUserMissing display\n"
                                             "\n"));
}

TEST(StringEncoderTest, CodesFollowTheOrderOfFirstAppearance) {
  BINStringEncoder encoder(0);
  EXPECT_EQ(encoder.Encode("red"), 0.0);
  EXPECT_EQ(encoder.Encode("blue"), 1.0);
  EXPECT_EQ(encoder.Encode("red"), 0.0);
  EXPECT_EQ(encoder.Encode(""), 2.0);
  EXPECT_EQ(encoder.Encode("Red"), 3.0);
  EXPECT_EQ(encoder.GetNumberOfCategories(), 4);
  EXPECT_EQ(encoder.Decode(1), "blue");
  EXPECT_EQ(encoder.Decode(2), "");
}

TEST(StringEncoderTest, ConstructorEncodesTheValuesInOrder) {
  BINStringEncoder encoder(std::vector<std::string>{"b", "a", "b"});
  EXPECT_EQ(encoder.GetNumberOfCategories(), 2);
  EXPECT_EQ(encoder.Decode(0), "b");
}

TEST(StringEncoderTest, DecodeOfABadCodeIsEmpty) {
  BINStringEncoder encoder(std::vector<std::string>{"a"});
  for (const int code : {INT_MIN, -1, 1, INT_MAX}) {
    EXPECT_EQ(encoder.Decode(code), "");
  }
}

TEST(StringEncoderTest, EncodeConstAddsNothing) {
  const BINStringEncoder encoder(std::vector<std::string>{"a"});
  EXPECT_EQ(encoder.EncodeConst("a"), 0.0);
  EXPECT_EQ(encoder.EncodeConst("b"), -1.0);
  EXPECT_EQ(encoder.GetNumberOfCategories(), 1);
}

TEST(StringEncoderTest, UserMissingIsNoCategory) {
  BINStringEncoder encoder(0);
  ASSERT_TRUE(encoder.SetUserMissingInfo(NewStringDefinition("x")));
  EXPECT_EQ(encoder.Encode("x"), -1.0);
  EXPECT_EQ(encoder.EncodeConst("x"), -1.0);
  EXPECT_EQ(encoder.GetNumberOfCategories(), 0);
  EXPECT_EQ(encoder.Encode("y"), 0.0);
}

TEST(StringEncoderTest, AValueDeclaredMissingLaterIsMissingFromThenOn) {
  BINStringEncoder encoder(std::vector<std::string>{"a", "x"});
  ASSERT_TRUE(encoder.SetUserMissingInfo(NewStringDefinition("x")));
  EXPECT_EQ(encoder.Encode("x"), -1.0);
  EXPECT_EQ(encoder.EncodeConst("x"), -1.0);
  EXPECT_EQ(encoder.Decode(1), "x");
  EXPECT_EQ(encoder.GetNumberOfCategories(), 2);
}

TEST(StringEncoderTest, RefusesANumericDefinitionAndAcceptsAStringOne) {
  UserMissingCount count;
  CountingNumericUserMissing refused(count);
  BINStringEncoder encoder(0);
  EXPECT_FALSE(encoder.SetUserMissingInfo(&refused));
  EXPECT_EQ(encoder.GetUserMissingInfo(), nullptr);
  EXPECT_EQ(count.destroyed, 0);
  IBINUserMissing* accepted = NewStringDefinition("x");
  EXPECT_TRUE(encoder.SetUserMissingInfo(accepted));
  EXPECT_EQ(encoder.GetUserMissingInfo(), accepted);
  EXPECT_FALSE(encoder.SetUserMissingInfo(&refused));
  EXPECT_EQ(encoder.GetUserMissingInfo(), accepted);
}

TEST(StringEncoderTest, OwnsTheDefinitionItAccepts) {
  UserMissingCount count;
  {
    BINStringEncoder encoder(0);
    auto* first = new CountingStringUserMissing(count);
    EXPECT_TRUE(encoder.SetUserMissingInfo(first));
    EXPECT_TRUE(encoder.SetUserMissingInfo(first));
    EXPECT_TRUE(encoder.SetUserMissingInfo(new CountingStringUserMissing(count)));
    EXPECT_EQ(count.destroyed, 1);
  }
  EXPECT_EQ(count.destroyed, 2);
  EXPECT_EQ(count.alive, 0);
}

TEST(StringEncoderTest, LabelsFollowTheSameRules) {
  BINStringEncoder encoder(std::vector<std::string>{"a", "b"});
  ASSERT_NE(encoder.GetValueLabels(), nullptr);
  encoder.SetValueLabel(7, "x");
  EXPECT_EQ(*encoder.GetValueLabels(), std::vector<std::string>(2));
  encoder.SetValueLabel(0, "first");
  EXPECT_EQ(*encoder.GetValueLabels(), (std::vector<std::string>{"first", ""}));
  encoder.SetValueLabels({"only"});
  EXPECT_EQ(*encoder.GetValueLabels(), std::vector<std::string>{"only"});
}

TEST(StringEncoderTest, CloneLinksIntoItsOwnMap) {
  UserMissingCount count;
  std::unique_ptr<IBINEncoder> clone;
  {
    BINStringEncoder encoder(std::vector<std::string>{"zulu", "alpha"});
    encoder.SetValueLabels({"last", "first"});
    encoder.SetUserMissingInfo(new CountingStringUserMissing(count));
    clone.reset(encoder.Clone());
    EXPECT_EQ(DisplayOf(*clone), DisplayOf(encoder));
  }
  EXPECT_EQ(count.alive, 1);
  auto& copy = static_cast<BINStringEncoder&>(*clone);
  EXPECT_EQ(*copy.GetValueLabels(), (std::vector<std::string>{"last", "first"}));
  EXPECT_EQ(copy.Decode(0), "zulu");
  EXPECT_EQ(copy.Decode(1), "alpha");
  EXPECT_EQ(copy.Encode("mike"), 2.0);
  EXPECT_EQ(copy.Decode(2), "mike");
  clone.reset();
  EXPECT_EQ(count.alive, 0);
}

TEST(StringEncoderTest, LinksSurviveManyInsertions) {
  BINStringEncoder encoder(1);
  for (int i = 0; i < 2000; ++i) {
    encoder.Encode(std::to_string(i * 7919 % 2000));
  }
  ASSERT_EQ(encoder.GetNumberOfCategories(), 2000);
  for (int i = 0; i < 2000; ++i) {
    EXPECT_EQ(encoder.Decode(i), std::to_string(i * 7919 % 2000));
  }
}

TEST(StringEncoderTest, DisplayListsTheCodes) {
  BINStringEncoder encoder(0);
  EXPECT_EQ(DisplayOf(encoder), Flushing("\tBINStringEncoder object:  Last code = -1\n"));
  encoder.Encode("zulu");
  encoder.Encode("");
  encoder.SetValueLabels({"not shown"});
  const std::string codes = Flushing(
      "\tBINStringEncoder object:  Last code = 1\n"
      "\t\t0\t\tzulu\n"
      "\t\t1\t\t\n");
  EXPECT_EQ(DisplayOf(encoder), codes);
  encoder.SetUserMissingInfo(NewStringDefinition("x"));
  EXPECT_EQ(DisplayOf(encoder), codes + "\t\tUser-missing values for this encoder:\n" +
                                    Flushing("\t\t\n"
                                             "Start of BINStringUserMissing display\n"
                                             "Discrete missing values:\n"
                                             "\t0\tx, label = ex\n"
                                             "End of BINStringUserMissing display\n"));
}

using Links = std::vector<const std::string*>;

// No operation leaves a code without its string; only an explicit instantiation, which may name
// private members, can.
Links& linksOf(BINStringEncoder& encoder);
template <Links BINStringEncoder::*links>
struct LinksAccess {
  friend Links& linksOf(BINStringEncoder& encoder) { return encoder.*links; }
};
template struct LinksAccess<&BINStringEncoder::links_>;

TEST(StringEncoderTest, DisplayOfACodeWithoutAStringIsAnError) {
  BINStringEncoder encoder(std::vector<std::string>{"a", "b", "c"});
  linksOf(encoder)[1] = nullptr;
  EXPECT_EQ(DisplayOf(encoder), Flushing("\tBINStringEncoder object:  Last code = 2\n"
                                         "\t\t0\t\ta\n") +
                                    "\t\t1\t\tERROR\n" + Flushing("\t\t2\t\tc\n"));
}

TEST(EncoderTest, AHostsOwnDefinitionIsAcceptedByItsTypeAndDeclaresNothing) {
  BINCatNumEncoder numeric(0);
  EXPECT_TRUE(numeric.SetUserMissingInfo(new ForeignUserMissing(IBINUserMissing::NumericData)));
  EXPECT_EQ(numeric.Encode(1.0), 0.0);
  BINStringEncoder string(0);
  EXPECT_TRUE(string.SetUserMissingInfo(new ForeignUserMissing(IBINUserMissing::StringData)));
  EXPECT_EQ(string.Encode("a"), 0.0);
}

}  // namespace
