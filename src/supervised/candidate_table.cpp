#include "supervised/candidate_table.h"

#include <algorithm>
#include <limits>

namespace MCBinning {
namespace {

constexpr std::size_t kMaxCategories = std::numeric_limits<std::uint8_t>::max() + 1;
constexpr double kNothingToSeparate = std::numeric_limits<double>::quiet_NaN();

bool codesFit(const SortedRows& rows, std::size_t nCategories) {
  for (std::size_t row = 0; row < rows.Size(); ++row) {
    const int code = rows.Code(row);
    if (code < 0 || static_cast<std::size_t>(code) >= nCategories) {
      return false;
    }
  }
  return nCategories <= kMaxCategories;
}

/// The end of the run of equal values that starts at row `begin`.
std::size_t endOfRun(const SortedRows& rows, std::size_t begin) {
  std::size_t end = begin + 1;
  while (end < rows.Size() && rows.Value(end) == rows.Value(begin)) {
    ++end;
  }
  return end;
}

}  // namespace

CandidateTable::CandidateTable(std::size_t nCategories) : nCategories_(nCategories) {}

CandidateTable CandidateTable::FromRows(const SortedRows& rows, std::size_t nCategories,
                                        std::size_t nDistinctValues, bool rightBorderClosed) {
  CandidateTable table(nCategories);
  table.consistent_ = codesFit(rows, nCategories);
  if (!table.consistent_) {
    return table;
  }
  const std::size_t nCandidates = std::min(nDistinctValues, rows.Size());
  table.Reserve(nCandidates, std::min(nCandidates * nCategories, rows.Size()));
  std::vector<double> weightOfCode(nCategories, 0.0);
  std::vector<std::uint8_t> codesOfRun;
  for (std::size_t begin = 0; begin < rows.Size();) {
    const std::size_t end = endOfRun(rows, begin);
    table.AddRun(rows, begin, end, weightOfCode, codesOfRun);
    const bool isLast = end == rows.Size();
    table.CloseCandidate(isLast ? kNothingToSeparate : rows.Value(rightBorderClosed ? begin : end));
    begin = end;
  }
  return table;
}

CandidateTable CandidateTable::FromPreBins(const std::vector<double>* boundaries,
                                           const std::vector<double>* counts,
                                           std::size_t nCategories) {
  CandidateTable table(nCategories);
  table.consistent_ = boundaries != nullptr && counts != nullptr && !boundaries->empty() &&
                      nCategories <= kMaxCategories &&
                      counts->size() == (boundaries->size() - 1) * nCategories;
  if (!table.consistent_) {
    return table;
  }
  table.Reserve(boundaries->size() - 1, counts->size());
  for (std::size_t bin = 0; bin + 1 < boundaries->size(); ++bin) {
    for (std::size_t code = 0; code < nCategories; ++code) {
      table.AddEntry(code, (*counts)[bin * nCategories + code]);
    }
    const bool isLast = bin + 2 == boundaries->size();
    table.CloseCandidate(isLast ? kNothingToSeparate : (*boundaries)[bin + 1]);
  }
  return table;
}

void CandidateTable::AddTo(ClassCounts& counts, std::size_t candidate) const {
  for (std::uint32_t entry = offsets_[candidate]; entry < offsets_[candidate + 1]; ++entry) {
    counts[codes_[entry] + std::size_t{1}] += weights_[entry];
    counts[0] += weights_[entry];
  }
}

void CandidateTable::SubtractFrom(ClassCounts& counts, std::size_t candidate) const {
  for (std::uint32_t entry = offsets_[candidate]; entry < offsets_[candidate + 1]; ++entry) {
    counts[codes_[entry] + std::size_t{1}] -= weights_[entry];
    counts[0] -= weights_[entry];
  }
}

void CandidateTable::Sum(std::size_t first, std::size_t last, ClassCounts& counts) const {
  counts.assign(nCategories_ + 1, 0.0);
  for (std::size_t candidate = first; candidate <= last; ++candidate) {
    AddTo(counts, candidate);
  }
}

void CandidateTable::Reserve(std::size_t nCandidates, std::size_t nEntries) {
  cutPoints_.reserve(nCandidates);
  offsets_.reserve(nCandidates + 1);
  codes_.reserve(nEntries);
  weights_.reserve(nEntries);
  offsets_.push_back(0);
}

void CandidateTable::AddEntry(std::size_t code, double weight) {
  if (weight != 0.0) {
    codes_.push_back(static_cast<std::uint8_t>(code));
    weights_.push_back(weight);
  }
}

void CandidateTable::CloseCandidate(double cutPoint) {
  cutPoints_.push_back(cutPoint);
  offsets_.push_back(static_cast<std::uint32_t>(codes_.size()));
}

/// `weightOfCode` holds only zeros before and after the call.
void CandidateTable::AddRun(const SortedRows& rows, std::size_t begin, std::size_t end,
                            std::vector<double>& weightOfCode,
                            std::vector<std::uint8_t>& codesOfRun) {
  codesOfRun.clear();
  for (std::size_t row = begin; row < end; ++row) {
    double& weight = weightOfCode[static_cast<std::size_t>(rows.Code(row))];
    if (weight == 0.0) {
      codesOfRun.push_back(static_cast<std::uint8_t>(rows.Code(row)));
    }
    weight += rows.Weight(row);
  }
  std::sort(codesOfRun.begin(), codesOfRun.end());
  for (const std::uint8_t code : codesOfRun) {
    AddEntry(code, weightOfCode[code]);
    weightOfCode[code] = 0.0;
  }
}

}  // namespace MCBinning
