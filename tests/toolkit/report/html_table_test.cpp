#include "toolkit/report/html_table.h"

#include <gtest/gtest.h>

#include <utility>

namespace mcbin {
namespace {

TextTable exampleTable() {
  TextTable table({"#", "na<me", "n"});
  table.SetAlign(0, TextTable::Align::Right);
  table.SetAlign(1, TextTable::Align::Left);
  table.AddRow({"1", "\"x\"", "5"});
  return table;
}

TEST(HtmlTable, TheSecondColumnHeadsTheRows) {
  Markup html;
  addTable(html, exampleTable(), "Bins of <x>");
  EXPECT_EQ(std::move(html).Take(),
            "<div class=\"wide\" tabindex=\"0\" role=\"region\" aria-label=\"Bins of &lt;x&gt;\">"
            "<table>\n"
            "<thead><tr><th scope=\"col\" class=\"right\"><span>#</span></th>"
            "<th scope=\"col\" class=\"left\"><span>na&lt;me</span></th>"
            "<th scope=\"col\" class=\"right\"><span>n</span></th></tr></thead>\n"
            "<tbody>\n"
            "<tr><td class=\"right\"><span>1</span></td>"
            "<th scope=\"row\" class=\"left\"><span>&quot;x&quot;</span></th>"
            "<td class=\"right\"><span>5</span></td></tr>\n"
            "</tbody></table></div>\n");
}

TEST(HtmlTable, ACellCanBeWrittenByTheCaller) {
  Markup html;
  addTable(html, exampleTable(), "t", [](Markup& cell, std::size_t row, std::size_t column) {
    if (row != 1 || column != 2) return false;
    cell.Element("b", "five");
    return true;
  });
  const std::string text = std::move(html).Take();
  EXPECT_NE(text.find("<td class=\"right\"><span><b>five</b></span></td>"), std::string::npos);
  EXPECT_NE(text.find("<td class=\"right\"><span>1</span></td>"), std::string::npos);
}

}  // namespace
}  // namespace mcbin
