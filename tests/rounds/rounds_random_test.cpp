// Random runs in rounds against the ordinary algorithms: every record equal in every bit.
#include <gtest/gtest.h>
#include <mccomvor/missing_value.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "ef/ef_bin_algorithm.h"
#include "mcbinning/rounds.h"
#include "random/agreement.h"
#include "random/choices.h"
#include "random/random_runs.h"
#include "rounds/make_believe_engine.h"
#include "supervised/bin_algorithm.h"
#include "support/memory_file_system.h"
#include "support/vector_cases.h"

namespace mcbinning_tests {
namespace {

using MCBinning::MCStatus;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kMax = std::numeric_limits<double>::max();
constexpr double kDenorm = std::numeric_limits<double>::denorm_min();
const double kNaN = std::numeric_limits<double>::quiet_NaN();

/// One random task: data, settings, plan and the parts of the engine.
struct Task {
  explicit Task(Choices& choices) : choices_(choices) {
    DrawCases();
    DrawSettings();
    DrawPlan();
    DrawParts();
  }

  std::size_t DrawSize() {
    const int most = choices_.Pick({0, 1, 3, 8, 50, 50, 300, 300, 1500});
    return static_cast<std::size_t>(choices_.Between(std::min(most, 1), std::max(most, 1)));
  }

  void DrawCases() {
    const std::size_t size = DrawSize();
    const int attributes = choices_.Between(1, 3);
    for (int i = 0; i < attributes; ++i) {
      data.columns.push_back(DrawColumn(size));
      data.userMissing.emplace_back();
      if (choices_.Chance(0.3)) {
        data.userMissing.back().AddValue(
            choices_.Pick(std::vector<double>{1.0, 3.0, 0.0, kInfinity}), "");
      }
      if (choices_.Chance(0.1)) {
        data.userMissing.back().SetInterval(BINNumericInterval(5.0, 9.0));
      }
    }
    data.categories = choices_.Pick({1, 2, 2, 2, 3, 3, 5, 12, 40});
    DrawTarget(size);
    DrawWeights(size);
  }

  double Drawn(int kind) {
    switch (kind) {
      case 0:
        return choices_.Below(6);
      case 1:
        return choices_.Unit();
      case 2:
        return std::exp(20.0 * choices_.Unit() * choices_.Unit()) * choices_.Pick({-1.0, 1.0, 1.0});
      case 3:
        return choices_.Pick(std::vector<double>{
            -kInfinity, kInfinity, kMax, -kMax, 0.0, -0.0, kDenorm, -kDenorm, 1.0, -1.0,
            std::nextafter(1.0, 2.0), std::nextafter(kMax, 0.0), 1e308, 1.7e308});
      case 4:
        return choices_.Below(2000) / 100.0;
      case 5:
        return std::bit_cast<double>(std::bit_cast<std::uint64_t>(1.0) +
                                     static_cast<std::uint64_t>(choices_.Below(40)));
      case 6:
        return choices_.Chance(0.8) ? 7.25 : choices_.Below(500);
      default:
        return 1e6 + choices_.Unit() * 1e-6;
    }
  }

  std::vector<double> DrawColumn(std::size_t size) {
    const int kind = choices_.Below(8);
    const double missing = choices_.Pick({0.0, 0.0, 0.1, 0.9});
    const double special = choices_.Pick({0.0, 0.0, 0.0, 0.05});
    std::vector<double> column(size);
    for (double& cell : column) {
      cell = Drawn(choices_.Chance(special) ? 3 : kind);
      if (choices_.Chance(missing)) {
        cell = choices_.Pick({kNaN, MCMV::gMissingValue});
      }
    }
    return column;
  }

  /// Classes that follow the first column's order more or less.
  void DrawTarget(std::size_t size) {
    std::vector<double> sorted = data.columns[0];
    std::sort(sorted.begin(), sorted.end(), [](double left, double right) { return left < right; });
    const double noise = choices_.Pick({0.0, 0.02, 0.2, 0.6, 1.0});
    const int steps = choices_.Between(1, 9);
    const int used = choices_.Chance(0.2) ? choices_.Between(1, data.categories) : data.categories;
    const double missing = choices_.Pick({0.0, 0.0, 0.1, 1.0});
    for (std::size_t i = 0; i < size; ++i) {
      const double value = data.columns[0][i];
      const auto rank = std::lower_bound(sorted.begin(), sorted.end(), value) - sorted.begin();
      const int step = static_cast<int>(rank) * steps / static_cast<int>(size);
      const bool isNoise = value != value || choices_.Chance(noise);
      const int code = isNoise ? choices_.Below(used) : step % used;
      data.codes.push_back(choices_.Chance(missing * 0.5) ? -1 : code);
    }
  }

