// Prints how the library's CPU times and memory compare with plain ways to do the same, measured in
// one process (docs/performance.md). Usage: mcbinning_ratios [cases [repetitions [categories...]]]
#include <fcntl.h>
#include <mcbinning/mcbinning.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench_data.h"
#include "data/attribute_table.h"
#include "data/binary_record_iterator.h"
#include "data/data_preparator.h"
#include "data/sorted_rows.h"
#include "plain_reference.h"
#include "supervised/cut_point_search.h"
#include "supervised/ef_preprocess.h"

using namespace mcbinning_bench;
using MCBinning::CandidateTable;
using MCBinning::SortedRows;

namespace {

constexpr int kAttributes = MemoryCases::kAttributes;

int repetitions = 5;
std::string directory;

/// Median CPU time of a piece of work, in nanoseconds.
double medianTime(
    const std::function<void()>& work, const std::function<void()>& before = [] {}) {
  std::vector<double> times;
  for (int i = 0; i < repetitions; ++i) {
    before();
    const std::clock_t start = std::clock();
    work();
    times.push_back(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC * 1e9);
  }
  std::sort(times.begin(), times.end());
  return times[times.size() / 2];
}

void print(const std::string& what, double time, double reference, double n, double bound,
           double aim) {
  std::printf("| %-58s | %8.2f | %8.2f | %7.4f | %6.3f | %6.3f | %s |\n", what.c_str(), time / n,
              reference / n, time / reference, bound, aim,
              time <= reference * aim ? "aim" : (time <= reference * bound ? "bound" : "OVER"));
  std::fflush(stdout);
}

void makeList(BINVarList& list, unsigned k, int attributes, bool weighted = false) {
  for (int a = 0; a < attributes; ++a) {
    list.AddContVar("a" + std::to_string(a), "", IBINVariable::AttributeRole);
  }
  list.AddCatVar("target", "", static_cast<int>(k), IBINVariable::NumericCategoricalLevel,
                 IBINVariable::TargetRole);
  if (weighted) {
    list.AddWeightVar("weight", "", static_cast<IBINVariable::BINWRoundingOption>(2));
  }
}

BINSettings makeSettings() {
  BINSettings settings;
  settings.SetTempDirName(directory);
  settings.SetNumberOfBins(20);
  return settings;
}

std::vector<std::vector<double>> libraryCutPoints(BINCaseIterator& cases, BINVarList& list) {
  BINSettings settings = makeSettings();
  BINFactory factory;
  const std::unique_ptr<IBINAlgorithm> algorithm(factory.CreateBINAlgorithm(settings, list));
  if (algorithm->Run(cases, nullptr, nullptr).IsError()) {
    throw std::runtime_error("the run failed");
  }
  std::vector<std::vector<double>> cutPoints;
  std::vector<BINAttributeTargetResults> results;
  algorithm->GetOutput()->GetAllCutPoints(results);
  for (const BINAttributeTargetResults& result : results) {
    cutPoints.push_back(result.GetCutPoints());
  }
  return cutPoints;
}

std::vector<PlainRow> plainRowsOf(const Column& column) {
  std::vector<PlainRow> rows;
  for (std::size_t i = 0; i < column.values.size(); ++i) {
    rows.push_back({column.values[i], column.codes[i], 1.0});
  }
  return rows;
}

double timeOfPlainSort(const Column& column) {
  const std::vector<PlainRow> unsorted = plainRowsOf(column);
  std::vector<PlainRow> rows;
  return medianTime([&] { sortPlainRows(rows); }, [&] { rows = unsorted; });
}

void compareOrdering(std::size_t n) {
  const struct {
    const char* name;
    Shape shape;
    double bound, aim;
  } all[] = {{"ordering / std::sort: all distinct", Shape::Uniform, 0.40, 0.20},
             {"ordering / std::sort: money", Shape::Money, 0.40, 0.20},
             {"ordering / std::sort: 10,000 values", Shape::TenThousandValues, 0.40, 0.20},
             {"ordering / std::sort: 100 values", Shape::HundredValues, 0.30, 0.10}};
  for (const auto& one : all) {
    const Column column = makeColumn(one.shape, n, 2, true);
    SortedRows rows;
    const double time = medianTime([&] { rows.Fill(column.Cases(false), 2, true); });
    print(one.name, time, timeOfPlainSort(column), static_cast<double>(n), one.bound, one.aim);
  }
}

void compareSearch(std::size_t n, unsigned k, bool informative, bool weighted, double bound,
                   double aim) {
  const Column column = makeColumn(Shape::Uniform, n, k, informative);
  SortedRows rows;
  rows.Fill(column.Cases(weighted), k, !weighted);
  rows.Merge();
  const double time = medianTime([&] {
    MCBinning::Bins bins;
    searchCutPoints(CandidateTable::FromRows(rows, k, true), bins);
  });
  print("search / std::sort: k = " + std::to_string(k) + (informative ? ", signal" : ", noise") +
            (weighted ? ", fractional weights" : ""),
        time, timeOfPlainSort(column), static_cast<double>(n), bound, aim);
}

void compareEqualFrequency(std::size_t n) {
  const Column column = makeColumn(Shape::Uniform, n, 2, false);
  SortedRows rows;
  const double time = medianTime([&] {
    rows.Fill({column.values}, 1, true);
    std::vector<double> cutPoints;
    std::vector<double> weights;
    MCBinning::BINEFPreProcess(20, true).RunOverPairs(rows, cutPoints, weights,
                                                      static_cast<double>(n));
  });
  std::vector<double> values;
  const double sort =
      medianTime([&] { std::sort(values.begin(), values.end()); }, [&] { values = column.values; });
  print("equal frequency of a column / std::sort of it", time, sort, static_cast<double>(n), 0.40,
        0.10);
}

/// The calls of the pass and its writes, with nothing between them but a buffer.
void barePass(MemoryCases& cases) {
  constexpr std::size_t kBuffered = 10000;
  std::vector<double> buffer((kAttributes + 1) * kBuffered);
  const auto nameOf = [](std::size_t c) { return directory + "/bare_" + std::to_string(c); };
  std::size_t filled = 0;
  const auto flush = [&] {
    for (std::size_t c = 0; c <= kAttributes; ++c) {
      const int file = ::open(nameOf(c).c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
      if (::write(file, buffer.data() + c * kBuffered, filled * sizeof(double)) < 0) {
        throw std::runtime_error("no room for a column");
      }
      ::close(file);
    }
    filled = 0;
  };
  while (cases.HasNext()) {
    const MCCommon::Record& record = *cases.Next();
    for (int c = 0; c <= kAttributes; ++c) {
      buffer[static_cast<std::size_t>(c) * kBuffered + filled] = record[c];
    }
    if (++filled == kBuffered) {
      flush();
    }
  }
  flush();
  for (std::size_t c = 0; c <= kAttributes; ++c) {
    ::unlink(nameOf(c).c_str());
  }
}

/// What `cat` does with the files.
void cat(const std::vector<std::string>& names) {
  constexpr std::size_t kBytes = 128 * 1024;
  const auto bytes = std::make_unique_for_overwrite<char[]>(kBytes);
  const int out = ::open("/dev/null", O_WRONLY);
  for (const std::string& name : names) {
    const int file = ::open(name.c_str(), O_RDONLY);
    ssize_t got = 0;
    while ((got = ::read(file, bytes.get(), kBytes)) > 0) {
      if (::write(out, bytes.get(), static_cast<std::size_t>(got)) != got) {
        throw std::runtime_error("cannot write");
      }
    }
    ::close(file);
  }
  ::close(out);
}

void comparePassAndReading(MemoryCases& cases) {
  const auto n = static_cast<double>(cases.Size());
  BINVarList list;
  makeList(list, 2, kAttributes);
  MCBinning::CancelState cancel(nullptr);
  std::unique_ptr<MCBinning::BINDataPreparator> preparator;
  const auto restart = [&] {
    cases.Restart();
    preparator.reset();
  };
  const double pass = medianTime(
      [&] {
        preparator = std::make_unique<MCBinning::BINDataPreparator>(
            directory, nullptr, 0, cancel, list, MCBinning::realFileSystem());
        preparator->PrepareData(cases);
      },
      restart);
  preparator.reset();
  const double bare = medianTime([&] { barePass(cases); }, restart);
  print("pass with files / bare host calls and writes", pass, bare, n, 1.25, 1.05);

  restart();
  preparator = std::make_unique<MCBinning::BINDataPreparator>(directory, nullptr, 0, cancel, list,
                                                              MCBinning::realFileSystem());
  preparator->PrepareData(cases);
  const std::size_t nCases = cases.Size();
  const auto cells = std::make_unique<double[]>(nCases);
  const double read = medianTime([&] {
    for (const std::string& name : preparator->GetFileNames()) {
      MCBinning::BinaryRecordIterator reader(name, MCBinning::realFileSystem());
      if (reader.Take({cells.get(), nCases}) != nCases) {
        throw std::runtime_error("a column ends early");
      }
    }
  });
  print("reading back every column once / cat", read,
        medianTime([&] { cat(preparator->GetFileNames()); }), n, 2.5, 1.5);
}

/// The table's builds and the searches of all attributes beside sorting the same rows.
void compareAfterPass(MemoryCases& cases) {
  BINVarList list;
  makeList(list, 2, kAttributes);
  MCBinning::CancelState cancel(nullptr);
  cases.Restart();
  MCBinning::BINDataPreparator preparator(directory, nullptr, 0, cancel, list,
                                          MCBinning::realFileSystem());
  preparator.PrepareData(cases);
  const double time = medianTime([&] {
    MCBinning::BINAttributeTable table(preparator);
    for (int a = 0; a < kAttributes; ++a) {
      SortedRows* rows = nullptr;
      table.BuildSupervisedTable(a, kAttributes, rows);
      MCBinning::Bins bins;
      searchCutPoints(CandidateTable::FromRows(*rows, 2, true), bins);
    }
  });
  std::vector<std::vector<PlainRow>> unsorted(kAttributes);
  cases.Restart();
  while (cases.HasNext()) {
    const MCCommon::Record& record = *cases.Next();
    for (std::size_t a = 0; a < kAttributes; ++a) {
      unsorted[a].push_back(
          {record[static_cast<int>(a)], static_cast<int>(record[kAttributes]), 1.0});
    }
  }
  std::vector<std::vector<PlainRow>> all;
  const double sort = medianTime([&] { std::for_each(all.begin(), all.end(), sortPlainRows); },
                                 [&] { all = unsorted; });
  print("everything after the pass / std::sort alone of all rows", time, sort,
        static_cast<double>(cases.Size()), 0.50, 0.25);
}

/// Returns the library's time per case.
double compareWholeRuns(MemoryCases& cases, unsigned k, double bound, double aim) {
  BINVarList list;
  makeList(list, k, kAttributes);
  std::vector<std::vector<double>> cutPoints;
  const auto restart = [&] { cases.Restart(); };
  const double time = medianTime([&] { cutPoints = libraryCutPoints(cases, list); }, restart);
  std::vector<std::vector<double>> plain;
  const int asked = repetitions;
  repetitions = std::min(asked, cases.Size() >= 5000000 || k > 10 ? 1 : asked);
  const double reference =
      medianTime([&] { plain = plainCutPoints(cases, kAttributes, k, directory); }, restart);
  repetitions = asked;
  if (plain != cutPoints) {
    std::puts("THE CUT POINTS DIFFER");
    std::exit(1);
  }
  print("whole run / plain reference: k = " + std::to_string(k) + ", " +
            std::to_string(cases.Size()) + " cases",
        time, reference, static_cast<double>(cases.Size()), bound, aim);
  return time / static_cast<double>(cases.Size());
}

double timePerCase(std::size_t n) {
  MemoryCases cases(n, 2);
  BINVarList list;
  makeList(list, 2, kAttributes);
  return medianTime([&] { libraryCutPoints(cases, list); }, [&] { cases.Restart(); }) /
         static_cast<double>(n);
}

/// In a process of its own: the peak of resident memory above the start.
void printMemory(std::size_t n, bool weighted, double bound, double aim) {
  std::fflush(stdout);
  const pid_t child = ::fork();
  if (child == 0) {
    BINVarList list;
    makeList(list, 2, 1, weighted);
    FlowingCases cases(n, weighted);
    rusage before{};
    ::getrusage(RUSAGE_SELF, &before);
    libraryCutPoints(cases, list);
    rusage after{};
    ::getrusage(RUSAGE_SELF, &after);
    const double bytes = static_cast<double>(after.ru_maxrss - before.ru_maxrss) * 1024.0;
    print(weighted ? "peak memory above start, bytes a row: weighted"
                   : "peak memory above start, bytes a row: unweighted",
          bytes, static_cast<double>(n), static_cast<double>(n), bound, aim);
    std::fflush(stdout);
    ::_exit(0);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
}

void compareStages(std::size_t n) {
  printMemory(n, false, 48, 18);
  printMemory(n, true, 56, 26);
  compareOrdering(n);
  for (const bool informative : {true, false}) {
    compareSearch(n, 2, informative, false, 0.15, 0.04);
    compareSearch(n, 10, informative, false, 0.25, 0.08);
    compareSearch(n, 100, informative, false, 0.50, 0.20);
    compareSearch(n, 2, informative, true, 0.40, 0.20);
  }
  compareEqualFrequency(n);
}

void compareRuns(std::size_t n) {
  double perCase = 0.0;
  {
    MemoryCases cases(n, 2);
    comparePassAndReading(cases);
    compareAfterPass(cases);
    perCase = compareWholeRuns(cases, 2, 1.0 / 4, 1.0 / 7);
  }
  {
    MemoryCases cases(std::min<std::size_t>(n, 1000000), 10);
    compareWholeRuns(cases, 10, 1.0 / 5, 1.0 / 9);
  }
  {
    MemoryCases cases(std::min<std::size_t>(n, 200000), 100);
    compareWholeRuns(cases, 100, 1.0 / 20, 1.0 / 50);
  }
  if (n >= 2000000) {
    print("ns per case: " + std::to_string(n) + " cases / a tenth of them", perCase,
          timePerCase(n / 10), 1.0, 1.3, 1.05);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const std::size_t n = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1000000;
  repetitions = argc > 2 ? std::atoi(argv[2]) : 5;
  const char* const temporary = std::getenv("TMPDIR");
  std::string pattern =
      std::string(temporary != nullptr ? temporary : "/tmp") + "/mcbinning_XXXXXX";
  if (::mkdtemp(pattern.data()) == nullptr) {
    std::perror(pattern.c_str());
    return 1;
  }
  directory = pattern;

  std::printf("%zu cases, medians of %d, CPU time in ns per row or case\n\n", n, repetitions);
  std::printf("| %-58s | %8s | %8s | %7s | %6s | %6s | %s |\n", "ratio", "library", "plain",
              "ratio", "bound", "aim", "reached");
  std::puts("|---|---|---|---|---|---|---|");
  compareStages(n);
  compareRuns(n);
  ::rmdir(directory.c_str());
  return 0;
}
