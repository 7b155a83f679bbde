#ifndef MCBINNING_TESTS_SUPPORT_PLAIN_ROWS_H
#define MCBINNING_TESTS_SUPPORT_PLAIN_ROWS_H

#include <mccomvor/missing_value.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "data/sorted_rows.h"
#include "plain_model/model.h"
#include "random/agreement.h"

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

/// The sorted rows, one per case with a value.
inline std::vector<plain_model::Row> plainRows(const PlainCases& cases) {
  std::vector<plain_model::Row> rows;
  for (std::size_t i = 0; i < cases.values.size(); ++i) {
    if (cases.values[i] != MCMV::gMissingValue) {
      rows.push_back(
          {cases.values[i], cases.codes[i], cases.weights.empty() ? 1.0 : cases.weights[i]});
    }
  }
  plain_model::sortRows(rows);
  return rows;
}

/// The rows as the library holds them.
inline std::vector<plain_model::Row> rowsOf(const MCBinning::SortedRows& sorted) {
  std::vector<plain_model::Row> rows;
  for (std::size_t row = 0; row < sorted.Size(); ++row) {
    rows.push_back({sorted.Value(row), sorted.Code(row), sorted.Weight(row)});
  }
  return rows;
}

/// Throws a Difference.
inline void compareRows(const std::vector<plain_model::Row>& library,
                        const std::vector<plain_model::Row>& plain) {
  compare("number of rows", library.size(), plain.size());
  for (std::size_t row = 0; row < plain.size(); ++row) {
    within("row", row, [&] {
      compare("value", library[row].value, plain[row].value);
      compare("code", library[row].code, plain[row].code);
      compare("weight", library[row].weight, plain[row].weight);
    });
  }
}

}  // namespace mcbinning_tests

#endif
