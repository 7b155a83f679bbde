/// Bins a data set through the exported interface, as a host does.
#ifndef MCBINNING_TESTS_PROPERTIES_BINNING_H
#define MCBINNING_TESTS_PROPERTIES_BINNING_H

#include <gtest/gtest.h>
#include <mcbinning/mcbinning.h>

#include <cstdint>
#include <memory>
#include <ostream>
#include <vector>

#include "properties/data_set.h"
#include "random/random_runs.h"
#include "support/scratch_directory.h"
#include "support/vector_cases.h"

namespace properties {

enum class Algorithm { kSupervised, kEqualFrequency };

/// A record of either algorithm.
struct Record {
  MCBinning::MCStatus status;
  std::vector<double> cutPoints;
  std::vector<std::vector<double>> counts;  // per bin the total, if supervised also each category
  unsigned int distinctValues = 0;
  double totalWeight = 0.0;
  double totalWeightWithMissing = 0.0;
  double minimum = 0.0;
  double maximum = 0.0;
  double modelEntropy = 0.0;  // 0 unless supervised

  bool operator==(const Record& other) const = default;
};

/// For the messages of failed tests.
void PrintTo(const Record& record, std::ostream* os);

/// One algorithm object over a data set. The attributes have the indexes from 0 on.
class Binning {
 public:
  Binning(const DataSet& data, Algorithm algorithm);

  /// Without a selection every attribute is binned.
  void Run(const std::vector<int>* selection = nullptr);

  /// Those of all runs so far.
  std::vector<Record> Records();

 private:
  mcbinning_tests::ScratchDirectory directory_;
  mcbinning_tests::VectorCases cases_;
  int target_ = 0;
  std::unique_ptr<IBINAlgorithm> supervised_;  // one of the two is null
  std::unique_ptr<IEFBINAlgorithm> equalFrequency_;
};

/// A record of every attribute; none when no case counts.
std::vector<Record> bin(const DataSet& data, Algorithm algorithm);

/// Calls `check` with random data sets until one fails, and says with which seed.
template <typename Check>
void forRandomDataSets(Check check) {
  mcbinning_tests::forRandomRuns(200, [&check](Choices& choices) {
    DataSet data(choices);
    check(data, choices);
  });
}

}  // namespace properties

#endif
