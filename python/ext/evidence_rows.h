/// Evidence as Python takes it.
#ifndef MCBIN_PYTHON_EVIDENCE_ROWS_H
#define MCBIN_PYTHON_EVIDENCE_ROWS_H

#include <optional>
#include <tuple>
#include <utility>
#include <vector>

#include "toolkit/model/evidence.h"

namespace mcbin::python {

/// Event rate, weight of evidence and information value of each row, and the latter in total.
using EvidenceTuples = std::pair<std::vector<std::tuple<double, double, double>>, double>;

inline std::optional<EvidenceTuples> evidenceTuples(const std::optional<EvidenceTable>& table) {
  if (!table) return std::nullopt;
  EvidenceTuples tuples{{}, table->informationValue};
  for (const Evidence& row : table->rows) {
    tuples.first.emplace_back(row.eventRate, row.weightOfEvidence, row.informationValue);
  }
  return tuples;
}

}  // namespace mcbin::python

#endif
