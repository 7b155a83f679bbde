#include "model/held_user_missing.h"

#include <gtest/gtest.h>

#include <memory>

#include "support/counting_user_missing.h"
#include "support/display.h"

namespace {

using MCBinning::CloneUserMissing;
using MCBinning::DisplayUserMissing;
using MCBinning::IsUserMissing;
using MCBinning::ReplaceUserMissing;
using mcbinning_tests::CountingNumericUserMissing;
using mcbinning_tests::CountingStringUserMissing;
using mcbinning_tests::Flushing;
using mcbinning_tests::ForeignUserMissing;
using mcbinning_tests::UserMissingCount;
using mcbinning_tests::Written;

TEST(HeldUserMissingTest, NothingIsMissingWithoutADefinition) {
  EXPECT_FALSE(IsUserMissing(nullptr, 1.0));
  EXPECT_FALSE(IsUserMissing(nullptr, std::string("a")));
}

TEST(HeldUserMissingTest, ADefinitionIsAskedByItsKind) {
  BINNumericUserMissing numeric;
  numeric.AddValue(1.0, "");
  BINStringUserMissing string;
  string.AddValue("1", "");
  EXPECT_TRUE(IsUserMissing(&numeric, 1.0));
  EXPECT_FALSE(IsUserMissing(&numeric, 2.0));
  EXPECT_FALSE(IsUserMissing(&numeric, std::string("1")));
  EXPECT_TRUE(IsUserMissing(&string, std::string("1")));
  EXPECT_FALSE(IsUserMissing(&string, std::string("2")));
  EXPECT_FALSE(IsUserMissing(&string, 1.0));
}

TEST(HeldUserMissingTest, AHostsOwnDefinitionDeclaresNothingMissing) {
  const ForeignUserMissing foreign(IBINUserMissing::NumericData);
  EXPECT_FALSE(IsUserMissing(&foreign, 0.0));
  EXPECT_FALSE(IsUserMissing(&foreign, std::string()));
}

TEST(HeldUserMissingTest, ReplacingFreesTheOldOneOnce) {
  UserMissingCount count;
  {
    std::unique_ptr<IBINUserMissing> held;
    auto* first = new CountingNumericUserMissing(count);
    EXPECT_TRUE(ReplaceUserMissing(held, first, IBINUserMissing::NumericData));
    EXPECT_TRUE(ReplaceUserMissing(held, first, IBINUserMissing::NumericData));
    EXPECT_EQ(count.destroyed, 0);
    EXPECT_TRUE(ReplaceUserMissing(held, new CountingNumericUserMissing(count),
                                   IBINUserMissing::NumericData));
    EXPECT_EQ(count.destroyed, 1);
    EXPECT_TRUE(ReplaceUserMissing(held, nullptr, IBINUserMissing::NumericData));
    EXPECT_EQ(count.destroyed, 2);
    EXPECT_TRUE(ReplaceUserMissing(held, nullptr, IBINUserMissing::NumericData));
    EXPECT_EQ(held, nullptr);
  }
  EXPECT_EQ(count.destroyed, 2);
  EXPECT_EQ(count.alive, 0);
}

TEST(HeldUserMissingTest, ARefusedDefinitionStaysTheCallers) {
  UserMissingCount count;
  CountingStringUserMissing refused(count);
  std::unique_ptr<IBINUserMissing> held = std::make_unique<BINNumericUserMissing>();
  const IBINUserMissing* before = held.get();
  EXPECT_FALSE(ReplaceUserMissing(held, &refused, IBINUserMissing::NumericData));
  EXPECT_EQ(held.get(), before);
  EXPECT_EQ(count.destroyed, 0);
}

TEST(HeldUserMissingTest, CloneOfNullIsNull) {
  EXPECT_EQ(CloneUserMissing(nullptr), nullptr);
  const BINNumericUserMissing definition;
  const auto clone = CloneUserMissing(&definition);
  ASSERT_NE(clone, nullptr);
  EXPECT_NE(clone.get(), &definition);
}

TEST(HeldUserMissingTest, DisplayIsHeadedAndNothingForNull) {
  const auto displayOf = [](const IBINUserMissing* definition) {
    return Written([definition](std::ostream& os) { DisplayUserMissing(os, definition); });
  };
  EXPECT_EQ(displayOf(nullptr), "");
  const BINStringUserMissing definition;
  EXPECT_EQ(displayOf(&definition), "\t\tUser-missing values for this encoder:\n\t\t" +
                                        Flushing("\n"
                                                 "Start of BINStringUserMissing display\n"
                                                 "End of BINStringUserMissing display\n"));
}

}  // namespace
