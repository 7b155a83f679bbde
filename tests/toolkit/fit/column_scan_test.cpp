#include "toolkit/fit/column_scan.h"

#include <gtest/gtest.h>

#include "tests/toolkit/support/memory_table.h"
#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"
#include "toolkit/fit/text_cases.h"

namespace mcbin {
namespace {

using testing::MemoryTable;
using testing::messageOf;

TableScan scan(MemoryTable& table, const ScanRequest& request) {
  Monitor monitor;
  TextCases cases(table, request.naTexts);
  return scanTable(cases, request, monitor);
}

TEST(ColumnScan, NotesTheFirstNumberTextAndOverflow) {
  MemoryTable table({"a", "b"}, {{"NA", "1"}, {"x", ""}, {" 5 ", "1e999"}, {"y", "2"}});
  const TableScan seen = scan(table, {{ScanAs::Cells, ScanAs::Cells}, {"NA"}, {}});
  EXPECT_EQ(seen.rows, 4U);
  ASSERT_TRUE(seen.columns[0].firstText && seen.columns[0].firstNumber);
  EXPECT_EQ(seen.columns[0].firstText->text, "x");
  EXPECT_EQ(seen.columns[0].firstText->where, "table, line 2");
  EXPECT_EQ(seen.columns[0].firstNumber->text, "5");
  EXPECT_FALSE(seen.columns[0].firstOutOfRange);
  ASSERT_TRUE(seen.columns[1].firstOutOfRange);
  EXPECT_EQ(seen.columns[1].firstOutOfRange->where, "table, line 3");
}

TEST(ColumnScan, CategoriesAreSortedAndMissingOnesLeftOut) {
  MemoryTable table({"t"}, {{"b"}, {"?"}, {" a "}, {"b"}, {"u"}, {""}, {"c"}, {"u"}});
  const TableScan seen = scan(table, {{ScanAs::Target}, {"?"}, {"u"}});
  EXPECT_EQ(seen.categories, (std::vector<std::string>{"a", "b", "c"}));
}

TEST(ColumnScan, ANumberIsDeclaredMissingInEverySpelling) {
  MemoryTable table({"t"}, {{"1"}, {"9.0"}, {"2.0"}, {"9"}, {"2"}});
  const TableScan seen = scan(table, {{ScanAs::Target}, {}, {"9"}});
  EXPECT_EQ(seen.categories, (std::vector<std::string>{"1", "2"}));
  EXPECT_EQ(seen.codes.at("2.0"), 1);
}

TEST(ColumnScan, TheColumnsOfNoInterestAreNotLookedAt) {
  MemoryTable table({"a"}, {{"x"}, {"1"}});
  const TableScan seen = scan(table, {{ScanAs::Nothing}, {}, {}});
  EXPECT_FALSE(seen.columns[0].firstText || seen.columns[0].firstNumber);
}

TEST(ColumnScan, TakesTwoHundredAndFiftySixCategoriesAndNoMore) {
  std::vector<std::vector<std::string>> rows;
  for (int i = 0; i < 256; ++i) rows.push_back({"c" + std::to_string(i)});
  MemoryTable full({"t"}, rows);
  EXPECT_EQ(scan(full, {{ScanAs::Target}, {}, {}}).categories.size(), 256U);
  rows.push_back({"more"});
  MemoryTable over({"t"}, rows);
  EXPECT_EQ(messageOf<DataError>([&] {
              scan(over, {{ScanAs::Target}, {}, {}});
            }),
            "table, line 257: the target t has more than 256 categories: 'more' is one too many; "
            "is it really a class? (--missing t=TEXT and --na take texts out)");
}

TEST(ColumnScan, ACategoryMustBeUtf8) {
  MemoryTable table({"t"}, {{"caf\xE9"}});
  EXPECT_EQ(messageOf<DataError>([&] {
              scan(table, {{ScanAs::Target}, {}, {}});
            }),
            "table, line 1: the category in column t is not UTF-8 text: convert the file (iconv -f "
            "LATIN1 -t UTF-8)");
}

}  // namespace
}  // namespace mcbin
