#include "faults/use.h"

#include <gtest/gtest.h>
#include <mccomvor/missing_value.h>

#include <bit>
#include <ostream>
#include <streambuf>

#include "ef/ef_bin_algorithm.h"
#include "mcbinning/factories.h"
#include "mcbinning/outputs.h"
#include "mcbinning/settings.h"
#include "mcbinning/variable_list.h"
#include "supervised/bin_algorithm.h"

namespace mcbinning_tests {
namespace {

using MCBinning::MCStatus;

enum Variable { kFew, kMany, kColour, kTarget, kWeight };

/// Takes whatever is written and needs no memory for it.
class Sink : public std::streambuf {
 protected:
  int_type overflow(int_type character) override { return traits_type::not_eof(character); }
};

template <typename Shown>
void display(Shown& shown) {
  Sink sink;
  std::ostream stream(&sink);
  shown.Display(stream);
}

BINVarList variablesOf(const Scenario& scenario) {
  BINVarList list;
  list.AddContVar("few different values", "", IBINVariable::AttributeRole);
  list.AddDiscreteUserMissing(kFew, 99.0, "no answer");
  list.SetMissingInterval(kFew, 200.0, 300.0);
  list.AddContVar("many different values", "", IBINVariable::AttributeRole);
  list.AddCatVar("colour", "", 3, IBINVariable::NumericCategoricalLevel,
                 IBINVariable::AttributeRole);
  list.AddCatVar("target", "", std::vector<double>{1.0, 2.0, 3.0}, IBINVariable::TargetRole);
  list.AddWeightVar("weight", "",
                    scenario.wholeWeights ? IBINVariable::TruncateToSmallerInt
                                          : static_cast<IBINVariable::BINWRoundingOption>(2));
  return list;
}

template <typename Settings>
Settings settingsOf(const Scenario& scenario, FaultyHost& host, const std::string& directory) {
  Settings settings;
  settings.SetNumberOfBins(8);
  settings.SetTempDirName(directory);
  settings.SetNSkippedCasesReports(static_cast<int>(scenario.cases / 8));
  settings.SetProgressListener(&host);
  settings.SetCancelPointer(&host);
  return settings;
}

void append(std::vector<std::uint64_t>& figures, const std::vector<double>& values) {
  figures.push_back(values.size());
  for (const double value : values) {
    figures.push_back(std::bit_cast<std::uint64_t>(value));
  }
}

ResultRecord recordOf(const BINAttributeTargetResults& result) {
  ResultRecord record{
      result.GetStatus(), {result.GetAttributeIndex(), result.GetTargetIndex()}, {}};
  append(record.figures, result.GetCutPoints());
  for (const auto& row : result.GetCellCounts()) {
    append(record.figures, row);
  }
  record.figures.push_back(result.GetNDistinctValues());
  append(record.figures, {result.GetTotalWeight(), result.GetTotalWeightWithMissing(),
                          result.GetMinimum(), result.GetMaximum(), result.GetModelEntropy()});
  return record;
}

ResultRecord recordOf(const BINAttributeResults& result) {
  ResultRecord record{result.GetStatus(), {result.GetAttributeIndex()}, {}};
  append(record.figures, result.GetCutPoints());
  append(record.figures, result.GetCellCounts());
  record.figures.push_back(result.GetNDistinctValues());
  append(record.figures, {result.GetTotalWeight(), result.GetTotalWeightWithMissing(),
                          result.GetMinimum(), result.GetMaximum()});
  return record;
}

/// The first record with the indexes of `record`.
const ResultRecord& firstLike(const ResultRecord& record,
                              const std::vector<ResultRecord>& records) {
  std::size_t first = 0;
  while (records[first].indexes != record.indexes) {
    ++first;
  }
  return records[first];
}

class SupervisedUse final : public Use {
 public:
  SupervisedUse(const Scenario& scenario, FaultyHost& host, const std::string& directory,
                MCBinning::FileSystem* files)
      : list_(variablesOf(scenario)),
        settings_(settingsOf<BINSettings>(scenario, host, directory)),
        host_(host),
        files_(files),
        wholeList_(scenario.wholeWeights) {
    settings_.SetNumDistinctValueThreshold(scenario.distinctValueThreshold);
    settings_.SetSmallBinDetectionThreshold(scenario.smallBinThreshold);
  }

  MCStatus Create() override {
    if (files_ != nullptr) {
      algorithm_ = std::make_unique<MCBinning::BINAlgorithm>(settings_, list_, *files_);
      return {};
    }
    algorithm_.reset(factory_.CreateBINAlgorithm(settings_, list_));
    return factory_.GetStatus();
  }

  bool Exists() const override { return algorithm_ != nullptr; }

  MCStatus Run() override {
    host_.Restart();
    return wholeList_ ? algorithm_->Run(host_, nullptr, nullptr)
                      : algorithm_->Run(host_, &attributes_, &targets_);
  }

  MCStatus GetStatus() override { return algorithm_->GetStatus(); }

