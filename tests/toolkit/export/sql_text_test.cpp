#include "toolkit/export/sql_text.h"

#include <gtest/gtest.h>

#include <limits>

#include "toolkit/errors.h"

namespace {

TEST(SqlTextTest, NamesAndTextsAreQuoted) {
  EXPECT_EQ(mcbin::sqlIdentifier("plain"), "\"plain\"");
  EXPECT_EQ(mcbin::sqlIdentifier("a \"b\""), "\"a \"\"b\"\"\"");
  EXPECT_EQ(mcbin::sqlText("it's"), "'it''s'");
}

TEST(SqlTextTest, ATableNameHasPartsBetweenDots) {
  EXPECT_EQ(mcbin::sqlTableName("t"), "\"t\"");
  EXPECT_EQ(mcbin::sqlTableName("main.the t"), "\"main\".\"the t\"");
  EXPECT_EQ(mcbin::sqlTableName("\"my.table\""), "\"my.table\"");
  EXPECT_EQ(mcbin::sqlTableName("a.\"b \"\"c\"\"\".d"), "\"a\".\"b \"\"c\"\"\".\"d\"");
  for (const char* wrong : {"", ".", "a.", ".a", "a..b", "\"a", "\"a\"b", "a\"b\"", "\"\""}) {
    EXPECT_THROW(mcbin::sqlTableName(wrong), mcbin::UsageError) << wrong;
  }
}

TEST(SqlTextTest, NumbersAreReal) {
  EXPECT_EQ(mcbin::sqlNumber(3.0), "3.0");
  EXPECT_EQ(mcbin::sqlNumber(-0.1), "-0.1");
  EXPECT_EQ(mcbin::sqlNumber(1e300), "1e+300");
  EXPECT_EQ(mcbin::sqlNumber(std::numeric_limits<double>::infinity()), "9e999");
  EXPECT_EQ(mcbin::sqlNumber(-std::numeric_limits<double>::infinity()), "-9e999");
}

TEST(SqlTextTest, DialectsDiffer) {
  using mcbin::SqlDialect;
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(mcbin::sqlIdentifier("a`\"", SqlDialect::Spark), "`a``\"`");
  EXPECT_EQ(mcbin::sqlTableName("s.t", SqlDialect::Spark), "`s`.`t`");
  EXPECT_EQ(mcbin::sqlText("it's \\", SqlDialect::Spark), "'it\\'s \\\\'");
  EXPECT_EQ(mcbin::sqlText("it's \\", SqlDialect::PostgreSql), "'it''s \\'");
  EXPECT_EQ(mcbin::sqlNumber(0.1, SqlDialect::DuckDb), "0.1e0");
  EXPECT_EQ(mcbin::sqlNumber(1e300, SqlDialect::Ansi), "1e+300");
  EXPECT_EQ(mcbin::sqlNumber(-kInfinity, SqlDialect::PostgreSql),
            "CAST('-Infinity' AS DOUBLE PRECISION)");
  EXPECT_EQ(mcbin::sqlNumber(kInfinity, SqlDialect::Spark), "CAST('Infinity' AS DOUBLE)");
  EXPECT_THROW(mcbin::sqlNumber(kInfinity, SqlDialect::Ansi), mcbin::DataError);
  EXPECT_EQ(mcbin::sqlTrimmed("x", SqlDialect::Ansi), "TRIM(CAST(x AS VARCHAR(255)))");
  EXPECT_EQ(mcbin::sqlTrimmed("x", SqlDialect::Spark), "TRIM(BOTH ' \\t' FROM CAST(x AS STRING))");
}

TEST(SqlTextTest, ANumberThatSqliteMisreadsGetsMoreDigits) {
  EXPECT_EQ(mcbin::sqlNumber(254.6272160119115), "2.546272160119114858e+02");
}

}  // namespace