  void DrawWeights(std::size_t size) {
    const int kind = choices_.Below(6);
    if (kind < 2) {
      return;
    }
    for (std::size_t i = 0; i < size; ++i) {
      data.weights.push_back(
          kind == 2   ? choices_.Between(0, 3)
          : kind == 3 ? choices_.Pick({1.0, 1.0, 50.0, kNaN, -2.0})
          : kind == 4 ? std::floor(std::ldexp(choices_.Unit(), 30))
                      : std::floor(std::ldexp(choices_.Unit(), choices_.Between(1, 42))));
    }
  }

  void DrawSettings() {
    const int bins = choices_.Pick({2, 3, 4, 5, 7, 10, 20, 100, 1000});
    const bool closed = choices_.Chance(0.5);
    supervised.SetNumberOfBins(bins);
    supervised.SetRightBorderClosed(closed);
    supervised.SetSmallBinDetectionThreshold(choices_.Pick({0.0, 0.0, 0.3, 1.0}));
    if (choices_.Chance(0.4)) {
      supervised.SetNumDistinctValueThreshold(choices_.Pick({0, 1, 5, 30, 200}));
    }
    equalFrequency.SetNumberOfBins(bins);
    equalFrequency.SetRightBorderClosed(closed);
  }

  void DrawPlan() {
    for (std::size_t i = 0; i < data.columns.size(); ++i) {
      BINRoundsAttribute attribute;
      attribute.index = static_cast<int>(i);
      const int count = choices_.Pick({0, 1, 2, 5, 30, 200, 5000});
      for (int border = 0; border < count; ++border) {
        const double drawn = data.Size() > 0 && choices_.Chance(0.8)
                                 ? choices_.Pick(data.columns[i])
                                 : Drawn(choices_.Below(8));
        attribute.firstBorders.push_back(drawn == drawn ? drawn : 0.0);
      }
      plan.attributes.push_back(attribute);
    }
    plan.target = static_cast<int>(data.columns.size());
    plan.categories = data.categories;
    plan.mostFetched = choices_.Pick({1.0, 2.0, 5.0, 20.0, 100.0, 1000.0, 50000.0});
    plan.mostBorders = choices_.Pick({1, 3, 8, 64, 1000});
  }

  void DrawParts() {
    const int count = choices_.Pick({1, 2, 7, 20});
    const double skew = choices_.Pick({0.0, 0.5, 1.0});
    for (std::size_t i = 0; i < data.Size(); ++i) {
      partOfCase.push_back(choices_.Chance(skew) ? 0
                                                 : static_cast<std::size_t>(choices_.Below(count)));
    }
    for (int part = 0; part < count; ++part) {
      order.insert(order.begin() + choices_.Below(part + 1), static_cast<std::size_t>(part));
    }
  }

