// The library against the plain model on public data sets: long columns with real ties.
#include <gtest/gtest.h>
#include <mcbinning/encoders.h>

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "random/run_comparison.h"
#include "support/csv_table.h"
#include "support/scratch_directory.h"

namespace mcbinning_tests {
namespace {

struct DataSet {
  std::string file;
  std::string target;
  std::string weight;  // empty for none
  std::vector<std::string> attributes;
};

void PrintTo(const DataSet& dataSet, std::ostream* os) { *os << dataSet.file; }

// Target first, then the attributes, then the weight.
RandomRun makeRun(const DataSet& dataSet) {
  const CsvTable table(std::string(MCBINNING_KNOWN_DATA) + "/" + dataSet.file);
  RandomRun run;
  run.requests.emplace_back();
  std::vector<Case>& cases = run.requests.front().cases;
  BINStringEncoder encoder(0);
  for (const std::string& text : table.Texts(dataSet.target)) {
    cases.push_back({encoder.Encode(text)});
  }
  plain_model::Variable target;
  target.name = dataSet.target;
  target.level = plain_model::kStringLevel;
  target.role = plain_model::kTargetRole;
  target.declared = encoder.GetNumberOfCategories();
  run.list.AddDeclared(target);
  std::vector<std::string> columns = dataSet.attributes;
  plain_model::Variable variable;
  variable.role = plain_model::kAttributeRole;
  for (const std::string& attribute : dataSet.attributes) {
    variable.name = attribute;
    run.list.AddScale(variable);
  }
  if (!dataSet.weight.empty()) {
    columns.push_back(dataSet.weight);
    run.list.AddWeight(variable);
  }
  for (const std::string& column : columns) {
    const std::vector<double> numbers = table.Numbers(column);
    for (std::size_t i = 0; i < cases.size(); ++i) {
      cases[i].push_back(numbers[i]);
    }
  }
  return run;
}

class PublicData : public testing::TestWithParam<DataSet> {
 protected:
  void SetUp() override {
    if (!std::filesystem::is_directory(MCBINNING_KNOWN_DATA)) {
      GTEST_SKIP() << "no data sets in " << MCBINNING_KNOWN_DATA;
    }
  }

  void Compare(RandomRun& run, bool supervised, const plain_model::Settings& settings) {
    run.supervised = supervised;
    run.requests.front().settings = settings;
    plain_model::Events events;
    EXPECT_NO_THROW(compareWithLibrary(run, directory_.Path(), events))
        << (settings.rightClosed ? "right closed" : "right open") << ", threshold "
        << settings.distinctValueThreshold << ", small bins " << settings.smallBinThreshold;
  }

 private:
  ScratchDirectory directory_;
};

TEST_P(PublicData, LibraryAgreesBitForBit) {
  RandomRun run = makeRun(GetParam());
  for (const bool rightClosed : {true, false}) {
    plain_model::Settings settings;
    settings.rightClosed = rightClosed;
    settings.numberOfBins = 20;
    Compare(run, false, settings);
    for (const int threshold : {0, 50}) {
      settings.distinctValueThreshold = threshold;
      settings.smallBinThreshold = threshold == 0 ? 0.0 : 0.8;
      Compare(run, true, settings);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(
    Files, PublicData,
    testing::Values(
        DataSet{"iris.csv", "species", "", {"sepal_length", "sepal_width", "petal_length"}},
        DataSet{"titanic.csv", "survived", "", {"age", "fare", "sibsp", "pclass"}},
        DataSet{"diamonds.csv", "cut", "", {"carat", "depth", "table", "price", "x", "y", "z"}},
        DataSet{"adult.csv", "income", "", {"age", "fnlwgt", "capital_gain", "hours_per_week"}},
        DataSet{"adult.csv", "education", "fnlwgt", {"age", "capital_loss", "hours_per_week"}},
        DataSet{"pima.csv", "diabetes", "age", {"glucose", "insulin", "bmi", "pedigree"}},
        DataSet{"german-credit.csv", "class", "", {"duration", "credit_amount", "age"}},
        DataSet{"wine-white.csv", "quality", "", {"alcohol", "density", "pH", "chlorides"}}));

}  // namespace
}  // namespace mcbinning_tests
