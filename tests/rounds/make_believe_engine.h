/// An engine over cases in memory, cut into parts that answer one by one.
#ifndef MCBINNING_TESTS_ROUNDS_MAKE_BELIEVE_ENGINE_H
#define MCBINNING_TESTS_ROUNDS_MAKE_BELIEVE_ENGINE_H

#include <mccomvor/missing_value.h>

#include <cstddef>
#include <set>
#include <vector>

#include "mcbinning/rounds.h"
#include "mcbinning/user_missing.h"

namespace mcbinning_tests {

/// Cases as an engine holds them. Codes may be empty (one class), weights, too (all 1).
struct RoundsData {
  std::vector<std::vector<double>> columns;
  std::vector<int> codes;
  std::vector<double> weights;                     // as encoded
  std::vector<BINNumericUserMissing> userMissing;  // one per column
  int categories = 1;

  std::size_t Size() const { return columns.empty() ? 0 : columns[0].size(); }
};

class MakeBelieveEngine {
 public:
  /// `partOfCase` says to which part each case belongs; `order` in which the parts are added up.
  MakeBelieveEngine(const RoundsData& data, const std::vector<std::size_t>& partOfCase,
                    const std::vector<std::size_t>& order)
      : data_(data), order_(order), parts_(order.size()) {
    for (RoundsData& part : parts_) {
      part.columns.resize(data.columns.size());
    }
    for (std::size_t i = 0; i < data.Size(); ++i) {
      RoundsData& part = parts_[partOfCase[i]];
      for (std::size_t column = 0; column < data.columns.size(); ++column) {
        part.columns[column].push_back(data.columns[column][i]);
      }
      if (!data.codes.empty()) {
        part.codes.push_back(data.codes[i]);
      }
      if (!data.weights.empty()) {
        part.weights.push_back(data.weights[i]);
      }
    }
  }

  /// OK and the answer, or the first status that was not OK.
  MCBinning::MCStatus Ask(const BINRoundQuestion& question, BINRoundAnswer& answer) const {
    answer = BINRoundAnswer();
    BINRoundCounter counter;
    MCBinning::MCStatus status = counter.Prepare(question, data_.categories);
    for (std::size_t i = 0; i < order_.size() && status.IsOK(); ++i) {
      BINRoundAnswer ofPart;
      status = counter.Count(CasesOf(parts_[order_[i]]), ofPart);
      if (status.IsOK()) {
        status = BINRoundCounter::Add(ofPart, answer);
      }
    }
    for (std::size_t i = 0; i < question.attributes.size(); ++i) {
      if (question.attributes[i].countDistinct) {
        answer.attributes[i].distinctValues = CountDistinct(question.attributes[i].attribute);
      }
    }
    return status;
  }

 private:
  BINRoundCases CasesOf(const RoundsData& part) const {
    BINRoundCases cases;
    cases.size = part.Size();
    cases.codes = data_.codes.empty() ? nullptr : part.codes.data();
    cases.weights = data_.weights.empty() ? nullptr : part.weights.data();
    for (std::size_t column = 0; column < part.columns.size(); ++column) {
      cases.columns.push_back(part.columns[column].data());
      cases.userMissing.push_back(&data_.userMissing[column]);
    }
    return cases;
  }

  double CountDistinct(std::size_t column) const {
    std::set<double> values;
    for (std::size_t i = 0; i < data_.Size(); ++i) {
      const double value = data_.columns[column][i];
      if (value == value && value != MCMV::gMissingValue &&
          !data_.userMissing[column].Contains(value) &&
          (data_.codes.empty() || data_.codes[i] >= 0) &&
          (data_.weights.empty() || data_.weights[i] > 0.0)) {
        values.insert(value);
      }
    }
    return static_cast<double>(values.size());
  }

  const RoundsData& data_;
  std::vector<std::size_t> order_;
  std::vector<RoundsData> parts_;
};

}  // namespace mcbinning_tests

#endif