  Choices& choices_;
  RoundsData data;
  BINSettings supervised;
  EFBINSettings equalFrequency;
  BINRoundsPlan plan;
  std::vector<std::size_t> partOfCase;
  std::vector<std::size_t> order;
};

BINVarList listOf(const RoundsData& data, bool withTarget) {
  BINVarList list;
  for (std::size_t i = 0; i < data.columns.size(); ++i) {
    const int index = list.AddContVar("x" + std::to_string(i), "", IBINVariable::AttributeRole);
    for (const double value : data.userMissing[i].GetDiscreteValues()) {
      list.AddDiscreteUserMissing(index, value, "");
    }
    if (const BINNumericInterval* interval = data.userMissing[i].GetInterval()) {
      list.SetMissingInterval(index, interval->GetLeftEnd(), interval->GetRightEnd());
    }
  }
  if (withTarget) {
    list.AddCatVar("y", "", data.categories, IBINVariable::NumericCategoricalLevel,
                   IBINVariable::TargetRole);
  }
  if (!data.weights.empty()) {
    list.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
  }
  return list;
}

/// The cases as the ordinary algorithms take them: NaN as system-missing, -0.0 as 0.0.
std::vector<std::vector<double>> rowsOf(const RoundsData& data, bool withTarget) {
  std::vector<std::vector<double>> rows(data.Size());
  for (std::size_t i = 0; i < data.Size(); ++i) {
    for (const std::vector<double>& column : data.columns) {
      const double value = column[i];
      rows[i].push_back(value == value ? value + 0.0 : MCMV::gMissingValue);
    }
    if (withTarget) {
      rows[i].push_back(data.codes[i] < 0 ? MCMV::gMissingValue : data.codes[i]);
    }
    if (!data.weights.empty()) {
      rows[i].push_back(data.weights[i]);
    }
  }
  return rows;
}

void compareStatuses(const char* what, const MCStatus& inRounds, const MCStatus& ordinary) {
  compare(what, inRounds.GetErrorCode(), ordinary.GetErrorCode());
  compare(what, inRounds.IsWarning(), ordinary.IsWarning());
  for (unsigned slot = 0; slot < 3; ++slot) {
    compare(what, inRounds.GetDiscreteDatum(slot), ordinary.GetDiscreteDatum(slot));
    compare(what, inRounds.GetScaleDatum(slot), ordinary.GetScaleDatum(slot));
  }
}

template <typename Record>
void compareShared(const Record& inRounds, const Record& ordinary) {
  compareStatuses("status", inRounds.GetStatus(), ordinary.GetStatus());
  compare("attribute", inRounds.GetAttributeIndex(), ordinary.GetAttributeIndex());
  compare("distinct values", inRounds.GetNDistinctValues(), ordinary.GetNDistinctValues());
  compare("cut points", inRounds.GetCutPoints(), ordinary.GetCutPoints());
  compare("counts", inRounds.GetCellCounts(), ordinary.GetCellCounts());
  compare("total weight", inRounds.GetTotalWeight(), ordinary.GetTotalWeight());
  compare("total weight with missing", inRounds.GetTotalWeightWithMissing(),
          ordinary.GetTotalWeightWithMissing());
  compare("minimum", inRounds.GetMinimum(), ordinary.GetMinimum());
  compare("maximum", inRounds.GetMaximum(), ordinary.GetMaximum());
}

void compareRecords(const BINAttributeTargetResults& inRounds,
                    const BINAttributeTargetResults& ordinary) {
  compareShared(inRounds, ordinary);
  compare("target", inRounds.GetTargetIndex(), ordinary.GetTargetIndex());
  compare("model entropy", inRounds.GetModelEntropy(), ordinary.GetModelEntropy());
}

void compareRecords(const BINAttributeResults& inRounds, const BINAttributeResults& ordinary) {
  compareShared(inRounds, ordinary);
}

template <typename Record, typename Output>
void compareOutputs(const Output& inRounds, const Output& ordinary) {
  std::vector<Record> records;
  std::vector<Record> expected;
  inRounds.GetAllCutPoints(records);
  ordinary.GetAllCutPoints(expected);
  compare("number of records", records.size(), expected.size());
  for (std::size_t i = 0; i < records.size(); ++i) {
    within("record", i, [&] { compareRecords(records[i], expected[i]); });
  }
}

template <typename Settings>
MCStatus runInRounds(const Task& task, const RoundsData& data, const Settings& settings,
                     BINRounds& rounds) {
  const MakeBelieveEngine engine(data, task.partOfCase, task.order);
  MCStatus status = rounds.Start(settings, task.plan);
  while (!status.IsError() && !rounds.IsFinished()) {
    BINRoundAnswer answer;
    compareStatuses("answer", engine.Ask(rounds.GetQuestion(), answer), MCStatus());
    status = rounds.Answer(answer);
    check(rounds.GetProgress().rounds < 20000, "the run comes to an end");
  }
  return status;
}

void compareSupervised(const Task& task) {
  MemoryFileSystem files;
  BINVarList list = listOf(task.data, true);
  VectorCases cases(rowsOf(task.data, true));
  BINSettings settings = task.supervised;
  MCBinning::BINAlgorithm algorithm(settings, list, files);
  const MCStatus expected = algorithm.Run(cases, nullptr, nullptr);
  BINRounds rounds;
  const MCStatus status = runInRounds(task, task.data, settings, rounds);
  compareStatuses("status of the run", status, expected);
  compareOutputs<BINAttributeTargetResults>(rounds.GetOutput(), *algorithm.GetOutput());
}

void compareEqualFrequency(const Task& task) {
  RoundsData data = task.data;
  data.codes.clear();
  data.categories = 1;
  MemoryFileSystem files;
  BINVarList list = listOf(data, false);
  VectorCases cases(rowsOf(data, false));
  EFBINSettings settings = task.equalFrequency;
  MCBinning::EFBINAlgorithm algorithm(settings, list, files);
  const MCStatus expected = algorithm.Run(cases, nullptr);
  BINRounds rounds;
  const MCStatus status = runInRounds(task, data, settings, rounds);
  compareStatuses("status of the run", status, expected);
  compareOutputs<BINAttributeResults>(rounds.GetEFOutput(), *algorithm.GetOutput());
}

TEST(RoundsRandomTest, RecordsAreThoseOfTheOrdinaryAlgorithmsBitForBit) {
  forRandomRuns(2000, [](Choices& choices) {
    const Task task(choices);
    compareSupervised(task);
    compareEqualFrequency(task);
  });
}

}  // namespace
}  // namespace mcbinning_tests