  std::vector<ResultRecord> Read() override {
    const BINOutput& output = *algorithm_->GetOutput();
    std::vector<BINAttributeTargetResults> results;
    output.GetAllCutPoints(results);
    std::vector<ResultRecord> records;
    for (const auto& result : results) {
      records.push_back(recordOf(result));
    }
    for (const ResultRecord& record : records) {
      if (record.indexes[0] >= 0) {
        BINAttributeTargetResults found;
        output.GetAttributeTargetCutPoints(record.indexes[0], record.indexes[1], found);
        EXPECT_TRUE(recordOf(found) == firstLike(record, records));
        std::vector<BINAttributeTargetResults> ofAttribute;
        output.GetAttributeCutPoints(record.indexes[0], ofAttribute);
        EXPECT_FALSE(ofAttribute.empty());
      }
    }
    algorithm_->GetVersion();
    display(*algorithm_);
    return records;
  }

 private:
  const std::vector<int> attributes_ = {kFew, kMany, -1, kMany, kColour};
  const std::vector<int> targets_ = {kTarget, kTarget, kTarget, kColour, kTarget};
  BINVarList list_;
  BINSettings settings_;
  FaultyHost& host_;
  MCBinning::FileSystem* files_;
  bool wholeList_;
  BINFactory factory_;
  std::unique_ptr<IBINAlgorithm> algorithm_;
};

class EqualFrequencyUse final : public Use {
 public:
  EqualFrequencyUse(const Scenario& scenario, FaultyHost& host, const std::string& directory,
                    MCBinning::FileSystem* files)
      : list_(variablesOf(scenario)),
        settings_(settingsOf<EFBINSettings>(scenario, host, directory)),
        host_(host),
        files_(files),
        wholeList_(scenario.wholeWeights) {}

  MCStatus Create() override {
    if (files_ != nullptr) {
      algorithm_ = std::make_unique<MCBinning::EFBINAlgorithm>(settings_, list_, *files_);
      return {};
    }
    algorithm_.reset(factory_.CreateEFBINAlgorithm(settings_, list_));
    return factory_.GetStatus();
  }

  bool Exists() const override { return algorithm_ != nullptr; }

  MCStatus Run() override {
    host_.Restart();
    return algorithm_->Run(host_, wholeList_ ? nullptr : &attributes_);
  }

  MCStatus GetStatus() override { return algorithm_->GetStatus(); }

  std::vector<ResultRecord> Read() override {
    const EFBINOutput& output = *algorithm_->GetOutput();
    std::vector<BINAttributeResults> results;
    output.GetAllCutPoints(results);
    std::vector<ResultRecord> records;
    for (const auto& result : results) {
      records.push_back(recordOf(result));
    }
    for (const ResultRecord& record : records) {
      if (record.indexes[0] >= 0) {
        BINAttributeResults found;
        output.GetAttributeCutPoints(record.indexes[0], found);
        EXPECT_TRUE(recordOf(found) == firstLike(record, records));
      }
    }
    algorithm_->GetVersion();
    display(*algorithm_);
    return records;
  }

 private:
  const std::vector<int> attributes_ = {kMany, -1, kFew, kColour, kTarget};
  BINVarList list_;
  EFBINSettings settings_;
  FaultyHost& host_;
  MCBinning::FileSystem* files_;
  bool wholeList_;
  EFBINFactory factory_;
  std::unique_ptr<IEFBINAlgorithm> algorithm_;
};

}  // namespace

std::string NameOf(const Scenario& scenario) {
  std::string name = scenario.algorithm == Algorithm::Supervised ? "supervised" : "equal frequency";
  name += scenario.wholeWeights ? ", whole weights, " : ", fractional weights, ";
  return name + std::to_string(scenario.cases) + " cases";
}

std::vector<std::vector<double>> CasesOf(const Scenario& scenario) {
  const double missing = MCMV::gMissingValue;
  const std::size_t distinct = scenario.cases < 1000 ? 53 : 5003;
  std::vector<std::vector<double>> cases(scenario.cases);
  for (std::size_t i = 0; i < scenario.cases; ++i) {
    if (i % 19 == 11) {
      continue;
    }
    const double many =
        static_cast<double>((i + scenario.seed) * 31 % distinct) / static_cast<double>(distinct);
    const double target = many < 0.4 ? 0.0 : (many < 0.55 || i % 7 == 3 ? 1.0 : 2.0);
    // The middle category is rare: its bin is small enough to be merged.
    double few = i % 11 == 4 ? 1.0 : 4.0 * target + (i % 2 == 0 ? 0.0 : 1.0);
    few = i % 13 == 5 ? 99.0 : (i % 17 == 6 ? 250.0 : few);
    cases[i] = {few, i % 23 == 7 ? missing : many, static_cast<double>((i / 2 + i % 3) % 3),
                i % 29 == 8 ? -1.0 : target, i % 31 == 9 ? missing : 1.25 + (i % 2 == 0 ? 1 : 0)};
  }
  return cases;
}

std::unique_ptr<Use> MakeUse(const Scenario& scenario, FaultyHost& host,
                             const std::string& directory, MCBinning::FileSystem* files) {
  if (scenario.algorithm == Algorithm::Supervised) {
    return std::make_unique<SupervisedUse>(scenario, host, directory, files);
  }
  return std::make_unique<EqualFrequencyUse>(scenario, host, directory, files);
}

}  // namespace mcbinning_tests
