#include "toolkit/text/csv_text.h"

#include <gtest/gtest.h>

namespace {

std::string lineOf(std::initializer_list<const char*> cells, char delimiter) {
  std::string line;
  bool first = true;
  for (const char* cell : cells) {
    mcbin::appendCsvCell(line, cell, delimiter, first);
    first = false;
  }
  return line;
}

TEST(CsvTextTest, PlainCellsStayAsTheyAre) {
  EXPECT_EQ(lineOf({"a", "", "1.5", "b c"}, ','), "a,,1.5,b c");
}

TEST(CsvTextTest, AnEmptyFirstCellStillCounts) { EXPECT_EQ(lineOf({"", "", "x"}, ','), ",,x"); }

TEST(CsvTextTest, CellsThatReadDifferentlyAreQuoted) {
  EXPECT_EQ(lineOf({"a,b", "say \"x\"", "two\nlines", "cr\r", " lead", "trail "}, ','),
            "\"a,b\",\"say \"\"x\"\"\",\"two\nlines\",\"cr\r\",\" lead\",\"trail \"");
}

TEST(CsvTextTest, OnlyTheDelimiterInUseIsSpecial) {
  EXPECT_EQ(lineOf({"a,b", "c\td"}, '\t'), "a,b\t\"c\td\"");
}

}  // namespace
