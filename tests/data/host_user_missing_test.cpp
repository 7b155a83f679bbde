// A host may hand over its own implementation of a user-missing definition. It has no values that
// the pass could ask for, whatever data type it claims.
#include <gtest/gtest.h>

#include "mcbinning/variable_list.h"
#include "support/counting_user_missing.h"
#include "support/table_run.h"

namespace {

TEST(HostUserMissingTest, DeclaresNothingMissingInThePass) {
  BINVarList list;
  list.AddContVar("x", "", IBINVariable::AttributeRole);
  list.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
  for (const int variable : {0, 1}) {
    ASSERT_TRUE(list.GetVarAt(variable)->SetUserMissingInfo(
        new mcbinning_tests::ForeignUserMissing(IBINUserMissing::NumericData)));
  }
  mcbinning_tests::TableRun run(list, {{1.0, 2.0}, {0.0, 1.0}});
  ASSERT_TRUE(run.Prepare().IsOK());
  MCBinning::SortedRows* rows = nullptr;
  ASSERT_TRUE(run.table.BuildUnsupervisedTable(0, rows).IsOK());
  ASSERT_EQ(rows->Size(), 2U);
  EXPECT_EQ(rows->Value(0), 0.0);
  EXPECT_EQ(rows->Weight(1), 2.0);
}

}  // namespace
