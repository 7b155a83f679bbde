#include <fmt/format.h>

#include <string>
#include <vector>

#include "toolkit/export/export_formats.h"
#include "toolkit/export/sql_text.h"
#include "toolkit/input/cells.h"
#include "toolkit/model/bin_lookup.h"

namespace mcbin {
namespace {

std::string labelText(const BinLabels& labels, const Placement& placement, LabelStyle style) {
  const std::string& label = labels.Of(placement).front();
  if (style == LabelStyle::Interval) return sqlText(label);
  double evidence = 0.0;
  if (style == LabelStyle::Evidence) readNumber(label, evidence);
  return style == LabelStyle::Evidence ? sqlNumber(evidence) : label;
}

/// Columns of texts (a CSV file that a database imported) are compared as numbers too, and what
/// apply reads as missing is missing.
std::string missingTest(const std::string& column, const std::string& number,
                        const std::vector<std::string>& naTexts) {
  std::string texts = "''";
  std::string numbers;
  for (const std::string& text : naTexts) {
    texts += ", " + sqlText(text);
    double value = 0.0;
    if (readNumber(text, value) != NumberReading::Number) continue;
    numbers += (numbers.empty() ? "" : ", ") + sqlNumber(value);
  }
  const std::string test =
      fmt::format("{0} IS NULL OR TRIM(CAST({0} AS VARCHAR)) IN ({1})", column, texts);
  return numbers.empty() ? test : fmt::format("{} OR {} IN ({})", test, number, numbers);
}

std::string userMissingTest(const std::string& column, const MissingRules& missing) {
  std::string test;
  if (!missing.values.empty()) {
    const char* separator = "";
    for (const double value : missing.values) {
      test += separator + sqlNumber(value);
      separator = ", ";
    }
    test = column + " IN (" + test + ")";
  }
  if (missing.range) {
    test += fmt::format("{}{} BETWEEN {} AND {}", test.empty() ? "" : " OR ", column,
                        sqlNumber(missing.range->first), sqlNumber(missing.range->second));
  }
  return test;
}

std::string caseExpression(const AttributeModel& attribute, const Model& model, LabelStyle style) {
  const ClosedSide side = model.closedSide;
  const std::string column = sqlIdentifier(attribute.name);
  const std::string number = fmt::format("CAST({} AS DOUBLE PRECISION)", column);
  const BinLabels labels(model, attribute, style);
  std::string sql = "  CASE\n";
  sql += fmt::format("    WHEN {} THEN {}\n", missingTest(column, number, model.options.naTexts),
                     labelText(labels, {Placement::Kind::Missing, 0}, style));
  const std::string userMissing = userMissingTest(number, attribute.missing);
  if (!userMissing.empty()) {
    sql += fmt::format("    WHEN {} THEN {}\n", userMissing,
                       labelText(labels, {Placement::Kind::UserMissing, 0}, style));
  }
  for (std::size_t bin = 0; bin < attribute.cutPoints.size(); ++bin) {
    sql += fmt::format("    WHEN {} {} {} THEN {}\n", number,
                       side == ClosedSide::Right ? "<=" : "<", sqlNumber(attribute.cutPoints[bin]),
                       labelText(labels, {Placement::Kind::Bin, bin}, style));
  }
  sql += fmt::format("    ELSE {}\n  END AS {}",
                     labelText(labels, {Placement::Kind::Bin, attribute.cutPoints.size()}, style),
                     sqlIdentifier(labelColumns(attribute.name, style, false).front()));
  return sql;
}

}  // namespace

/// One CASE expression per attribute, named as its label columns are and separated by commas, to be
/// put into a SELECT; with a table the whole SELECT over it. A value is tested for missing first,
/// then for user-missing, then against the cut points in ascending order. The columns hold numbers
/// or, as text, what apply takes for numbers or missing: a text that it would refuse is not told
/// apart.
std::string sqlExport(const Model& model, const ExportOptions& options) {
  const std::optional<std::string>& table = options.table;
  std::string sql = table ? "SELECT *" : "";
  const char* separator = table ? ",\n" : "";
  for (const AttributeModel& attribute : model.attributes) {
    sql += separator + caseExpression(attribute, model, options.style);
    separator = ",\n";
  }
  if (table) sql += "\nFROM " + sqlTableName(*table) + ";";
  return sql + "\n";
}

}  // namespace mcbin
