#include "toolkit/export/sql_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(SqlTextTest, NamesAndTextsAreQuoted) {
  EXPECT_EQ(mcbin::sqlIdentifier("plain"), "\"plain\"");
  EXPECT_EQ(mcbin::sqlIdentifier("a \"b\""), "\"a \"\"b\"\"\"");
  EXPECT_EQ(mcbin::sqlText("it's"), "'it''s'");
}

TEST(SqlTextTest, NumbersAreReal) {
  EXPECT_EQ(mcbin::sqlNumber(3.0), "3.0");
  EXPECT_EQ(mcbin::sqlNumber(-0.1), "-0.1");
  EXPECT_EQ(mcbin::sqlNumber(1e300), "1e+300");
  EXPECT_EQ(mcbin::sqlNumber(std::numeric_limits<double>::infinity()), "9e999");
  EXPECT_EQ(mcbin::sqlNumber(-std::numeric_limits<double>::infinity()), "-9e999");
}

TEST(SqlTextTest, ANumberThatSqliteMisreadsGetsMoreDigits) {
  EXPECT_EQ(mcbin::sqlNumber(254.6272160119115), "2.546272160119114858e+02");
}

}  // namespace
