// What holds of the bins of every data set.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <numeric>
#include <set>
#include <vector>

#include "properties/binning.h"

namespace properties {
namespace {

struct Row {
  double value;
  std::size_t code;
  double weight;
};

// The cases that count for an attribute, in their order.
std::vector<Row> rowsOf(const DataSet& data, Algorithm algorithm, std::size_t attribute) {
  std::vector<Row> rows;
  for (const Case& one : data.cases) {
    const double weight = data.WeightOf(one);
    if (weight > 0.0 && !data.IsMissing(attribute, one[attribute]) &&
        (data.HasTarget(one) || algorithm == Algorithm::kEqualFrequency)) {
      const std::size_t code = data.HasTarget(one) ? static_cast<std::size_t>(one[data.target]) : 0;
      rows.push_back({one[attribute], code, weight});
    }
  }
  return rows;
}

// The distinct ones, ascending.
std::vector<double> valuesOf(const std::vector<Row>& rows) {
  std::set<double> values;
  for (const Row& row : rows) {
    values.insert(row.value);
  }
  return {values.begin(), values.end()};
}

bool isPreBinned(const DataSet& data, const Record& record) {
  return data.settings.distinctValueThreshold > 0 &&
         record.distinctValues > static_cast<unsigned>(data.settings.distinctValueThreshold);
}

std::size_t binOf(double value, const DataSet& data, const Record& record) {
  const auto& cuts = record.cutPoints;
  const auto cut = data.settings.rightClosed ? std::lower_bound(cuts.begin(), cuts.end(), value)
                                             : std::upper_bound(cuts.begin(), cuts.end(), value);
  return static_cast<std::size_t>(cut - cuts.begin());
}

// To the last bit where sums are exact.
void expectSum(double sum, double expected, const DataSet& data) {
  if (data.HasExactSums()) {
    EXPECT_EQ(sum, expected);
  } else {
    EXPECT_NEAR(sum, expected, 1e-10);
  }
}

// Between two numbers without another one between them the midpoint is one of the two.
bool hasMidpointOnValue(const std::vector<Row>& rows) {
  const std::vector<double> values = valuesOf(rows);
  for (std::size_t i = 1; i < values.size(); ++i) {
    const double midpoint = (values[i] + values[i - 1]) / 2;
    if (midpoint == values[i] || midpoint == values[i - 1]) {
      return true;
    }
  }
  return false;
}

double sumOf(const std::vector<double>& weights) {
  return std::accumulate(weights.begin(), weights.end(), 0.0);
}

// With open right borders and sums that round the equal-frequency routine may leave the greatest
// value uncounted (docs/numeric-contract.md): the weight of that value when it did.
double lostWeight(const DataSet& data, Algorithm algorithm, const Record& record,
                  const std::vector<Row>& rows) {
  if (algorithm == Algorithm::kSupervised || data.settings.rightClosed || data.HasExactSums()) {
    return 0.0;
  }
  double counted = 0.0;
  for (const std::vector<double>& bin : record.counts) {
    counted += bin[0];
  }
  double greatest = 0.0;
  for (const Row& row : rows) {
    greatest += row.value == record.maximum ? row.weight : 0.0;
  }
  return record.totalWeight - counted > greatest / 2 ? greatest : 0.0;
}

double entropyOf(const std::vector<double>& categories) {
  const double total = sumOf(categories);
  double entropy = 0.0;
  for (const double weight : categories) {
    entropy -= weight > 0.0 ? weight / total * std::log2(weight / total) : 0.0;
  }
  return entropy;
}

class Bins : public testing::TestWithParam<Algorithm> {
 protected:
  // Calls `check` with a data set, one of its records and the rows that the record is about, of
  // which there is at least one.
  template <typename Check>
  void ForEachRecord(Check check) {
    forRandomDataSets([&](const DataSet& data, Choices&) {
      const std::vector<Record> records = bin(data, GetParam());
      for (std::size_t i = 0; i < records.size(); ++i) {
        const std::vector<Row> rows = rowsOf(data, GetParam(), i);
        if (rows.empty()) {
          EXPECT_EQ(records[i].totalWeight, 0.0);
        } else {
          check(data, records[i], rows);
        }
      }
    });
  }

