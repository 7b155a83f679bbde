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

}  // namespace
}  // namespace mcbin
