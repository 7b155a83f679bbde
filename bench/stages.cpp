// Stage by stage, over all shapes of data: the times behind the ratios.
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "bench_data.h"
#include "data/attribute_table.h"
#include "data/binary_record_iterator.h"
#include "data/data_preparator.h"
#include "data/sorted_rows.h"
#include "mcbinning/variable_list.h"
#include "supervised/cut_point_search.h"
#include "supervised/ef_preprocess.h"

using namespace mcbinning_bench;
using MCBinning::SortedRows;

namespace {

constexpr std::size_t kRows = 1000000;

Shape shapeOf(const benchmark::State& state) { return static_cast<Shape>(state.range(0)); }

void finish(benchmark::State& state, std::size_t rows = kRows) {
  constexpr const char* kNames[] = {"uniform", "100 values", "10,000 values", "money"};
  state.SetLabel(kNames[state.range(0)]);
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(rows));
}

/// A prepared pass over cases in memory, in a directory of its own.
struct Preparation {
  explicit Preparation(MemoryCases& memory) : cases(memory) {
    for (int a = 0; a < MemoryCases::kAttributes; ++a) {
      list.AddContVar("a" + std::to_string(a), "", IBINVariable::AttributeRole);
    }
    list.AddCatVar("target", "", 2, IBINVariable::NumericCategoricalLevel,
                   IBINVariable::TargetRole);
    cases.Restart();
  }

  ~Preparation() {
    preparator.reset();
    std::remove(directory.c_str());
  }

  static std::string makeDirectory() {
    std::string name = "/tmp/mcbinning_XXXXXX";
    return ::mkdtemp(name.data()) != nullptr ? name : "/tmp";
  }

  MemoryCases& cases;
  std::string directory = makeDirectory();
  BINVarList list;
  MCBinning::CancelState cancel{nullptr};
  std::unique_ptr<MCBinning::BINDataPreparator> preparator;

  void Pass() {
    cases.Restart();
    preparator = std::make_unique<MCBinning::BINDataPreparator>(directory, nullptr, 0, cancel, list,
                                                                MCBinning::realFileSystem());
    preparator->PrepareData(cases);
  }
};

MemoryCases& sharedCases() {
  static MemoryCases cases(kRows / 10, 2);
  return cases;
}

void pass(benchmark::State& state) {
  Preparation preparation(sharedCases());
  for (auto _ : state) {
    preparation.Pass();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kRows / 10));
}
BENCHMARK(pass);

void readBack(benchmark::State& state) {
  Preparation preparation(sharedCases());
  preparation.Pass();
  std::vector<double> cells(kRows / 10);
  for (auto _ : state) {
    MCBinning::BinaryRecordIterator reader(preparation.preparator->GetFileNames()[1],
                                           MCBinning::realFileSystem());
    benchmark::DoNotOptimize(reader.Take(cells));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kRows / 10));
}
BENCHMARK(readBack);

void ordering(benchmark::State& state) {
  const Column column = makeColumn(shapeOf(state), kRows, 2, false);
  SortedRows rows;
  for (auto _ : state) {
    rows.Fill(column.Cases(false), 2, true);
  }
  finish(state);
}
BENCHMARK(ordering)->DenseRange(0, 3)->Unit(benchmark::kMillisecond);

void orderingOfFractionalWeights(benchmark::State& state) {
  const Column column = makeColumn(shapeOf(state), kRows, 2, false);
  SortedRows rows;
  for (auto _ : state) {
    rows.Fill(column.Cases(true), 2, false);
    rows.Merge();
  }
  finish(state);
}
BENCHMARK(orderingOfFractionalWeights)->DenseRange(0, 3)->Unit(benchmark::kMillisecond);

void search(benchmark::State& state) {
  const auto k = static_cast<unsigned>(state.range(1));
  const bool weighted = state.range(3) != 0;
  const Column column = makeColumn(shapeOf(state), kRows, k, state.range(2) != 0);
  SortedRows rows;
  rows.Fill(column.Cases(weighted), k, !weighted);
  rows.Merge();
  for (auto _ : state) {
    MCBinning::Bins bins;
    searchCutPoints(MCBinning::CandidateTable::FromRows(rows, k, true), bins);
    benchmark::DoNotOptimize(bins.counts.data());
  }
  finish(state);
}
BENCHMARK(search)
    ->ArgNames({"shape", "k", "signal", "fractions"})
    ->ArgsProduct({{0, 1, 2, 3}, {2, 10, 100}, {0, 1}, {0, 1}})
    ->Unit(benchmark::kMillisecond);

void equalFrequency(benchmark::State& state) {
  const Column column = makeColumn(shapeOf(state), kRows, 2, false);
  SortedRows rows;
  for (auto _ : state) {
    rows.Fill({column.values}, 1, true);
    std::vector<double> cutPoints;
    std::vector<double> weights;
    MCBinning::BINEFPreProcess(20, true).RunOverPairs(rows, cutPoints, weights, kRows);
    benchmark::DoNotOptimize(cutPoints.data());
  }
  finish(state);
}
BENCHMARK(equalFrequency)->DenseRange(0, 3)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
