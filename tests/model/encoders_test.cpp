#include "mcbinning/encoders.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

#include "support/counting_user_missing.h"
#include "support/display.h"

namespace {

using mcbinning_tests::DisplayOf;
using mcbinning_tests::Flushing;
using mcbinning_tests::ForeignUserMissing;

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
