#include "data/attribute_table.h"

#include <gtest/gtest.h>
#include <mccomvor/missing_value.h>

#include <cmath>
#include <limits>
#include <vector>

#include "support/table_run.h"

namespace {

using MCBinning::MCStatus;
using MCBinning::SortedRows;
using mcbinning_tests::TableRun;

void addTarget(BINVarList& list, int categories) {
  list.AddCatVar("target", "", categories, IBINVariable::NumericCategoricalLevel,
                 IBINVariable::TargetRole);
}

std::vector<double> values(const SortedRows& rows) {
  std::vector<double> result;
  for (std::size_t row = 0; row < rows.Size(); ++row) {
    result.push_back(rows.Value(row));
  }
  return result;
}

TEST(AttributeTableTest, RowsOfTheAttributeComeSortedWithTheirCodesAndWeights) {
  BINVarList list;
  const int x = list.AddContVar("x", "", IBINVariable::AttributeRole);
  addTarget(list, 3);
  list.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
  TableRun run(list, {{3.5, 0, 2}, {1.5, 2, 1}, {3.5, 1, 4}, {-7, 1, 3.9}, {2, 1, 0.5}});
  ASSERT_TRUE(run.table.Prepare().IsOK());
  const SortedRows* rows = nullptr;
  ASSERT_TRUE(run.table.BuildSupervisedTable(x, 1, &rows).IsOK());
  ASSERT_NE(rows, nullptr);
  EXPECT_EQ(values(*rows), (std::vector<double>{-7, 1.5, 3.5, 3.5}));
  EXPECT_EQ(rows->Code(0), 1);
  EXPECT_EQ(rows->Weight(0), 3.0);
  EXPECT_EQ(rows->Code(2), 0);
  EXPECT_EQ(rows->Code(3), 1);
  EXPECT_EQ(run.table.GetNTargetCategories(), 3U);
  EXPECT_EQ(run.table.GetNRows(), 4U);
  EXPECT_EQ(run.table.GetNDistinctValues(), 3U);
  EXPECT_EQ(run.table.GetMinimum(), -7.0);
  EXPECT_EQ(run.table.GetMaximum(), 3.5);
  EXPECT_EQ(run.table.GetTotalWeight(), 10.0);
  EXPECT_EQ(run.table.GetTotalWeightWithMissing(), 10.0);
}

}  // namespace
