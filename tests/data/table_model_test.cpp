// Compares the pass and the tables with a plain model of their rules on random data.

#include <gtest/gtest.h>
#include <mccomvor/missing_value.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "support/plain_rows.h"
#include "support/table_run.h"

namespace {

using MCBinning::MCStatus;
using MCBinning::SortedRows;
using mcbinning_tests::TableRun;

using Random = std::mt19937_64;

const double kMissing = MCMV::gMissingValue;

std::size_t below(Random& random, std::size_t bound) { return random() % bound; }

struct Variable {
  enum Kind { Scale, Categorical, Weight, Unused } kind;
  bool isTarget = false;
  int categories = 0;
  std::vector<double> userMissing = {};
  bool hasInterval = false;
};

/// A random data set: at most one target and one weight, at least one input.
struct DataSet {
  std::vector<Variable> variables;
  std::vector<std::vector<double>> cases;
  int roundingOption = 0;
};

double scaleCell(Random& random, bool fewValues) {
  switch (below(random, 20)) {
    case 0:
      return kMissing;
    case 1:
      return std::numeric_limits<double>::quiet_NaN();
    case 2:
      return below(random, 2) == 0 ? std::numeric_limits<double>::infinity()
                                   : -std::numeric_limits<double>::infinity();
    case 3:
      return below(random, 2) == 0 ? 0.0 : -0.0;
    case 4:
      return std::numeric_limits<double>::denorm_min() * static_cast<double>(below(random, 3));
    default:
      return fewValues ? static_cast<double>(below(random, 6)) - 2.0
                       : std::ldexp(static_cast<double>(random() >> 11), -50);
  }
}

double codeCell(Random& random, int categories, bool wild) {
  const std::size_t pick = below(random, wild ? 200 : 20);
  if (pick == 0) {
    return kMissing;
  }
  if (pick == 1) {
    return -1.0;
  }
  if (pick == 2) {
    return -0.5;
  }
  if (wild && pick < 6) {
    const double cells[] = {256.0, -1.5,
                            -2.0,  std::numeric_limits<double>::quiet_NaN(),
                            1e18,  -std::numeric_limits<double>::infinity()};
    return cells[below(random, std::size(cells))];
  }
  const double fraction = below(random, 5) == 0 ? 0.75 : 0.0;
  return static_cast<double>(below(random, static_cast<std::size_t>(categories))) + fraction;
}

double weightCell(Random& random) {
  switch (below(random, 12)) {
    case 0:
      return kMissing;
    case 1:
      return -static_cast<double>(below(random, 3));
    case 2:
      return 0.4;
    default:
      return static_cast<double>(below(random, 400)) / 16.0;
  }
}

DataSet randomDataSet(Random& random) {
  DataSet data;
  const std::size_t inputs = 1 + below(random, 4);
  for (std::size_t i = 0; i < inputs; ++i) {
    Variable variable{below(random, 3) == 0 ? Variable::Categorical : Variable::Scale};
    if (variable.kind == Variable::Scale && below(random, 3) == 0) {
      variable.userMissing = {1.0, -2.0};
      variable.hasInterval = below(random, 2) == 0;
    }
    data.variables.push_back(variable);
  }
  const auto insert = [&](Variable variable) {
    const auto at = static_cast<std::ptrdiff_t>(below(random, data.variables.size() + 1));
    data.variables.insert(data.variables.begin() + at, variable);
  };
  if (below(random, 4) != 0) {
    insert({Variable::Categorical, true});
  }
  if (below(random, 2) != 0) {
    insert({Variable::Weight});
    data.roundingOption = static_cast<int>(below(random, 3));
  }
  if (below(random, 3) == 0) {
    insert({Variable::Unused});
  }
  for (Variable& variable : data.variables) {
    variable.categories = 1 + static_cast<int>(below(random, 5));
  }
  const bool wild = below(random, 3) == 0;
  const bool fewValues = below(random, 2) == 0;
  const std::size_t cases = below(random, 40) == 0 ? 9990 + below(random, 20) : below(random, 80);
  for (std::size_t i = 0; i < cases; ++i) {
    std::vector<double> record;
    for (const Variable& variable : data.variables) {
      record.push_back(variable.kind == Variable::Categorical
                           ? codeCell(random, variable.categories, wild)
                       : variable.kind == Variable::Weight ? weightCell(random)
                                                           : scaleCell(random, fewValues));
    }
    if (below(random, 30) == 0) {
      record.clear();
    }
    data.cases.push_back(record);
  }
  return data;
}

BINVarList listOf(const DataSet& data) {
  BINVarList list;
  for (std::size_t i = 0; i < data.variables.size(); ++i) {
    const Variable& variable = data.variables[i];
    const std::string name = "v" + std::to_string(i);
    int index = -1;
    switch (variable.kind) {
      case Variable::Scale:
        index = list.AddContVar(name, "", IBINVariable::AttributeRole);
        break;
      case Variable::Unused:
        index = list.AddContVar(name, "", IBINVariable::UndefinedRole);
        break;
      case Variable::Weight:
        index = list.AddWeightVar(
            name, "", static_cast<IBINVariable::BINWRoundingOption>(data.roundingOption));
        break;
      case Variable::Categorical:
        index = list.AddCatVar(
            name, "", variable.categories, IBINVariable::NumericCategoricalLevel,
            variable.isTarget ? IBINVariable::TargetRole : IBINVariable::AttributeRole);
        break;
    }
    for (const double value : variable.userMissing) {
      list.AddDiscreteUserMissing(index, value, "");
    }
    if (variable.hasInterval) {
      list.SetMissingInterval(index, 3.0, 4.0);
    }
  }
  return list;
}

/// What the pass should leave, worked out from the data set case by case.
struct Model {
  explicit Model(const DataSet& data);

