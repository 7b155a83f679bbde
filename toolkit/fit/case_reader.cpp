#include "toolkit/fit/case_reader.h"

#include <fmt/format.h>
#include <mccomvor/missing_value.h>

#include <utility>

#include "toolkit/errors.h"
#include "toolkit/input/cells.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

IBINVariable::BINWRoundingOption roundingOption(WeightRounding rounding) {
  return rounding == WeightRounding::Truncate ? IBINVariable::TruncateToSmallerInt
                                              : IBINVariable::RoundToClosestInt;
}

}  // namespace

CaseReader::CaseReader(CaseSource& source, const std::vector<ColumnPlan>& columns,
                       const FeedLayout& layout, const TableScan& scan,
                       const std::vector<std::string>& naTexts, WeightRounding rounding)
    : source_(source),
      columns_(columns),
      layout_(layout),
      codes_(scan.codes),
      naTexts_(naTexts),
      weightEncoder_(roundingOption(rounding)),
      declared_(columns.begin(), columns.end()) {}

int CaseReader::TargetCode() {
  if (!layout_.targetColumn) return -1;
  const std::size_t column = *layout_.targetColumn;
  const std::string_view category =
      categoryOf(source_.ReadText(column), naTexts_, columns_[column].missingTexts);
  if (category.empty()) {
    declared_[column].Meet(trimmed(source_.ReadText(column)));
    return -1;
  }
  const auto code = codes_.find(category);
  if (code == codes_.end()) FailChanged(column);
  return code->second;
}

double CaseReader::RoundedWeight() {
  if (!layout_.weightColumn) return 1.0;
  bool isDeclared = false;
  const std::optional<double> weight = Value(*layout_.weightColumn, isDeclared);
  return weight && !isDeclared ? weightEncoder_.Encode(*weight) : MCMV::gMissingValue;
}

std::optional<double> CaseReader::Value(std::size_t column) {
  double value = 0.0;
  switch (source_.ReadNumber(column, value)) {
    case CellKind::Missing:
      return std::nullopt;
    case CellKind::Number:
      break;
    default:
      FailChanged(column);
  }
  if (value == MCMV::gMissingValue) {
    throw DataError(fmt::format(
        "{}: {} in column {} is the number that stands for a missing "
        "value inside the library: name it with --na if it is missing",
        source_.Where(), quotedExcerpt(source_.ReadText(column)), excerpt(columns_[column].name)));
  }
  return value;
}

std::optional<double> CaseReader::Value(std::size_t column, bool& isDeclared) {
  const std::optional<double> value = Value(column);
  isDeclared = value && columns_[column].missing.Contains(*value);
  if (isDeclared) declared_[column].Meet(*value);
  return value;
}

Notes CaseReader::NeverMet() const {
  Notes notes;
  for (std::size_t column = 0; column < declared_.size(); ++column) {
    if (columns_[column].use == ColumnUse::LeftOut) continue;
    for (auto& [position, note] : declared_[column].NeverMet()) {
      notes.emplace(std::pair(column, position), note);
    }
  }
  return notes;
}

void CaseReader::FailChanged(std::size_t column) const {
  throw DataError(fmt::format("{}: column {} changed while the data were read: run it again",
                              source_.Where(), excerpt(columns_[column].name)));
}

}  // namespace mcbin
