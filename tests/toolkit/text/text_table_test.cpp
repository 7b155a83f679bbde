#include "toolkit/text/text_table.h"

#include <gtest/gtest.h>

namespace mcbin {
namespace {

TEST(TextTable, AlignsColumnsByCharacters) {
  TextTable table({"name", "n", "text"});
  table.SetAlign(2, TextTable::Align::Left);
  table.AddRow({"café", "1", "a"});
  table.AddRow({"b", "12345"});
  EXPECT_EQ(table.Text(1),
            " name      n  text\n"
            " ----  -----  ----\n"
            " café      1  a\n"
            " b     12345\n");
}

}  // namespace
}  // namespace mcbin
