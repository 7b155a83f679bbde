#ifndef MCBINNING_TESTS_SUPPORT_CANDIDATE_ENTRIES_H
#define MCBINNING_TESTS_SUPPORT_CANDIDATE_ENTRIES_H

#include <cstddef>
#include <vector>

#include "supervised/candidate_table.h"

namespace mcbinning_tests {

struct HeldRows {
  MCBinning::SortedRows rows;
};

/// The candidates of rows that are already in order, together with these rows.
class CandidatesOfRows : private HeldRows, public MCBinning::CandidateTable {
 public:
  CandidatesOfRows(const std::vector<MCBinning::SortedRows::Row>& sortedRows,
                   std::size_t nCategories, bool rightBorderClosed = true)
      : HeldRows{MCBinning::SortedRows(sortedRows)},
        CandidateTable(FromRows(rows, nCategories, rightBorderClosed)) {}
};

inline std::vector<std::size_t> codesOf(const MCBinning::CandidateTable& table,
                                        std::size_t candidate) {
  std::vector<std::size_t> codes;
  for (std::size_t e = table.FirstEntry(candidate); e < table.FirstEntry(candidate + 1); ++e) {
    codes.push_back(table.Code(e));
  }
  return codes;
}

inline std::vector<double> weightsOf(const MCBinning::CandidateTable& table,
                                     std::size_t candidate) {
  std::vector<double> weights;
  for (std::size_t e = table.FirstEntry(candidate); e < table.FirstEntry(candidate + 1); ++e) {
    weights.push_back(table.Weight(e));
  }
  return weights;
}

}  // namespace mcbinning_tests

#endif
