#include <fmt/format.h>

#include "toolkit/export/export_formats.h"
#include "toolkit/export/sql_text.h"
#include "toolkit/model/bin_lookup.h"

namespace mcbin {
namespace {

std::string labelText(const BinLabels& labels, const Placement& placement, LabelStyle style) {
  const std::string& label = labels.Of(placement).front();
  return style == LabelStyle::Index ? label : sqlText(label);
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

std::string caseExpression(const AttributeModel& attribute, ClosedSide side, LabelStyle style) {
  const std::string column = sqlIdentifier(attribute.name);
  const BinLabels labels(attribute, side, style);
  std::string sql = "  CASE\n";
  sql += fmt::format("    WHEN {} IS NULL THEN {}\n", column,
                     labelText(labels, {Placement::Kind::Missing, 0}, style));
  const std::string userMissing = userMissingTest(column, attribute.missing);
  if (!userMissing.empty()) {
    sql += fmt::format("    WHEN {} THEN {}\n", userMissing,
                       labelText(labels, {Placement::Kind::UserMissing, 0}, style));
  }
  for (std::size_t bin = 0; bin < attribute.cutPoints.size(); ++bin) {
    sql += fmt::format("    WHEN {} {} {} THEN {}\n", column,
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
/// then for user-missing, then against the cut points in ascending order. The columns must hold
/// numbers or NULL.
std::string sqlExport(const Model& model, const ExportOptions& options) {
  const std::optional<std::string>& table = options.table;
  std::string sql = table ? "SELECT *" : "";
  const char* separator = table ? ",\n" : "";
  for (const AttributeModel& attribute : model.attributes) {
    sql += separator + caseExpression(attribute, model.closedSide, options.style);
    separator = ",\n";
  }
  if (table) sql += "\nFROM " + sqlIdentifier(*table) + ";";
  return sql + "\n";
}

}  // namespace mcbin
