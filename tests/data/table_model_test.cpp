// The pass and the tables against the plain model on random lists and cases.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "data/binary_record_iterator.h"
#include "random/random_run.h"
#include "random/random_runs.h"
#include "random/record_comparison.h"
#include "supervised/pre_bins.h"
#include "support/plain_rows.h"
#include "support/table_run.h"

namespace mcbinning_tests {
namespace {

using MCBinning::SortedRows;
using plain_model::PreparedData;
using plain_model::ValueTable;

// Rows of one value and one code may come as one row; merging both sides makes them comparable.
void compareTable(const ValueTable& expected, const SortedRows& rows,
                  const MCBinning::BINAttributeTable& table) {
  compareRows(mergeRows(rowsOf(rows)), mergeRows(expected.rows));
  if (!rows.HasExactSums()) {  // one row per case
    compareRows(rowsOf(rows), expected.rows);
  }
  compare("rows", table.GetNRows(), expected.rows.size());
  compare("distinct values", table.GetNDistinctValues(), expected.distinctValues);
  compare("total weight", table.GetTotalWeight(), expected.totalWeight);
  compare("total weight with missing", table.GetTotalWeightWithMissing(),
          expected.totalWeightWithMissing);
  compare("minimum", table.GetMinimum(), expected.minimum);
  compare("maximum", table.GetMaximum(), expected.maximum);
}

void compareCounts(Choices& choices, const ValueTable& expected, const SortedRows& rows,
                   std::size_t nCategories) {
  std::vector<double> boundaries(static_cast<std::size_t>(choices.Between(2, 7)));
  for (double& boundary : boundaries) {
    boundary = choices.Between(-3, 12);
  }
  std::sort(boundaries.begin(), boundaries.end());
  if (choices.Flag()) {
    boundaries.back() = std::numeric_limits<double>::infinity();
  }
  const bool closed = choices.Flag();
  std::vector<double> counts;
  const MCBinning::MCStatus status = countPerBin(rows, nCategories, boundaries, closed, counts);
  plain_model::Status plainStatus;
  std::vector<double> plainCounts;
  for (const auto& bin : countPerBin(expected, boundaries, closed, plainStatus)) {
    plainCounts.insert(plainCounts.end(), bin.begin(), bin.end());
  }
  compareStatuses("count", status, plainStatus);
  compare("counts", counts, plainCounts);
}

class TableComparison {
 public:
  TableComparison(RandomRun& made, Choices& choices)
      : choices_(choices),
        list_(made.list.plain.Copy()),
        run_(made.list.host, made.requests.front().cases),
        data_(prepare(list_, made.requests.front().cases, events_)) {}

  // The number of tables compared.
  std::size_t CompareAll() {
    compareStatuses("pass", run_.Prepare(), data_.status);
    if (data_.status.IsError()) {
      check(run_.directory.IsEmpty(), "no file is left");
      return 0;
    }
    ComparePass();
    std::size_t tables = 0;
    for (int attribute = -1; attribute <= list_.Size(); ++attribute) {
      CompareUnsupervised(attribute);
      for (int target = -1; target <= list_.Size(); ++target) {
        tables += CompareSupervised(attribute, target) ? 1 : 0;
      }
    }
    return tables;
  }

 private:
  void ComparePass() {
    const MCBinning::BINDataPreparator& pass = run_.preparator;
    compare("cases used", pass.GetNumberOfCasesUsed(), data_.usedCases);
    compare("weight column", pass.GetWeightColumn(), data_.weightColumn);
    compare("columns", static_cast<std::size_t>(pass.GetNumberOfColumns()), data_.columns.size());
    for (int variable = 0; variable < list_.Size(); ++variable) {
      compare("column of a variable", pass.GetColumnOf(variable),
              data_.columnOf[static_cast<std::size_t>(variable)]);
    }
    for (std::size_t column = 0; column < data_.columns.size(); ++column) {
      within("column", column, [&] { CompareColumn(column); });
    }
  }

  void CompareColumn(std::size_t column) {
    bool isUsed = !data_.columnUsed[column];
    run_.preparator.GetColumnUseFlag(static_cast<int>(column), isUsed);
    compare("is used", isUsed, data_.columnUsed[column]);
    compare("highest code", run_.preparator.GetHighestCode(static_cast<int>(column)),
            data_.highestCode[column]);
    if (isUsed) {
      std::vector<double> cells;
      MCBinning::BinaryRecordIterator reader(run_.preparator.GetFileNames()[column]);
      while (reader.HasNext()) {
        cells.push_back(reader.Next());
      }
      compare("cells", cells, data_.columns[column]);
    }
  }

  void CompareUnsupervised(int attribute) {
    SortedRows* rows = nullptr;
    const auto status = run_.table.BuildUnsupervisedTable(attribute, rows);
    const ValueTable expected = unsupervisedTable(list_, data_, attribute, events_);
    compareStatuses("unsupervised table", status, expected.status);
    if (status.IsOK()) {
      compareTable(expected, *rows, run_.table);
    }
  }

  bool CompareSupervised(int attribute, int target) {
    SortedRows* rows = nullptr;
    const auto status = run_.table.BuildSupervisedTable(attribute, target, rows);
    const ValueTable expected = supervisedTable(list_, data_, attribute, target, events_);
    compareStatuses("supervised table", status, expected.status);
    if (!status.IsOK()) {
      return false;
    }
    compareTable(expected, *rows, run_.table);
    compare("categories", run_.table.GetNTargetCategories(),
            static_cast<std::size_t>(expected.targetCategories));
    compareCounts(choices_, expected, *rows, run_.table.GetNTargetCategories());
    return true;
  }

  Choices& choices_;
  plain_model::VariableList list_;
  TableRun run_;
  plain_model::Events events_;
  PreparedData data_;
};

TEST(TableModelTest, PassAndTablesAgreeWithThePlainModel) {
  std::size_t tables = 0;
  const RandomRuns random(400);
  forRandomRuns(random, [&tables](Choices& choices) {
    RandomRun made = makeRandomRun(choices);
    std::vector<int> single;
    std::vector<int> empty;
    if (made.list.host.IsValidList(single, empty)) {
      tables += TableComparison(made, choices).CompareAll();
    }
  });
  EXPECT_GE(tables, random.runs);
}

}  // namespace
}  // namespace mcbinning_tests
