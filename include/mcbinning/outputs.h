/// The results of both algorithms. Indexes are positions of variables in the `BINVarList` that was
/// given to the factory. Whatever a query hands out is a copy, so it outlives the algorithm.
#ifndef MCBINNING_OUTPUTS_H
#define MCBINNING_OUTPUTS_H

#include <mcbinning/export.h>
#include <mcbinning/status.h>

#include <iosfwd>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace MCBinning {
class AttributeRun;
class BINAlgorithm;
class EFBINAlgorithm;
}  // namespace MCBinning

/// What became of one attribute/target pair. A default-constructed record has an OK status, both
/// indexes -1, no cut points and counts, and every number 0. Every number is 0, too, in the record
/// of a pair whose indexes the run refused; when it was a column that could not be used, minimum,
/// maximum and model entropy are the system-missing value.
class MCBINNING_API BINAttributeTargetResults final {
 public:
  /// OK, the warning that explains why nothing was cut, or the error the pair was refused with.
  const MCBinning::MCStatus& GetStatus() const;
  int GetAttributeIndex() const;
  int GetTargetIndex() const;

  /// Strictly ascending; empty when the attribute stays one bin.
  const std::vector<double>& GetCutPoints() const;

  /// One row for each bin (number of cut points + 1), ascending by value. As the algorithm fills
  /// it, a row holds the bin's total weight, then the weight of each target category in code
  /// order. A pair without counts has one empty row. Rows beyond the outermost pre-bins lie in no
  /// bin (warning 120002, which 120014, 120016 and 120017 replace).
  const std::vector<std::vector<double>>& GetCellCounts() const;

  /// Number of distinct values of the attribute among the valid cases.
  unsigned int GetNDistinctValues() const;

  /// Weight of the cases in which attribute and target are both present.
  double GetTotalWeight() const;

  /// Weight of all cases with a usable weight.
  double GetTotalWeightWithMissing() const;

  /// The smallest and the largest attribute value among the valid cases; the system-missing value
  /// when there is none.
  double GetMinimum() const;
  double GetMaximum() const;

  /// Base-2 entropy of the target within the bins, weighted by the bins' share of the total weight;
  /// the system-missing value when no search ran.
  double GetModelEntropy() const;

  /// Writes every field as text.
  virtual void Display(std::ostream& os) const;

 private:
  friend class MCBinning::AttributeRun;
  friend class MCBinning::BINAlgorithm;
  friend class BINOutput;

  MCBinning::MCStatus status_;
  int attributeIndex_ = -1;
  int targetIndex_ = -1;
  std::vector<double> cutPoints_;
  std::vector<std::vector<double>> cellCounts_;
  unsigned int nDistinctValues_ = 0;
  double totalWeight_ = 0.0;
  double totalWeightWithMissing_ = 0.0;
  double minimum_ = 0.0;
  double maximum_ = 0.0;
  double modelEntropy_ = 0.0;
};

/// The records of the supervised algorithm, in the order in which the pairs were requested. Runs
/// add to it; a pair that is run again gets a second record. No operation throws, except that a
/// failed allocation passes through and leaves the output and the caller's arguments as they were.
class MCBINNING_API BINOutput {
 public:
  BINOutput();
  BINOutput(const BINOutput& other);
  BINOutput& operator=(const BINOutput& other);
  virtual ~BINOutput();

  /// Writes every record as text.
  virtual void Display(std::ostream& os) const;

  /// Replaces `out` with all records; error 120020 when there is none, `out` then stays as it was.
  MCBinning::MCStatus GetAllCutPoints(std::vector<BINAttributeTargetResults>& out) const;

  /// Appends to `out` (without clearing it) every record of the attribute, whatever the target, and
  /// returns the status of the last one. Error 120013 when there is none or `attribute` is
  /// negative.
  MCBinning::MCStatus GetAttributeCutPoints(int attribute,
                                            std::vector<BINAttributeTargetResults>& out) const;

  /// Assigns the pair's first record to `out` and returns that record's status. Error 120013, with
  /// `out` unchanged, when there is none, an index is negative or both are equal.
  MCBinning::MCStatus GetAttributeTargetCutPoints(int attribute, int target,
                                                  BINAttributeTargetResults& out) const;

  /// Appends a record with the given status and numbers. `cellCounts` is read bin by bin: with k
  /// cut points it makes k + 1 rows of (length / (k + 1)) values, a remainder is dropped. Returns
  /// OK (never `status`), or error 120013 with nothing stored when an index is negative or both are
  /// equal. A pair stored before keeps its record; GetAttributeTargetCutPoints finds the first.
  MCBinning::MCStatus SetAttributeTargetResults(MCBinning::MCStatus status,
                                                const std::set<double>& cutPoints,
                                                const std::vector<double>& cellCounts,
                                                int attribute, int target,
                                                unsigned int nDistinctValues, double totalWeight,
                                                double totalWeightWithMissing, double minimum,
                                                double maximum, double modelEntropy);

