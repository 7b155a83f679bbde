#include "rounds/question_cells.h"

#include <mccomvor/missing_value.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>
#include <iterator>

#include "mcbinning/user_missing.h"
#include "rounds/answer.h"
#include "status/status_codes.h"

namespace MCBinning {
namespace {

/// The borders of all ranges together.
std::vector<double> bordersOf(const std::vector<BINValueRange>& ranges) {
  std::vector<double> borders;
  for (const BINValueRange& range : ranges) {
    if (borders.empty() || borders.back() != range.low) {
      borders.push_back(range.low);
    }
    borders.push_back(range.high);
  }
  return borders;
}

bool ascendStrictly(const std::vector<double>& borders) {
  // Not "is greater or equal", so that a NaN is noticed, too.
  const auto descent = std::adjacent_find(
      borders.begin(), borders.end(), [](double left, double right) { return !(left < right); });
  return descent == borders.end() && (borders.empty() || borders[0] == borders[0]);
}

void addTo(std::vector<double>& sums, const std::vector<double>& part) {
  std::transform(part.begin(), part.end(), sums.begin(), sums.begin(), std::plus<>());
}

/// What has grown from `before` elements is merged each time it doubles, so that values which occur
/// often take no more memory than they must.
void mergeWhenDoubled(std::size_t before, std::vector<BINValueWeight>& values) {
  if (std::bit_width(before) != std::bit_width(values.size())) {
    mergeValueWeights(values);
  }
}

bool fit(const BINAttributeAnswer& left, const BINAttributeAnswer& right) {
  return left.cellWeights.size() == right.cellWeights.size() &&
         left.missingWeights.size() == right.missingWeights.size() &&
         left.userMissingWeights.size() == right.userMissingWeights.size();
}

void addAttribute(const BINAttributeAnswer& part, BINAttributeAnswer& answer) {
  addTo(answer.cellWeights, part.cellWeights);
  addTo(answer.missingWeights, part.missingWeights);
  addTo(answer.userMissingWeights, part.userMissingWeights);
  answer.minimum = std::min(answer.minimum, part.minimum);
  answer.maximum = std::max(answer.maximum, part.maximum);
  const std::size_t valuesBefore = answer.values.size();
  answer.values.reserve(valuesBefore + part.values.size());  // `part` may be `answer`
  std::copy_n(part.values.begin(), part.values.size(), std::back_inserter(answer.values));
  mergeWhenDoubled(valuesBefore, answer.values);
}

}  // namespace

bool doesAscend(const BINRoundQuestion& question) {
  return std::all_of(question.attributes.begin(), question.attributes.end(),
                     [](const BINAttributeQuestion& attribute) {
                       return ascendStrictly(attribute.borders) &&
                              ascendStrictly(bordersOf(attribute.ranges));
                     });
}

bool addAnswer(const BINRoundAnswer& part, BINRoundAnswer& answer) {
  if (part.classWeights.size() != answer.classWeights.size() ||
      !std::equal(part.attributes.begin(), part.attributes.end(), answer.attributes.begin(),
                  answer.attributes.end(), fit)) {
    return false;
  }
  answer.cases += part.cases;
  addTo(answer.classWeights, part.classWeights);
  answer.missingTargetWeight += part.missingTargetWeight;
  for (std::size_t i = 0; i < part.attributes.size(); ++i) {
    addAttribute(part.attributes[i], answer.attributes[i]);
  }
  return true;
}

QuestionCells::Item::Item(const BINAttributeQuestion& question)
    : attribute(question.attribute),
      cells(question.borders),
      ranges(bordersOf(question.ranges)),
      isAsked(ranges.Size(), false) {
  for (const BINValueRange& range : question.ranges) {
    isAsked[ranges.CellOf(range.low) + 1] = true;
  }
}

QuestionCells::QuestionCells(const BINRoundQuestion& question, std::size_t nCategories)
    : nCategories_(nCategories), items_(question.attributes.begin(), question.attributes.end()) {}

MCStatus QuestionCells::Count(const BINRoundCases& cases, BINRoundAnswer& answer) const {
  MakeRoom(answer);
  UsedCases used;
  const MCStatus status = CountCases(cases, used, answer);
  if (!status.IsOK()) {
    return status;
  }
  for (std::size_t i = 0; i < items_.size() && cases.size > 0; ++i) {
    const std::size_t attribute = items_[i].attribute;
    if (attribute >= cases.columns.size() || cases.columns[attribute] == nullptr) {
      return errorStatus(kUnfitAnswer);
    }
    const BINNumericUserMissing* const userMissing =
        attribute < cases.userMissing.size() ? cases.userMissing[attribute] : nullptr;
    CountColumn(items_[i], {cases.columns[attribute], cases.size}, used, userMissing,
                answer.attributes[i]);
  }
  return {};
}

void QuestionCells::MakeRoom(BINRoundAnswer& answer) const {
  answer.classWeights.resize(nCategories_, 0.0);
  answer.attributes.resize(items_.size());
  for (std::size_t i = 0; i < items_.size(); ++i) {
    answer.attributes[i].cellWeights.resize(items_[i].cells.Size() * nCategories_, 0.0);
    answer.attributes[i].missingWeights.resize(nCategories_, 0.0);
    answer.attributes[i].userMissingWeights.resize(nCategories_, 0.0);
  }
}

MCStatus QuestionCells::CountCases(const BINRoundCases& cases, UsedCases& used,
                                   BINRoundAnswer& answer) const {
  used.weights.assign(cases.size, 1.0);
  if (cases.codes != nullptr) {
    used.codes = {cases.codes, cases.size};
  }
  for (std::size_t i = 0; i < cases.size; ++i) {
    double& weight = used.weights[i];
    if (cases.weights != nullptr) {
      weight = std::isfinite(cases.weights[i]) ? std::max(cases.weights[i], 0.0) : 0.0;
    }
    if (weight == 0.0) {
      continue;
    }
    if (weight != std::floor(weight)) {
      return errorStatus(kFractionalWeight);
    }
    const int code = used.Code(i);
    if (code >= static_cast<int>(nCategories_)) {
      return errorStatus(kNoCategoryCode);
    }
    answer.cases += 1.0;
    (code < 0 ? answer.missingTargetWeight : answer.classWeights[static_cast<std::size_t>(code)]) +=
        weight;
  }
  return {};
}

void QuestionCells::CountColumn(const Item& item, std::span<const double> column,
                                const UsedCases& used, const BINNumericUserMissing* userMissing,
                                BINAttributeAnswer& answer) const {
  const double missing = MCMV::gMissingValue;
  const std::size_t valuesBefore = answer.values.size();
  for (std::size_t i = 0; i < column.size(); ++i) {
    const int code = used.Code(i);
    const double weight = used.weights[i];
    if (code < 0 || weight == 0.0) {
      continue;
    }
    const double value = column[i] + 0.0;
    const auto element = static_cast<std::size_t>(code);
    if (value != value || value == missing) {
      answer.missingWeights[element] += weight;
    } else if (userMissing != nullptr && userMissing->Contains(value)) {
      answer.userMissingWeights[element] += weight;
    } else {
      answer.minimum = std::min(answer.minimum, value);
      answer.maximum = std::max(answer.maximum, value);
      answer.cellWeights[item.cells.CellOf(value) * nCategories_ + element] += weight;
      if (item.isAsked[item.ranges.CellOf(value)]) {
        answer.values.push_back({value, code, weight});
      }
    }
  }
  mergeWhenDoubled(valuesBefore, answer.values);
}

}  // namespace MCBinning
