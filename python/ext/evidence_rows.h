/// Evidence as Python takes it.
#ifndef MCBIN_PYTHON_EVIDENCE_ROWS_H
#define MCBIN_PYTHON_EVIDENCE_ROWS_H

#include <tuple>
#include <utility>
#include <vector>

#include "toolkit/model/evidence.h"

namespace mcbin::python {

/// Event rate, weight of evidence and information value of each row, and the latter in total.
using EvidenceTuples = std::pair<std::vector<std::tuple<double, double, double>>, double>;

inline EvidenceTuples evidenceTuples(const EvidenceTable& table) {
  EvidenceTuples tuples{{}, table.informationValue};
  for (const Evidence& row : table.rows) {
    tuples.first.emplace_back(row.eventRate, row.weightOfEvidence, row.informationValue);
  }
  return tuples;
}

}  // namespace mcbin::python

#endif