  void Warn(bool isWarning, long datum) {
    if (status.IsOK() || !isWarning) {
      status = MCStatus(120012, isWarning);
      status.SetDiscreteDatum(0, datum);
    }
  }

  MCStatus status;
  std::vector<std::vector<double>> values;  // per variable, one per used case
  std::vector<bool> isUsable;               // per variable
  std::vector<int> highest;
  std::vector<double> weights;
};

double roundedWeight(double weight, int option) {
  const double rounded = option == 0   ? std::floor(weight)
                         : option == 1 ? std::floor(weight + 0.5)
                                       : weight;
  return weight == kMissing || rounded <= 0.0 ? kMissing : rounded;
}

Model::Model(const DataSet& data)
    : values(data.variables.size()),
      isUsable(data.variables.size(), true),
      highest(data.variables.size(), 0) {
  const std::size_t count = data.variables.size();
  std::size_t target = count;
  std::size_t weight = count;
  std::size_t categorical = 0;
  for (std::size_t v = 0; v < count; ++v) {
    target = data.variables[v].isTarget ? v : target;
    weight = data.variables[v].kind == Variable::Weight ? v : weight;
    categorical += data.variables[v].kind == Variable::Categorical ? 1 : 0;
    isUsable[v] = data.variables[v].kind != Variable::Unused;
  }
  std::vector<std::size_t> order;
  if (target < count) {
    order.push_back(target);
  }
  for (std::size_t v = 0; v < count; ++v) {
    if (v != target && v != weight && data.variables[v].kind != Variable::Unused) {
      order.push_back(v);
    }
  }
  const long firstInput = (target < count ? 1 : 0) + (weight < count ? 1 : 0);
  for (const auto& record : data.cases) {
    if (record.empty()) {
      continue;
    }
    const double caseWeight =
        weight < count ? roundedWeight(record[weight], data.roundingOption) : 1.0;
    if (caseWeight == kMissing) {
      continue;
    }
    long column = firstInput - (target < count ? 1 : 0);
    for (const std::size_t v : order) {
      const Variable& variable = data.variables[v];
      double cell = record[v];
      if (variable.kind == Variable::Scale) {
        const bool inInterval = variable.hasInterval && cell >= 3.0 && cell <= 4.0;
        if (inInterval || std::find(variable.userMissing.begin(), variable.userMissing.end(),
                                    cell) != variable.userMissing.end()) {
          cell = kMissing;
        }
      } else if (v == target ? cell > -2.0 && cell <= -1.0 : cell == -1.0) {
        cell = kMissing;
      } else if (cell != kMissing && isUsable[v]) {
        if (!(cell > -1.0 && cell < 256.0)) {
          isUsable[v] = false;
          Warn(v != target || categorical >= 2, v == target ? static_cast<long>(v) : column);
          if (status.IsError()) {
            return;
          }
        } else {
          cell = std::trunc(cell) + 0.0;  // no -0.0
          highest[v] = std::max(highest[v], static_cast<int>(cell));
        }
      }
      values[v].push_back(cell);
      ++column;
    }
    if (weight < count) {
      values[weight].push_back(caseWeight);
    }
    weights.push_back(caseWeight);
  }
  if (weights.empty()) {
    status = MCStatus(120004, false);
  }
  for (std::size_t v = 0; v < count; ++v) {
    isUsable[v] = isUsable[v] && (data.variables[v].kind != Variable::Categorical ||
                                  highest[v] < data.variables[v].categories);
  }
}

struct ModelTable {
  std::vector<SortedRows::Row> rows;
  double total = 0.0;
  double totalWithMissing = 0.0;
};

/// `target` null for an unsupervised table.
ModelTable modelTable(const Model& model, std::size_t attribute, const std::size_t* target) {
  ModelTable table;
  std::vector<std::size_t> order;
  for (std::size_t i = 0; i < model.weights.size(); ++i) {
    const double value = model.values[attribute][i];
    const double code = target != nullptr ? model.values[*target][i] : 0.0;
    table.totalWithMissing += model.weights[i];
    if (value != kMissing && code != kMissing) {
      table.total += model.weights[i];
      table.rows.push_back({value, static_cast<int>(code), model.weights[i]});
      order.push_back(order.size());
    }
  }
  std::sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
    const double a = table.rows[left].value;
    const double b = table.rows[right].value;
    const bool tie = a == b || (std::isnan(a) && std::isnan(b));
    return tie ? left < right : a < b || std::isnan(b);
  });
  const std::vector<SortedRows::Row> inCaseOrder = table.rows;
  std::transform(order.begin(), order.end(), table.rows.begin(),
                 [&](std::size_t row) { return inCaseOrder[row]; });
  return table;
}