 private:
  friend class MCBinning::AttributeRun;
  friend class MCBinning::BINAlgorithm;

  // Refuses nothing: a requested pair with impossible indexes gets its record, too.
  void File(BINAttributeTargetResults record);

  std::vector<BINAttributeTargetResults> results_;
  std::map<std::pair<int, int>, int> pairIndex_;
};

/// What became of one attribute in the equal-frequency algorithm. A default-constructed record has
/// an OK status, attribute index -1, no cut points and counts, and every number 0. Every number is
/// 0, too, in the record of an attribute whose index the run refused; when it was a column that
/// could not be used, minimum and maximum are the system-missing value.
class MCBINNING_API BINAttributeResults final {
 public:
  /// OK, the warning that explains why nothing was cut, or the error the attribute was refused
  /// with.
  const MCBinning::MCStatus& GetStatus() const;
  int GetAttributeIndex() const;

  /// Ascending; empty when the attribute stays one bin. Neighbours
  /// whose sum overflows make an infinite one, which may stand out of order; NaN neighbours, or
  /// -infinity and +infinity, a NaN.
  const std::vector<double>& GetCutPoints() const;

  /// The weight of each bin, ascending by value: one more than there are cut points, or none when
  /// nothing was counted. With neighbouring, huge or infinite values, or where sums round, they can
  /// differ from the weight of the rows between the cut points and add up to less than the total.
  const std::vector<double>& GetCellCounts() const;

  /// Number of distinct values of the attribute among the valid cases.
  unsigned int GetNDistinctValues() const;

  /// Weight of the cases in which the attribute is present.
  double GetTotalWeight() const;

  /// Weight of all cases with a usable weight.
  double GetTotalWeightWithMissing() const;

  /// The smallest and the largest value among the valid cases; the system-missing value when there
  /// is none.
  double GetMinimum() const;
  double GetMaximum() const;

  /// Writes every field as text.
  virtual void Display(std::ostream& os) const;

 private:
  friend class MCBinning::AttributeRun;
  friend class MCBinning::EFBINAlgorithm;
  friend class EFBINOutput;

  MCBinning::MCStatus status_;
  int attributeIndex_ = -1;
  std::vector<double> cutPoints_;
  std::vector<double> cellCounts_;
  unsigned int nDistinctValues_ = 0;
  double totalWeight_ = 0.0;
  double totalWeightWithMissing_ = 0.0;
  double minimum_ = 0.0;
  double maximum_ = 0.0;
};

/// The records of the equal-frequency algorithm, in the order in which the attributes were binned.
/// Runs add to it; an attribute that is run again gets a second record. No operation throws, except
/// that a failed allocation passes through and leaves the output and the caller's arguments as they
/// were.
class MCBINNING_API EFBINOutput {
 public:
  EFBINOutput();
  EFBINOutput(const EFBINOutput& other);
  EFBINOutput& operator=(const EFBINOutput& other);
  virtual ~EFBINOutput();

  /// Writes every record as text.
  virtual void Display(std::ostream& os) const;

  /// Replaces `out` with all records; error 120020 when there is none, `out` then stays as it was.
  MCBinning::MCStatus GetAllCutPoints(std::vector<BINAttributeResults>& out) const;

  /// Assigns the attribute's first record to `out` and returns that record's status. Error 120013,
  /// with `out` unchanged, when there is none or `attribute` is negative.
  MCBinning::MCStatus GetAttributeCutPoints(int attribute, BINAttributeResults& out) const;

  /// Appends a record with the given status, vectors and numbers and returns OK (never `status`),
  /// or error 120011 with nothing stored when `attribute` is negative. An attribute stored before
  /// keeps its record; GetAttributeCutPoints finds the first.
  MCBinning::MCStatus SetAttributeResults(MCBinning::MCStatus status,
                                          const std::vector<double>& cutPoints,
                                          const std::vector<double>& cellCounts, int attribute,
                                          unsigned int nDistinctValues, double totalWeight,
                                          double totalWeightWithMissing, double minimum,
                                          double maximum);

 private:
  friend class MCBinning::AttributeRun;
  friend class MCBinning::EFBINAlgorithm;

  // Refuses nothing: a requested attribute with an impossible index gets its record, too.
  void File(BINAttributeResults record);

  std::vector<BINAttributeResults> results_;
};

#endif