  // Calls `check` also with the weight that each bin must have; leaves out what the equal-frequency
  // routine is not said to count exactly.
  template <typename Check>
  void ForEachCount(Check check) {
    ForEachRecord([&](const DataSet& data, const Record& record, const std::vector<Row>& rows) {
      if (GetParam() == Algorithm::kSupervised || !hasMidpointOnValue(rows)) {
        check(data, record, rows);
      }
    });
  }
};

TEST_P(Bins, CutPointsAscendStrictlyAndAreValuesOrMidpointsOfNeighbours) {
  ForEachRecord([](const DataSet& data, const Record& record, const std::vector<Row>& rows) {
    const std::vector<double> values = valuesOf(rows);
    EXPECT_EQ(record.distinctValues, values.size());
    std::set<double> borders(values.begin(), values.end());
    if (GetParam() == Algorithm::kEqualFrequency || isPreBinned(data, record)) {
      for (std::size_t i = 1; i < values.size(); ++i) {
        borders.insert((values[i] + values[i - 1]) / 2);
      }
    }
    for (std::size_t i = 0; i < record.cutPoints.size(); ++i) {
      const double cut = record.cutPoints[i];
      EXPECT_TRUE(i == 0 || record.cutPoints[i - 1] < cut) << testing::PrintToString(record);
      EXPECT_TRUE(borders.count(cut) == 1) << testing::PrintToString(record);
      EXPECT_TRUE(data.settings.rightClosed ? cut < record.maximum : cut > record.minimum)
          << testing::PrintToString(record);
    }
  });
}

TEST_P(Bins, TotalsAreTheSumsOfTheCategoriesAndAddUpToTheTotalWeight) {
  ForEachCount([](const DataSet& data, const Record& record, const std::vector<Row>& rows) {
    EXPECT_EQ(record.counts.size(), record.cutPoints.size() + 1) << testing::PrintToString(record);
    double total = 0.0;
    for (const std::vector<double>& bin : record.counts) {
      total += bin[0];
      if (GetParam() == Algorithm::kSupervised) {
        expectSum(sumOf({bin.begin() + 1, bin.end()}), bin[0], data);
      }
    }
    expectSum(total + lostWeight(data, GetParam(), record, rows), record.totalWeight, data);
  });
}

TEST_P(Bins, CountTheRowsThatFallIntoThem) {
  ForEachCount([](const DataSet& data, const Record& record, const std::vector<Row>& rows) {
    std::vector<std::vector<double>> counts = record.counts;
    for (std::vector<double>& bin : counts) {
      std::fill(bin.begin(), bin.end(), 0.0);
    }
    for (const Row& row : rows) {
      std::vector<double>& bin = counts.at(binOf(row.value, data, record));
      bin[0] += row.weight;
      if (GetParam() == Algorithm::kSupervised) {
        bin.at(row.code + 1) += row.weight;
      }
    }
    counts.back()[0] -= lostWeight(data, GetParam(), record, rows);
    for (std::size_t i = 0; i < counts.size(); ++i) {
      for (std::size_t j = 0; j < counts[i].size(); ++j) {
        expectSum(record.counts[i][j], counts[i][j], data);
      }
    }
  });
}

INSTANTIATE_TEST_SUITE_P(, Bins,
                         testing::Values(Algorithm::kSupervised, Algorithm::kEqualFrequency),
                         [](const auto& one) {
                           return one.param == Algorithm::kSupervised ? "Supervised"
                                                                      : "EqualFrequency";
                         });

// Exactly it never does; docs/numeric-contract.md says how far rounding can lift it.
TEST(ModelEntropy, ExceedsTheEntropyOfTheTargetByRoundingAtMost) {
  forRandomDataSets([](const DataSet& data, Choices&) {
    for (const Record& record : bin(data, Algorithm::kSupervised)) {
      if (record.totalWeight == 0.0) {
        continue;
      }
      std::vector<double> target(record.counts[0].size() - 1, 0.0);
      for (const std::vector<double>& bin : record.counts) {
        std::transform(target.begin(), target.end(), bin.begin() + 1, target.begin(),
                       std::plus<>());
      }
      const double entropy = entropyOf(target);
      const auto operations = static_cast<double>(target.size() + record.counts.size() + 8);
      const double rounding =
          data.HasExactSums() ? operations * 0x1.0p-52 * (1.0 + entropy) : 1e-10;
      EXPECT_GE(record.modelEntropy, 0.0);
      EXPECT_LE(record.modelEntropy, entropy + rounding) << testing::PrintToString(record);
    }
  });
}

}  // namespace
}  // namespace properties
