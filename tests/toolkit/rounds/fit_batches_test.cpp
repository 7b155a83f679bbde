#include "toolkit/rounds/fit_batches.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <ostream>
#include <random>

#include "tests/toolkit/support/memory_batches.h"
#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"
#include "toolkit/fit/column_cases.h"
#include "toolkit/model/model_json.h"

namespace mcbin {
namespace {

using testing::MemoryBatches;
using testing::messageOf;
using Table = std::vector<std::vector<double>>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
const std::vector<std::string> kNames = {"a", "b", "c", "w", "t"};

/// Attributes of many values, of few, and with infinite and equal neighbours; a weight; a target.
Table randomColumns(std::mt19937& random, std::size_t rows) {
  const auto below = [&random](int end) {
    return std::uniform_int_distribution<>(0, end - 1)(random);
  };
  Table columns(kNames.size());
  const double odd[] = {-0.0, 0.0, 1.0, std::nextafter(1.0, 2.0), HUGE_VAL, -HUGE_VAL, kNaN};
  for (std::size_t row = 0; row < rows; ++row) {
    const int target = below(4);
    columns[0].push_back(below(9) == 0 ? kNaN : std::sqrt(below(5000)) + 20.0 * target);
    columns[1].push_back(below(6));
    columns[2].push_back(odd[below(7)]);
    columns[3].push_back(below(5) / 2.0);
    columns[4].push_back(target == 3 ? kNaN : target);
  }
  return columns;
}

FitRequest randomRequest(std::mt19937& random) {
  const auto flip = [&random] { return std::uniform_int_distribution<>(0, 1)(random) == 1; };
  FitRequest request;
  request.bins = 5;
  if (flip()) {
    request.target = "t";
    if (flip()) request.distinctValueThreshold = 10;
    if (flip()) request.smallBinThreshold = 0.5;
    if (flip()) request.minBinShare = 0.1;
  } else {
    request.method = Method::EqualFrequency;
  }
  if (flip()) request.weight = "w";
  if (flip()) request.rounding = WeightRounding::Round;
  if (flip()) request.closedSide = ClosedSide::Left;
  if (flip()) request.missing = {"a=4,7", "b=2,77", "w=1.5"};
  if (flip()) request.missingRanges = {"a=:5"};
  if (flip()) request.naTexts = {"3"};
  return request;
}

struct Outcome {
  std::string text;  ///< The model, or what went wrong.
  std::vector<std::string> notes;

  bool operator==(const Outcome&) const = default;
};

void PrintTo(const Outcome& outcome, std::ostream* out) {
  *out << outcome.text;
  for (const std::string& note : outcome.notes) *out << note << '\n';
}

template <class Fit>
Outcome outcomeOf(const Fit& fit) {
  Outcome outcome;
  Monitor monitor;
  FitTimings timings;
  FitWatch watch{monitor};
  watch.noted = [&outcome](const std::string& note) { outcome.notes.push_back(note); };
  try {
    outcome.text = modelToJson(fit(watch, timings));
  } catch (const DataError& error) {
    outcome.text = error.what();
  }
  return outcome;
}

Outcome inMemory(const FitRequest& request, const Table& columns) {
  MemoryBatches batches(kNames, columns, 1000000);
  ColumnCases cases(batches, request.naTexts);
  return outcomeOf([&](const FitWatch& watch, FitTimings& timings) {
    return fitModel(request, cases, watch, timings);
  });
}

Outcome inRounds(const FitRequest& request, MemoryBatches& batches, std::size_t jobs) {
  return outcomeOf([&](FitWatch& watch, FitTimings& timings) {
    watch.jobs = jobs;
    return fitBatches(request, batches, watch, 0, timings);
  });
}

TEST(FitBatches, RoundsGiveTheModelOfTheOrdinaryRunForAnyBatchesAndThreads) {
  for (unsigned seed = 0; seed < 150; ++seed) {
    std::mt19937 random(seed);
    const std::size_t rows = seed % 10 == 0 ? 30000 : seed;
    const Table columns = randomColumns(random, rows);
    const FitRequest request = randomRequest(random);
    const Outcome expected = inMemory(request, columns);
    for (const std::size_t jobs : {1U, 3U}) {
      const std::size_t rowsOfBatch = 1 + random() % (rows + 1);
      MemoryBatches batches(kNames, columns, rowsOfBatch);
      EXPECT_EQ(inRounds(request, batches, jobs), expected) << "seed " << seed << " jobs " << jobs;
    }
  }
}

FitRequest supervised() {
  FitRequest request;
  request.target = "t";
  request.weight = "w";
  return request;
}

TEST(FitBatches, WeightsThatAddUpToTooMuchAreRefusedOnlyInRounds) {
  std::mt19937 random(2);
  Table columns = randomColumns(random, 100);
  columns[3][7] = 0x1p53;
  for (const std::uint64_t roundsFrom : {std::uint64_t{100}, std::uint64_t{101}}) {
    MemoryBatches batches(kNames, columns, 10);
    const Outcome outcome = outcomeOf([&](FitWatch& watch, FitTimings& timings) {
      return fitBatches(supervised(), batches, watch, roundsFrom, timings);
    });
    if (roundsFrom == 101) {
      EXPECT_EQ(outcome, inMemory(supervised(), columns));
    } else {
      EXPECT_EQ(outcome.text,
                "the weights in column w add up to 2^53 or more, which is too much to add up in "
                "any order");
    }
  }
}

TEST(FitBatches, NumbersThatDoublesDoNotTellApartAreRefusedByName) {
  std::mt19937 random(3);
  Table columns = randomColumns(random, 100);
  columns[1][7] = -0x1p53;
  columns[3][7] = columns[4][7] = 1.0;
  for (const double exactBelow : {0x1p53, 0x1p54}) {
    MemoryBatches batches(kNames, columns, 10);
    batches.Head(1).exactBelow = exactBelow;
    const std::string text = inRounds(supervised(), batches, 2).text;
    if (exactBelow == 0x1p53) {
      EXPECT_EQ(text,
                "column b: numbers as large as 9007199254740992 have more digits than a double "
                "holds: bin a column with fewer digits, or --exclude b");
    } else {
      EXPECT_EQ(text, inMemory(supervised(), columns).text);
    }
  }
}

/// Changes the table when the second round begins.
class Changing : public MemoryBatches {
 public:
  using MemoryBatches::MemoryBatches;
  void Rewind() override {
    MemoryBatches::Rewind();
    if (passes == 2) change(Columns());
  }

  std::function<void(Table&)> change;
};

TEST(FitBatches, DataThatChangeBetweenRoundsEndInAnError) {
  std::mt19937 random(5);
  const Table columns = randomColumns(random, 30000);
  const std::function<void(Table&)> changes[] = {
      [](Table& all) {
        for (auto& column : all) column.pop_back();
      },
      [](Table& all) { all[4][3] = 1.0 - all[4][3]; },
      [](Table& all) { all[3][3] += 1.0; },
      [](Table& all) { std::fill(all[0].begin(), all[0].end(), 0.5); },
      [](Table& all) { all[4][3] = 17.0; },
  };
  for (const auto& change : changes) {
    Changing batches(kNames, columns, 5000);
    batches.Columns()[4][3] = 0.0;
    batches.change = change;
    EXPECT_NE(inRounds(supervised(), batches, 2).text.find("changed while"), std::string::npos);
  }
}

}  // namespace
}  // namespace mcbin
