#ifndef MCBINNING_TESTS_SUPPORT_PLAIN_ROWS_H
#define MCBINNING_TESTS_SUPPORT_PLAIN_ROWS_H

#include <mccomvor/missing_value.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "data/sorted_rows.h"

namespace mcbinning_tests {

/// The columns of one attribute in memory, case by case.
struct PlainCases {
  std::vector<double> values;
  std::vector<std::uint16_t> codes;
  std::vector<double> weights;  // empty: all 1

  MCBinning::CaseColumns Columns() const {
    return {values, codes.data(), weights.empty() ? nullptr : weights.data()};
  }
};

/// The rows as they are defined: one per case with a value, in ascending order, NaN last, equal
/// values in the order of the cases. The first zero stands for -0.0 and 0.0 alike.
inline std::vector<MCBinning::SortedRows::Row> plainRows(const PlainCases& cases) {
  std::vector<MCBinning::SortedRows::Row> rows;
  const auto zero = std::find(cases.values.begin(), cases.values.end(), 0.0);
  for (std::size_t i = 0; i < cases.values.size(); ++i) {
    if (cases.values[i] != MCMV::gMissingValue) {
      rows.push_back({cases.values[i] == 0.0 ? *zero : cases.values[i], cases.codes[i],
                      cases.weights.empty() ? 1.0 : cases.weights[i]});
    }
  }
  std::stable_sort(rows.begin(), rows.end(), [](const auto& left, const auto& right) {
    return left.value < right.value || (std::isnan(right.value) && !std::isnan(left.value));
  });
  return rows;
}

/// The same with the rows of one value and one code merged in row order, ascending by code.
inline std::vector<MCBinning::SortedRows::Row> mergedRows(
    const std::vector<MCBinning::SortedRows::Row>& rows) {
  std::vector<MCBinning::SortedRows::Row> merged;
  for (std::size_t begin = 0; begin < rows.size();) {
    std::size_t end = begin + 1;
    while (end < rows.size() && rows[end].value == rows[begin].value) {
      ++end;
    }
    for (int code = 0; code < 256; ++code) {
      bool isPresent = false;
      double weight = 0.0;
      for (std::size_t row = begin; row < end; ++row) {
        isPresent = isPresent || rows[row].code == code;
        weight += rows[row].code == code ? rows[row].weight : 0.0;
      }
      if (isPresent) {
        merged.push_back({rows[begin].value, code, weight});
      }
    }
    begin = end;
  }
  return merged;
}

inline std::size_t distinctValues(const std::vector<MCBinning::SortedRows::Row>& rows) {
  std::size_t distinct = 0;
  for (std::size_t row = 0; row < rows.size(); ++row) {
    distinct += row == 0 || rows[row].value != rows[row - 1].value ? 1 : 0;
  }
  return distinct;
}

}  // namespace mcbinning_tests

#endif
