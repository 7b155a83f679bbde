// Reads column files by the rule of docs/column-files.md alone: value i of a column is the double
// at byte 8 * i, and the file holds nothing else.

#include <gtest/gtest.h>
#include <mccomvor/missing_value.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <string>
#include <vector>

#include "support/table_run.h"

namespace {

using mcbinning_tests::TableRun;

std::vector<unsigned char> bytesOf(const std::string& name) {
  std::vector<unsigned char> bytes;
  std::FILE* file = std::fopen(name.c_str(), "rb");
  EXPECT_NE(file, nullptr) << name;
  for (int byte = file != nullptr ? std::fgetc(file) : EOF; byte != EOF; byte = std::fgetc(file)) {
    bytes.push_back(static_cast<unsigned char>(byte));
  }
  if (file != nullptr) {
    std::fclose(file);
  }
  return bytes;
}

/// The bit pattern of value `index`, put together from little-endian bytes.
std::uint64_t patternAt(const std::vector<unsigned char>& bytes, std::size_t index) {
  std::uint64_t pattern = 0;
  for (std::size_t byte = 8; byte-- > 0;) {
    pattern = pattern << 8 | bytes.at(8 * index + byte);
  }
  return pattern;
}

std::uint64_t patternOf(double value) {
  static_assert(sizeof(double) == sizeof(std::uint64_t) && std::numeric_limits<double>::is_iec559);
  return std::bit_cast<std::uint64_t>(value);
}

TEST(ColumnFileFormatTest, AColumnIsItsValuesAndNothingElse) {
  const double missing = MCMV::gMissingValue;
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double denormal = std::numeric_limits<double>::denorm_min();
  BINVarList list;
  list.AddContVar("x", "", IBINVariable::AttributeRole);
  list.AddDiscreteUserMissing(0, 99.0, "");
  list.AddCatVar("t", "", 3, IBINVariable::NumericCategoricalLevel, IBINVariable::TargetRole);
  list.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
  TableRun run(list, {{1.5, 0, 2.9},
                      {99.0, 2, 1},
                      {},
                      {-0.0, -1, 3},
                      {7, 1, 0.5},
                      {nan, missing, 4},
                      {denormal, 1.9, 1e15},
                      {missing, 0, 1}});
  ASSERT_TRUE(run.preparator.PrepareData(run.cases).IsOK());
  const std::vector<std::vector<double>> expected = {
      {0, 2, missing, missing, 1, 0},
      {2, 1, 3, 4, 1e15, 1},
      {1.5, missing, -0.0, nan, denormal, missing},
  };
  const auto& names = run.preparator.GetFileNames();
  ASSERT_EQ(names.size(), expected.size());
  for (std::size_t column = 0; column < names.size(); ++column) {
    EXPECT_EQ(names[column].substr(0, run.directory.Path().size() + 1), run.directory.Path() + "/");
    const auto bytes = bytesOf(names[column]);
    ASSERT_EQ(bytes.size(), 8 * expected[column].size());
    for (std::size_t i = 0; i < expected[column].size(); ++i) {
      EXPECT_EQ(patternAt(bytes, i), patternOf(expected[column][i])) << column << " " << i;
    }
  }
}

TEST(ColumnFileFormatTest, AColumnThatWasGivenUpIsShorter) {
  BINVarList list;
  list.AddCatVar("c", "", 300, IBINVariable::NumericCategoricalLevel, IBINVariable::AttributeRole);
  list.AddContVar("x", "", IBINVariable::AttributeRole);
  TableRun run(list, {{1, 1}, {2, 2}, {256, 3}, {3, 4}});
  ASSERT_TRUE(run.preparator.PrepareData(run.cases).IsWarning());
  EXPECT_EQ(bytesOf(run.preparator.GetFileNames()[0]).size(), 16U);
  EXPECT_EQ(bytesOf(run.preparator.GetFileNames()[1]).size(), 32U);
}

}  // namespace
