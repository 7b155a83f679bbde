#ifndef MCBINNING_TESTS_SUPPORT_SUPERVISED_RUN_H
#define MCBINNING_TESTS_SUPPORT_SUPERVISED_RUN_H

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "mcbinning/outputs.h"
#include "mcbinning/settings.h"
#include "mcbinning/variable_list.h"
#include "supervised/bin_algorithm.h"
#include "support/failing_file_system.h"
#include "support/scratch_directory.h"
#include "support/vector_cases.h"

namespace mcbinning_tests {

/// A supervised algorithm over cases in memory, with all that it borrows and a directory of its
/// own, which must be empty at the end. Fill `list` and `settings`, then run.
struct SupervisedRun {
  using Rows = std::vector<std::vector<double>>;

  explicit SupervisedRun(const Rows& rows) : cases(rows) {
    settings.SetNumberOfBins(10);
    settings.SetTempDirName(directory.Path());
  }

  void AddTarget(int categories) {
    list.AddCatVar("target", "", categories, IBINVariable::NumericCategoricalLevel,
                   IBINVariable::TargetRole);
  }
  void AddScale(const char* name) { list.AddContVar(name, "", IBINVariable::AttributeRole); }

  MCBinning::BINAlgorithm& Algorithm() {
    if (algorithm == nullptr) {
      algorithm = std::make_unique<MCBinning::BINAlgorithm>(settings, list, files);
    }
    return *algorithm;
  }

  MCBinning::MCStatus Run(const std::vector<int>* attributes = nullptr,
                          const std::vector<int>* targets = nullptr) {
    return Algorithm().Run(cases, attributes, targets);
  }

  std::vector<BINAttributeTargetResults> Results() {
    std::vector<BINAttributeTargetResults> results;
    Algorithm().GetOutput()->GetAllCutPoints(results);
    return results;
  }

  /// The one result of a run over one pair.
  BINAttributeTargetResults OnlyResult() {
    const auto results = Results();
    EXPECT_EQ(results.size(), 1U);
    return results.empty() ? BINAttributeTargetResults() : results[0];
  }

  ScratchDirectory directory;
  FailingFileSystem files;
  VectorCases cases;
  BINVarList list;
  BINSettings settings;
  std::unique_ptr<MCBinning::BINAlgorithm> algorithm;
};

/// One scale attribute, index 0, and a target, index 1.
struct PairRun : SupervisedRun {
  explicit PairRun(const Rows& rows, int categories = 2) : SupervisedRun(rows) {
    AddScale("x");
    AddTarget(categories);
  }
};

/// Of a PairRun: the only cut lies between 3 and 4.
inline const SupervisedRun::Rows kSeparatedRows = {{1, 0}, {2, 0}, {3, 0}, {4, 1}, {5, 1}, {6, 1}};

}  // namespace mcbinning_tests

#endif
