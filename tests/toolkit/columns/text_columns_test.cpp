#include "toolkit/columns/text_columns.h"

#include <gtest/gtest.h>

#include <optional>

#include "toolkit/columns/number_columns.h"

namespace mcbin {
namespace {

std::string textAt(const Column& column, std::size_t row) {
  std::string buffer;
  return std::string(column.ReadText(row, buffer));
}

std::optional<double> numberAt(const Column& column, std::size_t row) {
  double value = 0.0;
  const CellKind kind = column.ReadNumber(row, ScaleCells({"NA"}), value);
  if (kind == CellKind::Number) return value;
  return std::nullopt;
}

template <class Offset>
void readTexts() {
  const Offset offsets[] = {0, 3, 3, 5, 8};
  const std::uint8_t valid[] = {0b0111};
  const TextColumn<Offset> column(offsets, "abcNA1.5", {valid, 0, nullptr});
  EXPECT_EQ(textAt(column, 0), "abc");
  EXPECT_EQ(textAt(column, 1), "");
  EXPECT_EQ(textAt(column, 2), "NA");
  EXPECT_EQ(textAt(column, 3), "");
  double value = 0.0;
  EXPECT_EQ(column.ReadNumber(0, ScaleCells({"NA"}), value), CellKind::Text);
  EXPECT_EQ(column.ReadNumber(2, ScaleCells({"NA"}), value), CellKind::Missing);
  EXPECT_EQ(column.ReadNumber(3, ScaleCells({"NA"}), value), CellKind::Missing);
  EXPECT_EQ(numberAt(TextColumn<Offset>(offsets, "abcNA1.5", {}), 3), 1.5);
}

TEST(TextColumn, ReadsShortAndLongOffsets) {
  readTexts<std::int32_t>();
  readTexts<std::int64_t>();
}

TEST(TextViewColumn, ReadsTextsInsideAndOutsideTheirViews) {
  struct View {
    std::int32_t length;
    char start[4];
    std::int32_t buffer;
    std::int32_t offset;
  };
  View views[2] = {{3, {'a', 'b', 'c'}, 0, 0}, {13, {'t', 'w', 'e', 'l'}, 1, 2}};
  const char* const buffers[] = {"unused", "--twelve and 1--"};
  const TextViewColumn column(views, reinterpret_cast<const void* const*>(buffers), {});
  EXPECT_EQ(textAt(column, 0), "abc");
  EXPECT_EQ(textAt(column, 1), "twelve and 1-");
}

TEST(DictionaryColumn, LooksItsValuesUp) {
  const std::int32_t offsets[] = {0, 1, 4};
  const auto values = std::make_shared<TextColumn<std::int32_t>>(offsets, "x2.5", Validity());
  const std::int8_t codes[] = {1, 0, -1, 2, 1};
  const std::uint8_t valid[] = {0b01111};
  const DictionaryColumn<std::int8_t> column(codes, 1, {valid, 0, nullptr}, values, 2);
  EXPECT_EQ(numberAt(column, 0), 2.5);
  EXPECT_EQ(textAt(column, 1), "x");
  EXPECT_EQ(textAt(column, 2), "");
  EXPECT_EQ(textAt(column, 3), "");
  EXPECT_EQ(textAt(column, 4), "");
  EXPECT_EQ(numberAt(column, 4), std::nullopt);
  const std::int64_t wide[] = {-1, 9, 0, 7};
  EXPECT_EQ(textAt(DictionaryColumn<std::int64_t>(wide, 16, {}, values, 2), 1), "x");
}

TEST(MissingColumn, HasNothing) {
  EXPECT_EQ(textAt(MissingColumn(), 5), "");
  EXPECT_EQ(numberAt(MissingColumn(), 5), std::nullopt);
}

}  // namespace
}  // namespace mcbin
