// Prints how the CPU time of the program's two passes over a table compares with the time that
// libcsv alone takes to read the file twice, measured in one process (docs/performance.md).
// Usage: mcbin_reading [rows [repetitions]]
#include <csv.h>
#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <functional>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "toolkit/fit/case_feed.h"
#include "toolkit/fit/column_plan.h"
#include "toolkit/fit/column_scan.h"
#include "toolkit/fit/text_cases.h"
#include "toolkit/input/cells.h"
#include "toolkit/input/open_table.h"
#include "toolkit/monitor.h"
#include "toolkit/system/temporary_directory.h"

using namespace mcbin;

namespace {

constexpr int kNumberColumns = 19;
constexpr double kBound = 2.0;

using FilePointer = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

FilePointer openFile(const std::string& path, const char* mode) {
  FilePointer file(std::fopen(path.c_str(), mode), std::fclose);
  if (file == nullptr) throw std::runtime_error("cannot open " + path);
  return file;
}

/// Amounts, whole numbers, measures with many digits and of both signs; now and then none at all.
std::string numberText(int column, std::mt19937_64& random) {
  if (random() % 50 == 0) return random() % 2 == 0 ? "" : "NA";
  const double place = std::uniform_real_distribution<double>(0.0, 1.0)(random);
  switch (column % 4) {
    case 0:
      return fmt::format("{}", static_cast<int>(place * 120.0));
    case 1:
      return fmt::format("{:.2f}", place * place * 1000.0);
    case 2:
      return fmt::format("{}", static_cast<int>(place * 1e5));
    default:
      return fmt::format("{:.4f}", 4.0 * place - 2.0);
  }
}

void writeTable(const std::string& path, int rows, bool isQuoted) {
  const FilePointer file = openFile(path, "w");
  std::string line = "target";
  for (int column = 1; column <= kNumberColumns; ++column) line += fmt::format(",n{}", column);
  std::mt19937_64 random(20240229);
  for (int row = 0; row <= rows; ++row) {
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), file.get());
    const char* const category = random() % 3 == 0 ? "yes" : "no";
    line = isQuoted ? fmt::format("\"{}\"", category) : category;
    for (int column = 1; column <= kNumberColumns; ++column) {
      line += ',' + numberText(column, random);
    }
  }
}

void readWithLibcsv(const std::string& path) {
  const auto onCell = [](void*, std::size_t, void*) {};
  const auto onRow = [](int, void*) {};
  std::vector<char> buffer(std::size_t{1} << 17U);
  for (int pass = 0; pass < 2; ++pass) {
    const FilePointer file = openFile(path, "r");
    csv_parser parser;
    csv_init(&parser, 0);
    while (const std::size_t size = std::fread(buffer.data(), 1, buffer.size(), file.get())) {
      csv_parse(&parser, buffer.data(), size, onCell, onRow, nullptr);
    }
    csv_fini(&parser, onCell, onRow, nullptr);
    csv_free(&parser);
  }
}

/// What `mcbin fit` does but for the library. Returns the number of cases.
std::uint64_t readAsTheProgram(const std::string& path) {
  InputOptions options;
  options.data = path;
  Monitor monitor;
  const std::unique_ptr<TableReader> reader = openTable(options, monitor);
  FitRequest request;
  request.target = "target";
  request.naTexts = defaultNaTexts();
  TextCases cases(*reader, request.naTexts);
  std::vector<ColumnPlan> columns = planColumns(request, cases.ColumnNames());
  ScanRequest scan{std::vector<ScanAs>(columns.size(), ScanAs::Cells), request.naTexts, {}};
  scan.columns[0] = ScanAs::Target;
  const TableScan seen = scanTable(cases, scan, monitor);
  applyScan(seen, path, columns);

  cases.Rewind();
  FeedLayout layout;
  layout.targetColumn = 0;
  for (std::size_t c = 1; c < columns.size(); ++c) layout.attributeColumns.push_back(c);
  CaseFeed feed(cases, columns, layout, seen, request.naTexts, WeightRounding::Truncate, false);
  while (feed.HasNext()) feed.Next();
  feed.RethrowFailure();
  return feed.Cases().used;
}

double secondsOf(const std::function<void()>& work) {
  const std::clock_t start = std::clock();
  work();
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

double medianOf(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

void compare(const char* name, const std::string& path, int rows, int repetitions) {
  std::vector<double> program;
  std::vector<double> plain;
  std::vector<double> ratios;
  for (int i = 0; i < repetitions; ++i) {
    plain.push_back(secondsOf([&] { readWithLibcsv(path); }));
    program.push_back(secondsOf([&] {
      if (readAsTheProgram(path) != static_cast<std::uint64_t>(rows)) {
        throw std::runtime_error("cases are missing");
      }
    }));
    ratios.push_back(program.back() / plain.back());
  }
  const double ratio = medianOf(ratios);
  fmt::print("| {:<42} | {:7.3f} | {:7.3f} | {:6.2f} | {:5.2f} | {} |\n", name, medianOf(program),
             medianOf(plain), ratio, kBound, ratio <= kBound ? "bound" : "OVER");
}

}  // namespace

int main(int argc, char** argv) {
  const int rows = argc > 1 ? std::atoi(argv[1]) : 1'000'000;
  const int repetitions = argc > 2 ? std::atoi(argv[2]) : 5;
  fmt::print(
      "| {:<42} | program |  libcsv |  ratio | bound | reached |\n|---|---|---|---|---|---|\n",
      "reading a table twice, CPU seconds");
  try {
    const TemporaryDirectory directory(temporaryRoot());
    for (const bool isQuoted : {false, true}) {
      const std::string path = directory.Path() + "/table.csv";
      writeTable(path, rows, isQuoted);
      const double megabytes = static_cast<double>(std::filesystem::file_size(path)) / 1e6;
      compare(fmt::format("{} rows, {:.0f} MB, {}", rows, megabytes,
                          isQuoted ? "texts in quotes" : "no quotes")
                  .c_str(),
              path, rows, repetitions);
      std::filesystem::remove(path);
    }
  } catch (const std::exception& error) {
    fmt::print(stderr, "{}\n", error.what());
    return 1;
  }
  return 0;
}
