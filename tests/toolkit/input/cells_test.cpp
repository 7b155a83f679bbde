#include "toolkit/input/cells.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace mcbin {
namespace {

TEST(Cells, TrimsBlanksAndTabsOnly) {
  EXPECT_EQ(trimmed(" \ta b\t "), "a b");
  EXPECT_EQ(trimmed(" \t "), "");
  EXPECT_EQ(trimmed("\na"), "\na");
}

TEST(Cells, EmptyAndListedTextsAreMissing) {
  EXPECT_TRUE(isMissingCell("", {}));
  EXPECT_TRUE(isMissingCell("  ", {}));
  EXPECT_TRUE(isMissingCell(" NA ", {"NA"}));
  EXPECT_FALSE(isMissingCell("na", {"NA"}));
  EXPECT_FALSE(isMissingCell("NA", {}));
}

TEST(Cells, EveryDefaultTextIsMissing) {
  for (const std::string& text : defaultNaTexts()) {
    EXPECT_TRUE(isMissingCell(text, defaultNaTexts())) << text;
  }
}

TEST(Cells, ReadsNumbersToTheNearestDouble) {
  double value = 0.0;
  ASSERT_EQ(readNumber(" 0.1 ", value), NumberReading::Number);
  EXPECT_EQ(value, 0.1);
  ASSERT_EQ(readNumber("+7", value), NumberReading::Number);
  EXPECT_EQ(value, 7.0);
  ASSERT_EQ(readNumber("-1e-3", value), NumberReading::Number);
  EXPECT_EQ(value, -0.001);
  ASSERT_EQ(readNumber("-inf", value), NumberReading::Number);
  EXPECT_EQ(value, -std::numeric_limits<double>::infinity());
  ASSERT_EQ(readNumber("9007199254740993", value), NumberReading::Number);
  EXPECT_EQ(value, 9007199254740992.0);
}

TEST(Cells, NumbersBelowTheSmallestDoubleAreZeroAndBeyondTheLargestRefused) {
  double value = 1.0;
  ASSERT_EQ(readNumber("1e-400", value), NumberReading::Number);
  EXPECT_EQ(value, 0.0);
  ASSERT_EQ(readNumber("5e-324", value), NumberReading::Number);
  EXPECT_EQ(value, std::numeric_limits<double>::denorm_min());
  for (const std::string& text :
       {std::string("-2e-324"), std::string("-1e-99999999999999999999"),
        "-0.00" + std::string(400, '0') + "1", std::string("-123456789.5E-400"),
        std::string("-0.01e-9223372036854775808")}) {
    ASSERT_EQ(readNumber(text, value), NumberReading::Number) << text;
    EXPECT_EQ(value, 0.0);
    EXPECT_TRUE(std::signbit(value));
  }
  for (const std::string& text : {std::string("1e999"), std::string("-1e999"),
                                  std::string("1.8e+308"), std::string("1e99999999999999999999"),
                                  std::string("1e9223372036854775807"), "1" + std::string(400, '0'),
                                  "1" + std::string(400, '0') + ".5", std::string("0.0001e400")}) {
    EXPECT_EQ(readNumber(text, value), NumberReading::OutOfRange) << text;
  }
}

TEST(Cells, RefusesWhatOnlyStartsAsANumber) {
  double value = 0.0;
  for (const char* text : {"", "-", "+", "+-1", "++1", "1x", "1,5", "1 2", "0x10", "nan", "NaN",
                           "e5", "--1", "1e", "abc"}) {
    EXPECT_EQ(readNumber(text, value), NumberReading::NotANumber) << text;
  }
}

TEST(Cells, MissingTextsComeBeforeNumbers) {
  double value = 0.0;
  const ScaleCells cells({"-99"});
  EXPECT_EQ(cells.Read("-99", value), CellKind::Missing);
  EXPECT_EQ(cells.Read("-98", value), CellKind::Number);
  EXPECT_EQ(value, -98.0);
  EXPECT_EQ(cells.Read("", value), CellKind::Missing);
  EXPECT_EQ(cells.Read("x", value), CellKind::Text);
  EXPECT_EQ(cells.Read("1e999", value), CellKind::OutOfRange);
  EXPECT_EQ(ScaleCells({"1e999"}).Read("1e999", value), CellKind::Missing);
}

TEST(Cells, PlainDecimalsReadAsTheGeneralReaderReadsThem) {
  const ScaleCells cells({"NA"});
  const std::uint64_t seed = 11;
  SCOPED_TRACE(seed);
  std::mt19937_64 engine(seed);
  const std::string alphabet = "0123456789.-";
  for (int i = 0; i < 200000; ++i) {
    std::string text;
    for (std::size_t left = engine() % 22; left > 0; --left) {
      // Mostly digits, so that many of the texts are numbers.
      text += alphabet[engine() % (engine() % 8 == 0 ? 12 : 10)];
    }
    double general = 0.0;
    double fast = 0.0;
    const bool isNumber = readNumber(text, general) == NumberReading::Number;
    const CellKind kind = cells.Read(text, fast);
    ASSERT_EQ(kind == CellKind::Number, isNumber) << text;
    ASSERT_EQ(std::memcmp(&general, &fast, sizeof general), 0) << text;
  }
}

}  // namespace
}  // namespace mcbin
