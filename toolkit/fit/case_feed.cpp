#include "toolkit/fit/case_feed.h"

#include <fmt/format.h>
#include <mccomvor/missing_value.h>

#include <cerrno>
#include <cmath>

#include "toolkit/errors.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

constexpr double kMissingCategory = -1.0;

int sizeOf(const FeedLayout& layout) {
  return static_cast<int>(layout.attributeColumns.size()) + (layout.targetColumn ? 1 : 0) +
         (layout.weightColumn ? 1 : 0);
}

void add(WeightedCounts& counts, int code, double weight) {
  counts.weight += weight;
  if (code >= 0) counts.classWeights[static_cast<std::size_t>(code)] += weight;
}

}  // namespace

void failWeightOverflow(const CaseSource& cases, std::size_t column) {
  throw DataError(
      fmt::format("{}: the weights in column {} add up to more than a number can hold: "
                  "divide them all by the same large number",
                  cases.Where(), excerpt(cases.ColumnNames()[column])));
}

CaseFeed::CaseFeed(CaseSource& source, const std::vector<ColumnPlan>& columns,
                   const FeedLayout& layout, const TableScan& scan,
                   const std::vector<std::string>& naTexts, WeightRounding rounding, bool isTimed)
    : source_(source),
      layout_(layout),
      reader_(source, columns, layout, scan, naTexts, rounding),
      record_(sizeOf(layout)),
      isTimed_(isTimed),
      classWeights_(scan.categories.size(), 0.0) {
  const WeightedCounts none{0.0, classWeights_};
  missing_.assign(layout.attributeColumns.size(), none);
  userMissing_ = missing_;
  for (const std::size_t column : layout.attributeColumns) {
    std::optional<Given>& given = given_.emplace_back();
    if (!columns[column].cutPoints) continue;
    AttributeModel attribute;
    attribute.name = columns[column].name;
    attribute.missing = columns[column].missing;
    attribute.cutPoints = *columns[column].cutPoints;
    attribute.cutsGiven = true;
    given = Given{withoutCases(attribute, classWeights_.size()), {}};
  }
}

bool CaseFeed::HasNext() {
  if (atEnd_ || caseIsReady_) return !atEnd_;
  // The library asks for the case next, so the two calls are timed as one.
  if (isTimed_) started_ = Clock::now();
  try {
    caseIsReady_ = source_.NextCase();
  } catch (...) {
    failure_ = std::current_exception();
  }
  atEnd_ = !caseIsReady_;
  if (atEnd_ && isTimed_) timeSpent_ += Clock::now() - started_;
  errno = 0;  // what is set from here on is the library's doing
  return caseIsReady_;
}

const MCCommon::Record* CaseFeed::Next() {
  caseIsReady_ = false;
  try {
    FillRecord();
  } catch (...) {
    failure_ = std::current_exception();
    atEnd_ = true;
  }
  if (isTimed_) timeSpent_ += Clock::now() - started_;
  return failure_ ? nullptr : &record_;
}

void CaseFeed::RethrowFailure() const {
  if (failure_) std::rethrow_exception(failure_);
}

void CaseFeed::FillRecord() {
  ++cases_.read;
  int cell = 0;
  const int code = reader_.TargetCode();
  if (layout_.targetColumn) record_[cell++] = code < 0 ? kMissingCategory : code;
  double weight = reader_.RoundedWeight();
  if (layout_.weightColumn) {
    record_[cell++] = reader_.Value(*layout_.weightColumn).value_or(MCMV::gMissingValue);
  }
  const bool isUsed = weight != MCMV::gMissingValue;
  ++(isUsed ? cases_.used : cases_.droppedForWeight);
  if (!isUsed) weight = 0.0;
  totalWeight_ += weight;
  if (std::isinf(totalWeight_)) failWeightOverflow(source_, *layout_.weightColumn);
  if (code >= 0) classWeights_[static_cast<std::size_t>(code)] += weight;
  if (layout_.targetColumn && code < 0) targetMissingWeight_ += weight;
  for (std::size_t a = 0; a < layout_.attributeColumns.size(); ++a) {
    FillAttribute(a, code, weight);
  }
}

void CaseFeed::FillAttribute(std::size_t attribute, int code, double weight) {
  const std::size_t column = layout_.attributeColumns[attribute];
  bool isDeclared = false;
  const std::optional<double> value = reader_.Value(column, isDeclared);
  const std::size_t cell =
      attribute + (layout_.targetColumn ? 1 : 0) + (layout_.weightColumn ? 1 : 0);
  std::optional<Given>& given = given_[attribute];
  record_[static_cast<int>(cell)] =
      given ? MCMV::gMissingValue : value.value_or(MCMV::gMissingValue);
  if (layout_.targetColumn && code < 0) return;
  if (given) {
    if (weight > 0.0) Count(*given, value, code, weight);
    return;
  }
  if (!value) add(missing_[attribute], code, weight);
  if (isDeclared) add(userMissing_[attribute], code, weight);
}

void CaseFeed::Count(Given& given, std::optional<double> value, int code, double weight) const {
  const auto known = code < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(code));
  const Placement placement = countCase(given.counted, layout_.closedSide, value, known, weight);
  if (placement.kind == Placement::Kind::Bin) given.values.Add(*value);
}

const WeightedCounts& CaseFeed::MissingCases(std::size_t attribute) const {
  return missing_[attribute];
}

const WeightedCounts& CaseFeed::UserMissingCases(std::size_t attribute) const {
  return userMissing_[attribute];
}

std::optional<AttributeModel> CaseFeed::GivenAttribute(std::size_t attribute) {
  if (!given_[attribute]) return std::nullopt;
  Given& given = *given_[attribute];
  given.counted.distinctValues = static_cast<std::uint32_t>(given.values.Count());
  given.counted.totalWeightWithMissing = totalWeight_;
  return given.counted;
}

}  // namespace mcbin
