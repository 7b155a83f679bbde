#include "toolkit/fit/bin_recount.h"

#include <gtest/gtest.h>
#include <mccomvor/missing_value.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"

namespace mcbin {
namespace {

using testing::messageOf;
using testing::TemporaryFiles;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
const double kAbove = std::nextafter(1.0, 2.0);

void write(const TemporaryFiles& files, const std::string& name, std::vector<double> values) {
  files.Write(name, {reinterpret_cast<const char*>(values.data()), sizeof(double) * values.size()});
}

/// An equal-frequency model of one attribute.
Model cutAt(std::vector<double> cutPoints, const std::vector<double>& weights) {
  Model model;
  model.method = Method::EqualFrequency;
  AttributeModel attribute;
  attribute.cutPoints = std::move(cutPoints);
  for (const double weight : weights) attribute.bins.push_back({weight, {}});
  model.attributes.push_back(attribute);
  return model;
}

double recounted(const TemporaryFiles& files, std::uint64_t rows, Model model) {
  Monitor monitor;
  recountBins(files.Directory(), rows, monitor, model);
  return model.attributes.back().miscountedWeight;
}

TEST(BinRecount, RowsOnARoundedCutAreFound) {
  const TemporaryFiles files;
  write(files, "5", {0.5, 1.0, kAbove, 2.0});
  EXPECT_EQ(recounted(files, 4, cutAt({kAbove}, {2, 2})), 1.0);
  EXPECT_EQ(recounted(files, 4, cutAt({kAbove}, {3, 1})), 0.0);
  Model left = cutAt({1.0}, {2, 2});
  left.closedSide = ClosedSide::Left;
  EXPECT_EQ(recounted(files, 4, left), 1.0);
}

TEST(BinRecount, RowsBelowAnInfiniteCutAreFound) {
  const TemporaryFiles files;
  write(files, "5", {1e308, 1.5e308, 1.6e308, 1.7e308});
  EXPECT_EQ(recounted(files, 4, cutAt({kInfinity}, {1, 1})), 1.0);
}

TEST(BinRecount, RowsCountWithTheirWeightsAndMissingOnesDoNotCount) {
  const TemporaryFiles files;
  write(files, "a", {kAbove, 1.0, MCMV::gMissingValue, 1.0});
  write(files, "9", {5.0, 3.0, 100.0, 2.0});
  Model model = cutAt({kAbove}, {5, 5});
  model.weight = WeightModel{"w", {}, WeightRounding::Truncate};
  EXPECT_EQ(recounted(files, 4, model), 5.0);
}

TEST(BinRecount, FilesStandInTheOrderOfTheirNumbersOverManyChunks) {
  const TemporaryFiles files;
  const std::size_t rows = 20'000;
  std::vector<double> values(rows, 0.0);
  write(files, "f", values);
  values.back() = 1.0;
  values.front() = kAbove;
  write(files, "10", values);
  write(files, "no column", {});
  Model model = cutAt({1.0}, {rows, 0});
  model.attributes.push_back(cutAt({kAbove}, {rows - 1, 1}).attributes.front());
  EXPECT_EQ(recounted(files, rows, model), 1.0);
}

TEST(BinRecount, FilesThatAreNotWholeAreErrors) {
  const TemporaryFiles files;
  const Model model = cutAt({1.0}, {2, 2});
  const std::string start = "cannot read the temporary file " + files.Directory();
  EXPECT_EQ(messageOf<DataError>([&] { recounted(files, 4, model); }), start + ": files are gone");
  std::filesystem::create_symlink("nowhere", files.Path("5"));
  EXPECT_EQ(messageOf<DataError>([&] { recounted(files, 4, model); }),
            start + "/5: No such file or directory");
  std::filesystem::remove(files.Path("5"));
  write(files, "5", {0.5, 1.0, 2.0});
  EXPECT_EQ(messageOf<DataError>([&] { recounted(files, 4, model); }),
            start + "/5: it was cut short");
}

}  // namespace
}  // namespace mcbin
