#include "toolkit/columns/number_columns.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace mcbin {
namespace {

/// What a cell reads as, in words.
std::string numberAt(const Column& column, std::size_t row,
                     const std::vector<std::string>& naTexts = {}) {
  double value = 0.0;
  switch (column.ReadNumber(row, ScaleCells(naTexts), value)) {
    case CellKind::Number:
      return shortestNumber(value);
    case CellKind::Missing:
      return "missing";
    default:
      return "text";
  }
}

std::string textAt(const Column& column, std::size_t row) {
  std::string buffer;
  return std::string(column.ReadText(row, buffer));
}

template <class T>
std::vector<std::string> extremesOf() {
  const T values[] = {std::numeric_limits<T>::lowest(), T{0}, std::numeric_limits<T>::max()};
  const NumberColumn<T> column(values, sizeof(T), {});
  return {numberAt(column, 0), textAt(column, 1), textAt(column, 2)};
}

TEST(NumberColumn, ReadsWholeNumbersOfEveryWidth) {
  using Texts = std::vector<std::string>;
  EXPECT_EQ(extremesOf<std::int8_t>(), (Texts{"-128", "0", "127"}));
  EXPECT_EQ(extremesOf<std::uint8_t>(), (Texts{"0", "0", "255"}));
  EXPECT_EQ(extremesOf<std::int16_t>(), (Texts{"-32768", "0", "32767"}));
  EXPECT_EQ(extremesOf<std::uint16_t>(), (Texts{"0", "0", "65535"}));
  EXPECT_EQ(extremesOf<std::int32_t>(), (Texts{"-2147483648", "0", "2147483647"}));
  EXPECT_EQ(extremesOf<std::uint32_t>(), (Texts{"0", "0", "4294967295"}));
  EXPECT_EQ(extremesOf<std::int64_t>(),
            (Texts{shortestNumber(-0x1p63), "0", "9223372036854775807"}));
  EXPECT_EQ(extremesOf<std::uint64_t>(), (Texts{"0", "0", "18446744073709551615"}));
}

TEST(NumberColumn, ReadsAWholeNumberBeyondDoublesAsTheNearestOne) {
  const std::int64_t value = (std::int64_t{1} << 53) + 1;
  const NumberColumn<std::int64_t> column(&value, sizeof value, {});
  double number = 0.0;
  EXPECT_EQ(column.ReadNumber(0, ScaleCells({}), number), CellKind::Number);
  EXPECT_EQ(number, 0x1p53);
  EXPECT_EQ(textAt(column, 0), "9007199254740993");
}

TEST(NumberColumn, StepsOverStridesAtAnyAlignmentAndBackwards) {
  char bytes[1 + 3 * 12] = {};
  for (int i = 0; i < 3; ++i) {
    const double value = i + 0.5;
    std::memcpy(bytes + 1 + i * 12, &value, sizeof value);
  }
  const NumberColumn<double> forwards(bytes + 1, 12, {});
  EXPECT_EQ(numberAt(forwards, 2), "2.5");
  const NumberColumn<double> backwards(bytes + 1 + 24, -12, {});
  EXPECT_EQ(numberAt(backwards, 2), "0.5");
  const NumberColumn<double> same(bytes + 1, 0, {});
  EXPECT_EQ(numberAt(same, 2), "0.5");
}

TEST(NumberColumn, BitmapsAndMasksSayWhatIsMissing) {
  const float values[] = {1.0F, 2.0F, 3.0F};
  const std::uint8_t bits[] = {0b01000000, 0b1};
  const NumberColumn<float> byBits(values, sizeof(float), {bits, 6, nullptr});
  EXPECT_EQ(numberAt(byBits, 0), "1");
  EXPECT_EQ(numberAt(byBits, 1), "missing");
  EXPECT_EQ(numberAt(byBits, 2), "3");
  EXPECT_EQ(textAt(byBits, 1), "");
  const std::uint8_t mask[] = {1, 0, 1};
  const NumberColumn<float> byMask(values, sizeof(float), {nullptr, 0, mask});
  EXPECT_EQ(numberAt(byMask, 0), "missing");
  EXPECT_EQ(numberAt(byMask, 1), "2");
}

TEST(NumberColumn, NanIsMissingAndInfinityIsANumber) {
  const double values[] = {std::nan(""), std::numeric_limits<double>::infinity(), -0.0};
  const NumberColumn<double> column(values, sizeof(double), {});
  EXPECT_EQ(numberAt(column, 0), "missing");
  EXPECT_EQ(textAt(column, 0), "");
  EXPECT_EQ(numberAt(column, 1), "inf");
  EXPECT_EQ(textAt(column, 2), "0");
}

TEST(NumberColumn, AMissingTextThatIsANumberTakesItOut) {
  const double values[] = {-999.0, 999.0};
  const NumberColumn<double> column(values, sizeof(double), {});
  EXPECT_EQ(numberAt(column, 0, {"NA", "-999"}), "missing");
  EXPECT_EQ(numberAt(column, 1, {"NA", "-999"}), "999");
}

TEST(NumberColumn, FloatsAreWidenedAsTheyAre) {
  const float value = 0.1F;
  const NumberColumn<float> column(&value, sizeof value, {});
  EXPECT_EQ(textAt(column, 0), shortestNumber(static_cast<double>(0.1F)));
}

TEST(NumberColumn, ReadsEveryKindOfHalf) {
  EXPECT_EQ(halfToDouble(0x3C00), 1.0);
  EXPECT_EQ(halfToDouble(0xC100), -2.5);
  EXPECT_EQ(halfToDouble(0x7BFF), 65504.0);
  EXPECT_EQ(halfToDouble(0x0001), 0x1p-24);
  EXPECT_EQ(halfToDouble(0x03FF), 1023 * 0x1p-24);
  EXPECT_EQ(halfToDouble(0xFC00), -std::numeric_limits<double>::infinity());
  EXPECT_TRUE(std::isnan(halfToDouble(0x7E00)));
  const Half values[] = {{0x3800}, {0x7E00}};
  const NumberColumn<Half> column(values, sizeof(Half), {});
  EXPECT_EQ(numberAt(column, 0), "0.5");
  EXPECT_EQ(numberAt(column, 1), "missing");
}

TEST(TruthColumns, AreZeroAndOneAsNumbersAndWordsAsTexts) {
  const std::uint8_t bits[] = {0b00100000};
  const std::uint8_t valid[] = {0b0111};
  const TruthBitColumn packed(bits, 4, {valid, 0, nullptr});
  EXPECT_EQ(numberAt(packed, 0), "0");
  EXPECT_EQ(numberAt(packed, 1), "1");
  EXPECT_EQ(textAt(packed, 1), "true");
  EXPECT_EQ(textAt(packed, 2), "false");
  EXPECT_EQ(numberAt(packed, 3), "missing");
  EXPECT_EQ(textAt(packed, 3), "");
  const bool bytes[] = {true, true, false};
  const TruthByteColumn strided(bytes, 2, {});
  EXPECT_EQ(textAt(strided, 1), "false");
  EXPECT_EQ(numberAt(strided, 0, {"1"}), "missing");
}

TEST(DecimalColumn, IsWhatItsDecimalTextSays) {
  const std::int64_t values[] = {12345, -5, 0, -12345678};
  EXPECT_EQ(textAt(DecimalColumn(values, 8, 2, {}), 0), "123.45");
  EXPECT_EQ(textAt(DecimalColumn(values, 8, 2, {}), 1), "-0.05");
  EXPECT_EQ(numberAt(DecimalColumn(values, 8, 3, {}), 0), "12.345");
  EXPECT_EQ(textAt(DecimalColumn(values, 8, 0, {}), 3), "-12345678");
  EXPECT_EQ(textAt(DecimalColumn(values, 8, -2, {}), 1), "-500");
  EXPECT_EQ(textAt(DecimalColumn(values, 8, 2, {}), 2), "0.00");
  const std::int32_t narrow[] = {-7};
  EXPECT_EQ(textAt(DecimalColumn(narrow, 4, 1, {}), 0), "-0.7");
  const std::uint8_t none[] = {0};
  EXPECT_EQ(numberAt(DecimalColumn(narrow, 4, 1, {none, 0, nullptr}), 0), "missing");
}

TEST(DecimalColumn, ReadsSixteenBytesToTheirEnds) {
  const std::uint64_t least[] = {0, std::uint64_t{1} << 63};
  EXPECT_EQ(textAt(DecimalColumn(least, 16, 0, {}), 0), "-170141183460469231731687303715884105728");
}

}  // namespace
}  // namespace mcbin
