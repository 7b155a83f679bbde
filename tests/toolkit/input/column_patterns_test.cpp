#include "toolkit/input/column_patterns.h"

#include <gtest/gtest.h>

#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"

namespace mcbin {
namespace {

using testing::messageOf;
using Columns = std::vector<std::size_t>;

const std::vector<std::string> kNames = {"age", "income", "3", "in*", "age_2"};

TEST(ColumnPatterns, ANameGoesBeforeANumberBeforeAPattern) {
  EXPECT_EQ(matchColumns(kNames, "age", "--attribute"), Columns({0}));
  EXPECT_EQ(matchColumns(kNames, "2", "--attribute"), Columns({1}));
  EXPECT_EQ(matchColumns(kNames, "3", "--attribute"), Columns({2}));
  EXPECT_EQ(matchColumns(kNames, "in*", "--attribute"), Columns({3}));
  EXPECT_EQ(matchColumns(kNames, "age*", "--attribute"), Columns({0, 4}));
  EXPECT_EQ(matchColumns(kNames, "?", "--attribute"), Columns({2}));
  EXPECT_EQ(matchColumns(kNames, "[ai]*", "--attribute"), Columns({0, 1, 3, 4}));
}

TEST(ColumnPatterns, SetsMayBeTurnedAroundAndCharactersBeyondAsciiAreOne) {
  const std::vector<std::string> names = {"a", "b", "ä", "!", "[", "^", "aé1"};
  EXPECT_EQ(matchColumns(names, "[!ab]", "--attribute"), Columns({2, 3, 4, 5}));
  EXPECT_EQ(matchColumns(names, "[^ab]", "--attribute"), Columns({2, 3, 4, 5}));
  EXPECT_EQ(matchColumns(names, "[a!]", "--attribute"), Columns({0, 3}));
  EXPECT_EQ(matchColumns(names, "[[!]", "--attribute"), Columns({3, 4}));
  EXPECT_EQ(matchColumns(names, "?", "--attribute"), Columns({0, 1, 2, 3, 4, 5}));
  EXPECT_EQ(matchColumns(names, "[a-z][!x]1", "--attribute"), Columns({6}));
  EXPECT_EQ(messageOf<DataError>([&] { matchColumns(names, "[!", "-a"); }).substr(0, 18),
            "-a: no column '[!'");
}

TEST(ColumnPatterns, WhatNamesNoColumnListsTheColumns) {
  EXPECT_EQ(messageOf<DataError>([] { findColumn(kNames, "ag", "--target"); }),
            "--target: no column 'ag'; the columns are: age, income, 3, in*, age_2");
  EXPECT_EQ(messageOf<DataError>([] { findColumn(kNames, "age*", "--target"); }),
            "--target: no column 'age*'; the columns are: age, income, 3, in*, age_2");
  EXPECT_EQ(messageOf<DataError>([] { matchColumns(kNames, "6", "--exclude"); }),
            "--exclude: no column '6'; the columns are: age, income, 3, in*, age_2");
  EXPECT_EQ(messageOf<DataError>([] { matchColumns(kNames, "z*", "--exclude"); }),
            "--exclude: no column 'z*'; the columns are: age, income, 3, in*, age_2");
}

TEST(ColumnPatterns, ASingleColumnHintsAtTheSeparator) {
  EXPECT_EQ(messageOf<DataError>([] { findColumn({"a;b"}, "b", "--target"); }),
            "--target: no column 'b'; the columns are: a;b (only one: is the separator right? see "
            "--delimiter)");
}

}  // namespace
}  // namespace mcbin