std::uint64_t bits(double value) { return std::bit_cast<std::uint64_t>(value); }

/// Rows of one value and one code may come as one row; folding both sides makes them comparable.
/// Sums are the same bit for bit, for rows to be folded stand in the order of the cases.
std::vector<SortedRows::Row> folded(const SortedRows& rows) {
  std::vector<SortedRows::Row> copy;
  for (std::size_t row = 0; row < rows.Size(); ++row) {
    copy.push_back({rows.Value(row), rows.Code(row), rows.Weight(row)});
  }
  return mcbinning_tests::mergedRows(copy);
}

void expectEqual(const ModelTable& expected, const SortedRows& rows,
                 const MCBinning::BINAttributeTable& table) {
  const auto expectedRows = mcbinning_tests::mergedRows(expected.rows);
  const auto foldedRows = folded(rows);
  ASSERT_EQ(foldedRows.size(), expectedRows.size());
  for (std::size_t row = 0; row < foldedRows.size(); ++row) {
    const double value = expectedRows[row].value;
    ASSERT_TRUE(bits(foldedRows[row].value) == bits(value) ||
                (std::isnan(foldedRows[row].value) && std::isnan(value)))
        << row;
    ASSERT_EQ(foldedRows[row].code, expectedRows[row].code) << row;
    ASSERT_EQ(bits(foldedRows[row].weight), bits(expectedRows[row].weight)) << row;
  }
  ASSERT_EQ(table.GetNRows(), expected.rows.size());
  EXPECT_EQ(table.GetNDistinctValues(), mcbinning_tests::distinctValues(expected.rows));
  EXPECT_EQ(bits(table.GetTotalWeight()), bits(expected.total));
  EXPECT_EQ(bits(table.GetTotalWeightWithMissing()), bits(expected.totalWithMissing));
  const double minimum = expected.rows.empty() ? kMissing : expected.rows.front().value;
  const double maximum = expected.rows.empty() ? kMissing : expectedRows.back().value;
  EXPECT_TRUE(bits(table.GetMinimum()) == bits(minimum) || std::isnan(minimum));
  EXPECT_TRUE(bits(table.GetMaximum()) == bits(maximum) || std::isnan(maximum));
  EXPECT_EQ(std::isnan(table.GetMinimum()), std::isnan(minimum));
  EXPECT_EQ(std::isnan(table.GetMaximum()), std::isnan(maximum));
}

