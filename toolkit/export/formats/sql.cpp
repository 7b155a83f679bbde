#include <fmt/format.h>
#include <fmt/ranges.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "toolkit/export/export_formats.h"
#include "toolkit/export/sql_text.h"
#include "toolkit/input/cells.h"
#include "toolkit/model/bin_lookup.h"

namespace mcbin {
namespace {

/// Writes the CASE of one attribute after the other.
class CaseWriter {
 public:
  CaseWriter(const Model& model, const ExportOptions& options)
      : model_(model), style_(options.style), dialect_(options.dialect) {}

  std::string Expression(const AttributeModel& attribute) {
    const std::string column = sqlIdentifier(attribute.name, dialect_);
    const std::string number = sqlAsNumber(column, dialect_);
    const BinLabels labels(model_, attribute, style_);
    sql_ = "  CASE\n";
    const std::string missing = Label(labels, {Placement::Kind::Missing, 0});
    AddMissing(column, number, missing);
    if (dialect_ == SqlDialect::Sqlite) AddInfinite(column, attribute, labels);
    AddUserMissing(number, attribute.missing, Label(labels, {Placement::Kind::UserMissing, 0}));
    const char* const sign = model_.closedSide == ClosedSide::Right ? "<=" : "<";
    for (std::size_t bin = 0; bin < attribute.cutPoints.size(); ++bin) {
      AddWhen(fmt::format("{} {} {}", number, sign, Number(attribute.cutPoints[bin])),
              Label(labels, {Placement::Kind::Bin, bin}));
    }
    return sql_ + fmt::format(
                      "    ELSE {}\n  END AS {}",
                      Label(labels, {Placement::Kind::Bin, attribute.cutPoints.size()}),
                      sqlIdentifier(labelColumns(attribute.name, style_, false).front(), dialect_));
  }

 private:
  std::string Number(double value) const { return sqlNumber(value, dialect_); }

  std::string Label(const BinLabels& labels, const Placement& placement) const {
    const std::string& label = labels.Of(placement).front();
    if (style_ == LabelStyle::Interval) return sqlText(label, dialect_);
    double evidence = 0.0;
    if (style_ == LabelStyle::Evidence) readNumber(label, evidence);
    return style_ == LabelStyle::Evidence ? Number(evidence) : label;
  }

  void AddWhen(const std::string& test, const std::string& label) {
    sql_ += fmt::format("    WHEN {} THEN {}\n", test, label);
  }

  /// Columns of texts (a CSV file that a database imported) are compared as numbers too, and what
  /// apply reads as missing is missing. Texts go first: what is no number is not cast.
  void AddMissing(const std::string& column, const std::string& number, const std::string& label) {
    std::string texts = "''";
    std::vector<std::string> numbers;
    for (const std::string& text : model_.options.naTexts) {
      texts += ", " + sqlText(text, dialect_);
      double value = 0.0;
      if (readNumber(text, value) == NumberReading::Number) numbers.push_back(Number(value));
    }
    AddWhen(fmt::format("{} IS NULL OR {} IN ({})", column, sqlTrimmed(column, dialect_), texts),
            label);
    if (!numbers.empty()) {
      AddWhen(fmt::format("{} IN ({})", number, fmt::join(numbers, ", ")), label);
    }
  }

  /// SQLite casts the texts of infinity to 0.
  void AddInfinite(const std::string& column, const AttributeModel& attribute,
                   const BinLabels& labels) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const std::string text = fmt::format("LOWER({})", sqlTrimmed(column, dialect_));
    for (const auto& [texts, value] :
         {std::pair{"'inf', '+inf', 'infinity', '+infinity'", kInfinity},
          std::pair{"'-inf', '-infinity'", -kInfinity}}) {
      AddWhen(fmt::format("{} IN ({})", text, texts),
              Label(labels, place(attribute, model_.closedSide, value)));
    }
  }

  void AddUserMissing(const std::string& number, const MissingRules& missing,
                      const std::string& label) {
    std::vector<std::string> values;
    for (const double value : missing.values) values.push_back(Number(value));
    std::vector<std::string> tests;
    if (!values.empty()) {
      tests.push_back(fmt::format("{} IN ({})", number, fmt::join(values, ", ")));
    }
    if (missing.range) tests.push_back(RangeTest(number, *missing.range));
    if (!tests.empty()) AddWhen(fmt::format("{}", fmt::join(tests, " OR ")), label);
  }

  /// Without the ends that are open: not every dialect has infinite numbers.
  std::string RangeTest(const std::string& number, const std::pair<double, double>& range) const {
    const bool isFromBelow = range.first == -std::numeric_limits<double>::infinity();
    const bool isToAbove = range.second == std::numeric_limits<double>::infinity();
    if (isFromBelow && isToAbove) return number + " IS NOT NULL";
    if (isFromBelow) return fmt::format("{} <= {}", number, Number(range.second));
    if (isToAbove) return fmt::format("{} >= {}", number, Number(range.first));
    return fmt::format("{} BETWEEN {} AND {}", number, Number(range.first), Number(range.second));
  }

  const Model& model_;
  LabelStyle style_;
  SqlDialect dialect_;
  std::string sql_;
};

}  // namespace

/// One CASE expression per attribute, named as its label columns are and separated by commas, to be
/// put into a SELECT; with a table the whole SELECT over it. A value is tested for missing first,
/// then for user-missing, then against the cut points in ascending order. The columns hold numbers
/// or, as text, what apply takes for numbers or missing: a text that it would refuse is not told
/// apart.
std::string sqlExport(const Model& model, const ExportOptions& options) {
  const std::optional<std::string>& table = options.table;
  CaseWriter writer(model, options);
  std::string sql = table ? "SELECT *" : "";
  const char* separator = table ? ",\n" : "";
  for (const AttributeModel& attribute : model.attributes) {
    sql += separator + writer.Expression(attribute);
    separator = ",\n";
  }
  if (table) sql += "\nFROM " + sqlTableName(*table, options.dialect) + ";";
  return sql + "\n";
}

}  // namespace mcbin
