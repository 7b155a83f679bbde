#include "toolkit/input/column_names.h"

#include <gtest/gtest.h>

#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"

namespace mcbin {
namespace {

using testing::messageOf;
using Names = std::vector<std::string>;

TEST(ColumnNames, EmptyNamesAreNumbered) {
  EXPECT_EQ(namesFromHeader({"a", "", " b ", " "}, "f"), (Names{"a", "column_2", "b", "column_4"}));
  EXPECT_EQ(numberedNames(2), (Names{"column_1", "column_2"}));
}

TEST(ColumnNames, ARepeatedNameNamesBothColumns) {
  EXPECT_EQ(messageOf<DataError>([] {
              namesFromHeader({"a", "b", "a"}, "f.csv");
            }),
            "f.csv: columns 1 and 3 are both named 'a': rename one of them");
}

TEST(ColumnNames, ANameMustBeUtf8) {
  EXPECT_EQ(messageOf<DataError>([] {
              namesFromHeader({"a", "caf\xE9"}, "f.csv");
            }),
            "f.csv: the name of column 2 is not UTF-8 text: convert the file (iconv -f LATIN1 -t "
            "UTF-8)");
}

TEST(ColumnNames, KnowsUtf8) {
  for (const char* good : {"", "abc", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80",
                           "\xED\x9F\xBF", "\xF4\x8F\xBF\xBF", "\xE0\xA0\x80"}) {
    EXPECT_TRUE(isUtf8(good)) << good;
  }
  // Stray continuation, overlong forms, surrogates, beyond U+10FFFF, cut short.
  for (const char* bad :
       {"\x80", "\xC0\xAF", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF0\x8F\xBF\xBF",
        "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xC3", "\xE2\x82", "\xC3(", "\xFF"}) {
    EXPECT_FALSE(isUtf8(bad)) << bad;
  }
}

}  // namespace
}  // namespace mcbin
