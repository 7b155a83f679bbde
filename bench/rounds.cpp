/// The search in rounds over tables of up to 1,000 million rows that exist only as a formula: how
/// many rounds it takes, what travels, and how many rows are fetched.
///
///     mcbinning_rounds [ROWS...]
///
/// Rows have ascending distinct values and one of two classes, the second with a probability that
/// depends on the value. The class of any row is a hash of its number; the rows of the second class
/// are counted once per block of 4,096, and a count between two borders is the difference of two
/// sums. So the answers are those of an engine that holds the rows, in a few megabytes.
#include <mcbinning/rounds.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <vector>

namespace {

constexpr std::uint64_t kBlock = 4096;
constexpr std::size_t kFirstBorders = 4096;
constexpr double kBytesPerWeight = 8.0;
constexpr double kBytesPerValue = sizeof(BINValueWeight);

std::uint64_t hashOf(std::uint64_t x) {
  x += 0x9E3779B97F4A7C15U;
  x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9U;
  x = (x ^ (x >> 27)) * 0x94D049BB133111EBU;
  return x ^ (x >> 31);
}

struct Target {
  const char* name;
  std::function<double(double)> share;  // of the second class, at a place from 0 to 1
};

const std::vector<Target>& targets() {
  static const std::vector<Target> all = {
      {"no connection", [](double) { return 0.5; }},
      {"8 steps", [](double x) { return (std::floor(8.0 * x) + 1.0) / 9.0; }},
      {"straight slope", [](double x) { return x; }},
      {"waves", [](double x) { return 0.5 + 0.4 * std::sin(x * 20.0 * 3.14159265358979); }}};
  return all;
}

class FormulaTable {
 public:
  FormulaTable(std::uint64_t rows, const Target& target) : rows_(rows) {
    std::uint64_t sum = 0;
    for (std::uint64_t first = 0; first < rows; first += kBlock) {
      before_.push_back(sum);
      const double place = (static_cast<double>(first) + kBlock / 2.0) / static_cast<double>(rows);
      limits_.push_back(static_cast<std::uint64_t>(std::ldexp(target.share(place), 53)));
      const std::uint64_t end = std::min(first + kBlock, rows);
      for (std::uint64_t row = first; row < end; ++row) {
        sum += CodeOf(row);
      }
    }
    total_ = sum;
  }

  double ValueOf(std::uint64_t row) const {
    return (static_cast<double>(row) + 0.37) / 999999937.0;
  }

  BINRoundAnswer Ask(const BINRoundQuestion& question) const {
    BINRoundAnswer answer;
    answer.cases = static_cast<double>(rows_);
    answer.classWeights = {static_cast<double>(rows_ - total_), static_cast<double>(total_)};
    for (const BINAttributeQuestion& asked : question.attributes) {
      answer.attributes.push_back(AskAttribute(asked));
    }
    return answer;
  }

 private:
  std::uint64_t CodeOf(std::uint64_t row) const {
    return hashOf(row) >> 11 < limits_[row / kBlock] ? 1U : 0U;
  }

  /// The number of rows whose value is less.
  std::uint64_t RowsBefore(double value) const {
    const double place = value * 999999937.0 - 0.37;
    if (!(place > 0.0)) {
      return value > ValueOf(0) ? 1 : 0;
    }
    auto row = static_cast<std::uint64_t>(std::min(place, static_cast<double>(rows_)));
    while (row > 0 && ValueOf(row - 1) >= value) {
      --row;
    }
    while (row < rows_ && ValueOf(row) < value) {
      ++row;
    }
    return row;
  }

  /// Of the rows before one, those of the second class.
  std::uint64_t SecondBefore(std::uint64_t row) const {
    const std::uint64_t block = row / kBlock;
    if (block == before_.size()) {
      return total_;
    }
    std::uint64_t sum = before_[block];
    for (std::uint64_t i = block * kBlock; i < row; ++i) {
      sum += CodeOf(i);
    }
    return sum;
  }

  void AppendCell(std::uint64_t from, std::uint64_t to, std::vector<double>& weights) const {
    const std::uint64_t second = SecondBefore(to) - SecondBefore(from);
    weights.push_back(static_cast<double>(to - from - second));
    weights.push_back(static_cast<double>(second));
  }

