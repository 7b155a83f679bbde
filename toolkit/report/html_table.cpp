#include "toolkit/report/html_table.h"

namespace mcbin {
namespace {

constexpr std::size_t kRowHeaderColumn = 1;

const char* alignStyle(const TextTable& table, std::size_t column) {
  return table.AlignOf(column) == TextTable::Align::Left ? "left" : "right";
}

void addHeader(Markup& html, const TextTable& table) {
  const std::vector<std::string>& cells = table.Rows().front();
  html.Open("thead").Open("tr");
  for (std::size_t column = 0; column < cells.size(); ++column) {
    html.Open("th", {{"scope", "col"}, {"class", alignStyle(table, column)}});
    html.Element("span", cells[column]).Close();
  }
  html.Close().Close().LineEnd();
}

void addRow(Markup& html, const TextTable& table, std::size_t row, const CellWriter& writeCell) {
  const std::vector<std::string>& cells = table.Rows()[row];
  html.Open("tr");
  for (std::size_t column = 0; column < cells.size(); ++column) {
    if (column == kRowHeaderColumn) {
      html.Open("th", {{"scope", "row"}, {"class", alignStyle(table, column)}});
    } else {
      html.Open("td", {{"class", alignStyle(table, column)}});
    }
    html.Open("span");
    if (!writeCell || !writeCell(html, row, column)) html.Text(cells[column]);
    html.Close().Close();
  }
  html.Close().LineEnd();
}

}  // namespace

void addTable(Markup& html, const TextTable& table, const std::string& name,
              const CellWriter& writeCell) {
  html.Open("div",
            {{"class", "wide"}, {"tabindex", "0"}, {"role", "region"}, {"aria-label", name}});
  html.Open("table").LineEnd();
  addHeader(html, table);
  html.Open("tbody").LineEnd();
  for (std::size_t row = 1; row < table.Rows().size(); ++row) addRow(html, table, row, writeCell);
  html.Close().Close().Close().LineEnd();
}

}  // namespace mcbin