void expectCounts(const ModelTable& expected, std::size_t categories,
                  const MCBinning::BINAttributeTable& table, bool isExact, Random& random) {
  std::vector<double> boundaries;
  for (std::size_t i = 0; i < below(random, 6); ++i) {
    boundaries.push_back(static_cast<double>(below(random, 8)) - 3.0);
  }
  std::sort(boundaries.begin(), boundaries.end());
  if (below(random, 2) == 0) {
    boundaries.push_back(std::numeric_limits<double>::infinity());
  }
  const bool closed = below(random, 2) == 0;
  std::vector<double> counts = {-7.0};
  const MCStatus status = table.CountPerBin(&boundaries, closed, counts);
  if (boundaries.size() < 2) {
    EXPECT_EQ(status, MCStatus(120002, true));
    EXPECT_EQ(counts, std::vector<double>{-7.0});
    return;
  }
  // The bin of a row is the first one at or after the bin of the row before that takes it.
  const std::size_t bins = boundaries.size() - 1;
  std::vector<double> direct(bins * categories, 0.0);
  std::size_t bin = 0;
  for (const SortedRows::Row& row : expected.rows) {
    while (bin < bins &&
           !(closed ? row.value <= boundaries[bin + 1] : row.value < boundaries[bin + 1])) {
      ++bin;
    }
    if (bin == bins) {
      break;
    }
    direct[bin * categories + static_cast<std::size_t>(row.code)] += row.weight;
  }
  if (bin + 1 < bins) {
    std::fill_n(direct.begin() + static_cast<std::ptrdiff_t>(bin * categories), categories, 0.0);
  }
  EXPECT_EQ(status.IsOK(), bin + 1 == bins);
  if (isExact) {
    EXPECT_EQ(counts, direct);
    return;
  }
  ASSERT_EQ(counts.size(), direct.size());
  for (std::size_t cell = 0; cell < counts.size(); ++cell) {
    EXPECT_NEAR(counts[cell], direct[cell], 1e-12 * direct[cell]);
  }
}

TEST(TableModelTest, RandomDataSetsGiveWhatTheRulesSay) {
  const char* given = std::getenv("MCBINNING_TEST_SEED");
  const std::uint64_t seed = given != nullptr ? std::strtoull(given, nullptr, 10) : 20240712;
  RecordProperty("seed", std::to_string(seed));
  Random random(seed);
  std::size_t tables = 0;
  for (int round = 0; round < 400; ++round) {
    SCOPED_TRACE("seed " + std::to_string(seed) + ", round " + std::to_string(round));
    const DataSet data = randomDataSet(random);
    const Model model(data);
    BINVarList list = listOf(data);
    TableRun run(list, data.cases);
    run.table.SetEFThreshold(static_cast<std::uint32_t>(below(random, 3) * 4));
    ASSERT_EQ(run.table.Prepare(), model.status);
    if (model.status.IsError()) {
      EXPECT_TRUE(run.directory.IsEmpty());
      continue;
    }
    ASSERT_EQ(run.preparator.GetNumberOfCasesUsed(), model.weights.size());
    for (std::size_t attribute = 0; attribute < data.variables.size(); ++attribute) {
      const SortedRows* rows = nullptr;
      const MCStatus status = run.table.BuildUnsupervisedTable(static_cast<int>(attribute), &rows);
      ASSERT_EQ(status.IsOK(), model.isUsable[attribute]);
      if (status.IsOK()) {
        expectEqual(modelTable(model, attribute, nullptr), *rows, run.table);
      }
      for (std::size_t target = 0; target < data.variables.size(); ++target) {
        const bool isTarget =
            model.isUsable[target] && data.variables[target].kind == Variable::Categorical;
        const MCStatus pair = run.table.BuildSupervisedTable(static_cast<int>(attribute),
                                                             static_cast<int>(target), &rows);
        ASSERT_EQ(pair.GetErrorCode(), !isTarget                    ? 120010
                                       : !model.isUsable[attribute] ? 120013
                                                                    : 0);
        if (pair.IsOK()) {
          const ModelTable expected = modelTable(model, attribute, &target);
          expectEqual(expected, *rows, run.table);
          const auto categories = static_cast<std::size_t>(model.highest[target]) + 1;
          ASSERT_EQ(run.table.GetNTargetCategories(), categories);
          const bool isExact = data.roundingOption != 2 || run.table.IsEFNeeded();
          expectCounts(expected, categories, run.table, isExact, random);
          ++tables;
        }
      }
    }
  }
  EXPECT_GT(tables, 300U);
}

}  // namespace
