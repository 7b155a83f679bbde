#include "model/held_user_missing.h"

#include <gtest/gtest.h>

#include <memory>

#include "support/counting_user_missing.h"
#include "support/display.h"

namespace {

using MCBinning::cloneUserMissing;
using MCBinning::displayUserMissing;
using MCBinning::isUserMissing;
using MCBinning::replaceUserMissing;
using mcbinning_tests::CountingNumericUserMissing;
using mcbinning_tests::CountingStringUserMissing;
using mcbinning_tests::Flushing;
using mcbinning_tests::ForeignUserMissing;
using mcbinning_tests::UserMissingCount;
using mcbinning_tests::Written;

TEST(HeldUserMissingTest, NothingIsMissingWithoutADefinition) {
  EXPECT_FALSE(isUserMissing(nullptr, 1.0));
  EXPECT_FALSE(isUserMissing(nullptr, std::string("a")));
}

TEST(HeldUserMissingTest, ADefinitionIsAskedByItsKind) {
  BINNumericUserMissing numeric;
  numeric.AddValue(1.0, "");
  BINStringUserMissing string;
  string.AddValue("1", "");
  EXPECT_TRUE(isUserMissing(&numeric, 1.0));
  EXPECT_FALSE(isUserMissing(&numeric, 2.0));
  EXPECT_FALSE(isUserMissing(&numeric, std::string("1")));
  EXPECT_TRUE(isUserMissing(&string, std::string("1")));
  EXPECT_FALSE(isUserMissing(&string, std::string("2")));
  EXPECT_FALSE(isUserMissing(&string, 1.0));
}

TEST(HeldUserMissingTest, AHostsOwnDefinitionDeclaresNothingMissing) {
  const ForeignUserMissing foreign(IBINUserMissing::NumericData);
  EXPECT_FALSE(isUserMissing(&foreign, 0.0));
  EXPECT_FALSE(isUserMissing(&foreign, std::string()));
}

TEST(HeldUserMissingTest, ReplacingFreesTheOldOneOnce) {
  UserMissingCount count;
  {
    std::unique_ptr<IBINUserMissing> held;
    auto* first = new CountingNumericUserMissing(count);
    EXPECT_TRUE(replaceUserMissing(held, first, IBINUserMissing::NumericData));
    EXPECT_TRUE(replaceUserMissing(held, first, IBINUserMissing::NumericData));
    EXPECT_EQ(count.destroyed, 0);
    EXPECT_TRUE(replaceUserMissing(held, new CountingNumericUserMissing(count),
                                   IBINUserMissing::NumericData));
    EXPECT_EQ(count.destroyed, 1);
    EXPECT_TRUE(replaceUserMissing(held, nullptr, IBINUserMissing::NumericData));
    EXPECT_EQ(count.destroyed, 2);
    EXPECT_TRUE(replaceUserMissing(held, nullptr, IBINUserMissing::NumericData));
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
  EXPECT_FALSE(replaceUserMissing(held, &refused, IBINUserMissing::NumericData));
  EXPECT_EQ(held.get(), before);
  EXPECT_EQ(count.destroyed, 0);
}

TEST(HeldUserMissingTest, CloneOfNullIsNull) {
  EXPECT_EQ(cloneUserMissing(nullptr), nullptr);
  const BINNumericUserMissing definition;
  const auto clone = cloneUserMissing(&definition);
  ASSERT_NE(clone, nullptr);
  EXPECT_NE(clone.get(), &definition);
}

TEST(HeldUserMissingTest, DisplayIsHeadedAndNothingForNull) {
  const auto displayOf = [](const IBINUserMissing* definition) {
    return Written([definition](std::ostream& os) { displayUserMissing(os, definition); });
  };
  EXPECT_EQ(displayOf(nullptr), "");
  const BINStringUserMissing definition;
  EXPECT_EQ(displayOf(&definition), "\t\tUser-missing values for this encoder:\n\t\t" +
                                        Flushing("\n"
                                                 "Start of BINStringUserMissing display\n"
                                                 "End of BINStringUserMissing display\n"));
}

}  // namespace
