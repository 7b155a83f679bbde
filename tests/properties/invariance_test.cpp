// What may be done to a data set without changing its bins.
#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

#include "properties/binning.h"

namespace properties {
namespace {

class Invariance : public testing::TestWithParam<Algorithm> {
 protected:
  static std::vector<Record> Bin(const DataSet& data) { return bin(data, GetParam()); }
};

TEST_P(Invariance, AWeightCountsLikeThatManyCases) {
  forRandomDataSets([](DataSet& data, Choices&) {
    if (!data.HasWholeWeights()) {
      return;
    }
    data.AddEveryCategory();
    DataSet copies = data;
    copies.cases.clear();
    for (const Case& one : data.cases) {
      copies.cases.insert(copies.cases.end(), static_cast<std::size_t>(data.WeightOf(one)), one);
    }
    copies.DropWeight();
    EXPECT_EQ(Bin(copies), Bin(data));
  });
}

// With other weights the sums depend on the order in the last bit, and with them what is cut.
TEST_P(Invariance, TheOrderOfTheCasesDoesNotMatterWhereSumsAreExact) {
  forRandomDataSets([](const DataSet& data, Choices& choices) {
    if (data.HasExactSums()) {
      DataSet shuffled = data;
      choices.Shuffle(shuffled.cases);
      EXPECT_EQ(Bin(shuffled), Bin(data));
    }
  });
}

TEST_P(Invariance, TheOrderOfTheCasesChangesSumsOfFractionsByRoundingOnly) {
  forRandomDataSets([](const DataSet& data, Choices& choices) {
    if (data.HasExactSums()) {
      return;
    }
    DataSet shuffled = data;
    choices.Shuffle(shuffled.cases);
    const std::vector<Record> records = Bin(data);
    const std::vector<Record> others = Bin(shuffled);
    ASSERT_EQ(others.size(), records.size());
    for (std::size_t i = 0; i < records.size(); ++i) {
      EXPECT_EQ(others[i].distinctValues, records[i].distinctValues);
      EXPECT_EQ(others[i].minimum, records[i].minimum);
      EXPECT_EQ(others[i].maximum, records[i].maximum);
      EXPECT_NEAR(others[i].totalWeight, records[i].totalWeight, 1e-10);
      EXPECT_NEAR(others[i].totalWeightWithMissing, records[i].totalWeightWithMissing, 1e-10);
      if (others[i].cutPoints == records[i].cutPoints) {
        ASSERT_EQ(others[i].counts.size(), records[i].counts.size());
        for (std::size_t bin = 0; bin < records[i].counts.size(); ++bin) {
          for (std::size_t j = 0; j < records[i].counts[bin].size(); ++j) {
            EXPECT_NEAR(others[i].counts[bin][j], records[i].counts[bin][j], 1e-10);
          }
        }
      }
    }
  });
}

TEST_P(Invariance, CasesWithoutTheAttributeChangeTheWeightWithMissingOnly) {
  forRandomDataSets([](DataSet& data, Choices& choices) {
    data.AddEveryCategory();
    std::vector<Record> expected = Bin(data);
    for (int added = choices.Between(1, 40); added > 0; --added) {
      data.cases.push_back(data.WithoutAttributes(choices));
      for (Record& record : expected) {
        record.totalWeightWithMissing += data.WeightOf(data.cases.back());
      }
    }
    if (data.HasExactSums()) {
      choices.Shuffle(data.cases);
    }
    EXPECT_EQ(Bin(data), expected);
  });
}

TEST_P(Invariance, AWeightOfZeroIsNoCase) {
  forRandomDataSets([](DataSet& data, Choices& choices) {
    if (!data.HasWeight()) {
      return;
    }
    data.AddEveryCategory();
    const std::vector<Record> expected = Bin(data);
    for (int added = choices.Between(1, 40); added > 0; --added) {
      Case one = choices.Pick(data.cases);
      for (std::size_t i = 0; i < data.target; ++i) {
        one[i] = 100.0 * choices.Unit();
      }
      one.back() = choices.Pick({0.0, -0.0, -1.0, kMissing});
      data.cases.push_back(one);
    }
    EXPECT_EQ(Bin(data), expected);
  });
}

TEST_P(Invariance, AFactorOfAPowerOfTwoMovesTheCutPointsOnly) {
  forRandomDataSets([](DataSet& data, Choices& choices) {
    const double factor = std::ldexp(1.0, choices.Between(-40, 40));
    std::vector<Record> expected = Bin(data);
    for (Record& record : expected) {
      for (double& cut : record.cutPoints) {
        cut *= factor;
      }
      for (double* end : {&record.minimum, &record.maximum}) {
        *end = *end == kMissing ? kMissing : *end * factor;
      }
    }
    data.Scale(factor);
    EXPECT_EQ(Bin(data), expected);
  });
}

TEST_P(Invariance, EveryRunGivesTheSame) {
  forRandomDataSets([](const DataSet& data, Choices&) {
    const std::vector<Record> once = Bin(data);
    EXPECT_EQ(Bin(data), once);
    Binning binning(data, GetParam());
    binning.Run();
    binning.Run();
    const std::vector<int> firstTwice = {0, 0};
    binning.Run(&firstTwice);
    std::vector<Record> expected = once;
    expected.insert(expected.end(), once.begin(), once.end());
    if (!once.empty()) {
      expected.insert(expected.end(), 2, once[0]);
    }
    EXPECT_EQ(binning.Records(), expected);
  });
}

INSTANTIATE_TEST_SUITE_P(, Invariance,
                         testing::Values(Algorithm::kSupervised, Algorithm::kEqualFrequency),
                         [](const auto& one) {
                           return one.param == Algorithm::kSupervised ? "Supervised"
                                                                      : "EqualFrequency";
                         });

TEST(TargetInvariance, CasesWithoutTheTargetChangeTheWeightWithMissingOnly) {
  forRandomDataSets([](DataSet& data, Choices& choices) {
    data.AddEveryCategory();
    std::vector<Record> expected = bin(data, Algorithm::kSupervised);
    for (int added = choices.Between(1, 40); added > 0; --added) {
      Case one = choices.Pick(data.cases);
      one[data.target] = choices.Pick({kMissing, -1.0});
      data.cases.push_back(one);
      for (Record& record : expected) {
        record.totalWeightWithMissing += data.WeightOf(one);
      }
    }
    EXPECT_EQ(bin(data, Algorithm::kSupervised), expected);
  });
}

std::vector<int> codesOf(const DataSet& data) {
  std::vector<int> codes(static_cast<std::size_t>(data.list.plain.variables[data.target].declared));
  std::iota(codes.begin(), codes.end(), 0);
  return codes;
}

// Gives category i the code codes[i].
void recode(DataSet& data, const std::vector<int>& codes) {
  for (Case& one : data.cases) {
    if (data.HasTarget(one)) {
      one[data.target] = codes[static_cast<std::size_t>(one[data.target])];
    }
  }
}

std::vector<std::vector<double>> recoded(const std::vector<std::vector<double>>& counts,
                                         const std::vector<int>& codes) {
  std::vector<std::vector<double>> result = counts;
  for (std::size_t bin = 0; bin < counts.size(); ++bin) {
    for (std::size_t category = 0; category + 1 < counts[bin].size(); ++category) {
      result[bin][static_cast<std::size_t>(codes[category]) + 1] = counts[bin][category + 1];
    }
  }
  return result;
}

// The entropy of a side adds its terms in code order. The sum of the first two does not depend on
// which comes first, so with two categories nothing depends on their codes.
TEST(TargetInvariance, ExchangingTheFirstTwoCodesExchangesTheirColumns) {
  forRandomDataSets([](DataSet& data, Choices&) {
    if (!data.HasExactSums()) {
      return;
    }
    data.AddEveryCategory();
    std::vector<int> codes = codesOf(data);
    std::swap(codes[0], codes[1]);
    std::vector<Record> expected = bin(data, Algorithm::kSupervised);
    for (Record& record : expected) {
      record.counts = recoded(record.counts, codes);
    }
    recode(data, codes);
    EXPECT_EQ(bin(data, Algorithm::kSupervised), expected);
  });
}

// Other codes make other last bits of entropies and with them, where positions tie, other cuts:
// seen in none of ten thousand records.
TEST(TargetInvariance, RecodingPermutesTheColumnsWhereItMovesNoCut) {
  std::size_t moved = 0;
  std::size_t all = 0;
  forRandomDataSets([&](DataSet& data, Choices& choices) {
    if (!data.HasExactSums()) {
      return;
    }
    data.AddEveryCategory();
    std::vector<int> codes = codesOf(data);
    choices.Shuffle(codes);
    const std::vector<Record> records = bin(data, Algorithm::kSupervised);
    recode(data, codes);
    const std::vector<Record> others = bin(data, Algorithm::kSupervised);
    ASSERT_EQ(others.size(), records.size());
    for (std::size_t i = 0; i < records.size(); ++i) {
      Record expected = records[i];
      ++all;
      if (others[i].cutPoints != expected.cutPoints) {
        ++moved;
        continue;
      }
      EXPECT_NEAR(others[i].modelEntropy, expected.modelEntropy, 1e-14);
      expected.modelEntropy = others[i].modelEntropy;
      expected.counts = recoded(expected.counts, codes);
      EXPECT_EQ(others[i], expected);
    }
  });
  EXPECT_LE(moved, all / 100 + 1);
}

}  // namespace
}  // namespace properties