  BINAttributeAnswer AskAttribute(const BINAttributeQuestion& question) const {
    BINAttributeAnswer answer;
    answer.minimum = ValueOf(0);
    answer.maximum = ValueOf(rows_ - 1);
    answer.missingWeights = {0.0, 0.0};
    answer.userMissingWeights = {0.0, 0.0};
    answer.distinctValues = question.countDistinct ? static_cast<double>(rows_) : 0.0;
    std::uint64_t from = 0;
    for (const double border : question.borders) {
      const std::uint64_t at = RowsBefore(border);
      const std::uint64_t after = at < rows_ && ValueOf(at) == border ? at + 1 : at;
      AppendCell(from, at, answer.cellWeights);
      AppendCell(at, after, answer.cellWeights);
      from = after;
    }
    AppendCell(from, rows_, answer.cellWeights);
    for (const BINValueRange& range : question.ranges) {
      for (std::uint64_t row = RowsBefore(range.low); row < rows_ && ValueOf(row) < range.high;
           ++row) {
        if (ValueOf(row) > range.low) {
          answer.values.push_back({ValueOf(row), static_cast<int>(CodeOf(row)), 1.0});
        }
      }
    }
    return answer;
  }

  std::uint64_t rows_;
  std::uint64_t total_ = 0;
  std::vector<std::uint64_t> before_;  // of each block: the rows of the second class before it
  std::vector<std::uint64_t> limits_;  // hashes below it are of the second class
};

BINRoundsPlan planFor(const FormulaTable& table, std::uint64_t rows) {
  BINRoundsAttribute attribute;
  for (std::size_t i = 0; i < kFirstBorders; ++i) {
    // As unevenly as the quantiles of a sample lie.
    const double place =
        (static_cast<double>(i) + static_cast<double>(hashOf(i) >> 11) * 0x1p-53) / kFirstBorders;
    attribute.firstBorders.push_back(
        table.ValueOf(static_cast<std::uint64_t>(place * static_cast<double>(rows))));
  }
  BINRoundsPlan plan;
  plan.attributes = {attribute};
  plan.target = 1;
  plan.categories = 2;
  return plan;
}

void printRun(const char* name, const FormulaTable& table, std::uint64_t rows) {
  BINSettings settings;
  settings.SetNumberOfBins(10);
  BINRounds rounds;
  MCBinning::MCStatus status = rounds.Start(settings, planFor(table, rows));
  while (!status.IsError() && !rounds.IsFinished()) {
    status = rounds.Answer(table.Ask(rounds.GetQuestion()));
  }
  if (status.IsError()) {
    std::fprintf(stderr, "%s: status %ld\n", name, status.GetErrorCode());
    std::exit(1);
  }
  BINAttributeTargetResults record;
  rounds.GetOutput().GetAttributeTargetCutPoints(0, 1, record);
  const BINRoundsProgress progress = rounds.GetProgress();
  const double bytes =
      progress.weightsReceived * kBytesPerWeight + progress.valuesReceived * kBytesPerValue;
  std::printf("| %.0f million | %s | %zu | %u | %.2f | %.2f | %.4f %% | %.1f |\n",
              static_cast<double>(rows) / 1e6, name, record.GetCutPoints().size(), progress.rounds,
              progress.weightsReceived / 1e6, progress.valuesReceived / 1e6,
              100.0 * progress.valuesReceived / static_cast<double>(rows), bytes / 1e6);
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<double> sizes = {1e6, 1e7, 1e8, 1e9};
  if (argc > 1) {
    sizes.clear();
    std::transform(argv + 1, argv + argc, std::back_inserter(sizes), std::atof);
  }
  std::printf(
      "| rows | target | cuts | rounds | class counts, millions | rows fetched, millions | "
      "share fetched | MB |\n|---|---|---|---|---|---|---|---|\n");
  for (const double size : sizes) {
    const auto rows = static_cast<std::uint64_t>(size);
    for (const Target& target : targets()) {
      const FormulaTable table(rows, target);
      printRun(target.name, table, rows);
    }
  }
  return 0;
}
