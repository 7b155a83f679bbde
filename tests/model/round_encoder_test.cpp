#include <gtest/gtest.h>
#include <mccomvor/missing_value.h>

#include <memory>

#include "mcbinning/encoders.h"
#include "support/counting_user_missing.h"
#include "support/display.h"

namespace {

using mcbinning_tests::CountingNumericUserMissing;
using mcbinning_tests::DisplayOf;
using mcbinning_tests::Flushing;
using mcbinning_tests::ForeignUserMissing;
using mcbinning_tests::UserMissingCount;

TEST(RoundEncoderTest, DefaultTruncates) { EXPECT_EQ(BINRoundEncoder().Encode(2.7), 2.0); }

TEST(RoundEncoderTest, BorrowsItsDefinition) {
  UserMissingCount count;
  CountingNumericUserMissing definition(count);
  definition.AddValue(9.0, "nine");
  BINStringUserMissing string;
  {
    BINRoundEncoder encoder;
    EXPECT_TRUE(encoder.SetUserMissingInfo(&definition));
    EXPECT_FALSE(encoder.SetUserMissingInfo(&string));
    EXPECT_EQ(encoder.GetUserMissingInfo(), &definition);
    EXPECT_EQ(encoder.Encode(9.0), MCMV::gMissingValue);
    EXPECT_EQ(encoder.Encode(8.0), 8.0);
    const std::unique_ptr<IBINEncoder> clone(encoder.Clone());
    EXPECT_EQ(clone->GetUserMissingInfo(), &definition);
    BINRoundEncoder assigned;
    assigned = encoder;
    EXPECT_EQ(assigned.GetUserMissingInfo(), &definition);
    EXPECT_TRUE(encoder.SetUserMissingInfo(nullptr));
    EXPECT_EQ(encoder.GetUserMissingInfo(), nullptr);
    EXPECT_EQ(encoder.Encode(9.0), 9.0);
  }
  EXPECT_EQ(count.destroyed, 0);
  EXPECT_EQ(count.alive, 1);
}

TEST(RoundEncoderTest, DisplayShowsOptionAndDefinition) {
  EXPECT_EQ(DisplayOf(BINRoundEncoder(IBINVariable::TruncateToSmallerInt)),
            Flushing("\tBINRoundEncoder: option = Truncate to smaller int\n\n"));
  EXPECT_EQ(DisplayOf(BINRoundEncoder(static_cast<IBINVariable::BINWRoundingOption>(7))),
            Flushing("\tBINRoundEncoder: option = \n\n"));
  BINNumericUserMissing definition;
  definition.AddValue(9.0, "nine");
  BINRoundEncoder encoder(IBINVariable::RoundToClosestInt);
  encoder.SetUserMissingInfo(&definition);
  EXPECT_EQ(DisplayOf(encoder), Flushing("\tBINRoundEncoder: option = Round to closest int\n") +
                                    "\t\tUser-missing values for this encoder:\n" +
                                    Flushing("\t\t\n"
                                             "Start of BINNumericUserMissing display\n"
                                             "Discrete missing values:\n"
                                             "\t0\t9, label = nine\n"
                                             "End of BINNumericUserMissing display\n"
                                             "\n"));
}

TEST(RoundEncoderTest, AHostsOwnDefinitionIsAcceptedByItsTypeAndDeclaresNothing) {
  ForeignUserMissing borrowed(IBINUserMissing::NumericData);
  BINRoundEncoder encoder;
  EXPECT_TRUE(encoder.SetUserMissingInfo(&borrowed));
  EXPECT_EQ(encoder.Encode(1.0), 1.0);
}

}  // namespace
