/// A second, deliberately simple implementation of the component's numeric rules, for comparison
/// with the library. It reads no file, reuses nothing between runs and keeps every sum in the order
/// in which the rules state it. Weights may be fractional, so the order of every sum matters:
///  - totals of an attribute are summed over the used cases in the order of the cases;
///  - the weight of a category at a candidate is summed over the candidate's rows in the tie order;
///  - the class counts of an interval take the weights candidate by candidate in ascending order
///    and category by category in code order, each into its category and into element 0;
///  - in the search for the best position, the left counts start from zero and take each
///    candidate's weights in that way, the right counts start from the interval's counts and lose
///    them;
///  - element 0 of a bin's counts is the sum of its category elements in code order;
///  - the counts of the two sides of the best position: the side with the nearer end of the
///    interval is summed, the other side is the interval's counts less that side's.
#ifndef MCBINNING_TESTS_PLAIN_MODEL_MODEL_H
#define MCBINNING_TESTS_PLAIN_MODEL_MODEL_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "plain_model/events.h"
#include "plain_model/list.h"

namespace plain_model {

struct Status {
  int code = 0;
  int severity = 0;  // 0 OK, -1 error, 1 warning
  int discrete[3] = {0, 0, 0};
  double scale[3] = {0.0, 0.0, 0.0};

  bool IsOK() const { return severity == 0; }
  bool IsError() const { return severity < 0; }
};

/// An error or a warning with `datum` in discrete slot 0.
Status error(int code, int datum = 0);
Status warning(int code, int datum = 0);

/// What a factory answers for the list: OK, or error 120003 with the offending index in discrete
/// slot 1.
Status checkList(VariableList list);

struct Settings {
  bool rightClosed = true;
  int distinctValueThreshold = -1;
  int numberOfBins = -1;
  double smallBinThreshold = 0.0;  // supervised only
};

/// One cell per variable of the list; an empty case stands for a null record.
using Case = std::vector<double>;

/// What the single pass over the cases leaves behind.
struct PreparedData {
  Status status;                             // of the pass
  std::vector<std::vector<double>> columns;  // column after column, a value per used case
  std::vector<bool> columnUsed;
  std::vector<int> highestCode;  // per column
  std::vector<int> columnOf;     // per variable of the list, -1 for none
  int weightColumn = -1;
  std::size_t usedCases = 0;
};

PreparedData prepare(const VariableList& list, const std::vector<Case>& cases, Events& events);

struct Row {
  double value;
  int code;
  double weight;
};

/// Ascending by value, NaN last, equal values in the order they have. -0.0 and 0.0 are one value,
/// for which the first of them stands.
void sortRows(std::vector<Row>& rows);

/// Sorted rows with those of one value and one code merged in their order, ascending by code.
std::vector<Row> mergeRows(const std::vector<Row>& rows);

/// Of sorted rows; every NaN is a value of its own.
unsigned countDistinctValues(const std::vector<Row>& rows);

/// The usable rows of one attribute, sorted by value, and what is known about them.
struct ValueTable {
  Status status;
  std::vector<Row> rows;
  int targetCategories = 1;
  unsigned distinctValues = 0;
  double totalWeight = 0.0;
  double totalWeightWithMissing = 0.0;
  double minimum;
  double maximum;

  ValueTable();
};

/// Error 120010 for a target that has no column (any more), else OK.
Status checkTarget(const VariableList& list, const PreparedData& data, int target);

ValueTable supervisedTable(const VariableList& list, const PreparedData& data, int attribute,
                           int target, Events& events);
ValueTable unsupervisedTable(const VariableList& list, const PreparedData& data, int attribute,
                             Events& events);

/// Weight per bin and category between ascending boundaries; `status` gets warning 120002 when the
/// rows and the boundaries do not fit.
std::vector<std::vector<double>> countPerBin(const ValueTable& table,
                                             const std::vector<double>& boundaries,
                                             bool rightClosed, Status& status);

struct EqualFrequencyCuts {
  bool done = false;
  std::vector<double> cutPoints;
  std::vector<double> binWeights;  // empty unless asked for
};

/// Cuts sorted rows into bins of nearly equal weight. `withBinWeights` is the use of the
/// equal-frequency algorithm: bin weights are computed and border cut points and empty bins are
/// cleaned away.
EqualFrequencyCuts cutEqualFrequency(const std::vector<Row>& rows, double totalWeight,
                                     int numberOfBins, bool rightClosed, bool withBinWeights,
                                     Events& events);

/// Element 0 is the total, element c + 1 the weight of category c.
using ClassCounts = std::vector<double>;

double entropy(const ClassCounts& counts);

/// The weighted entropy of two parts.
double splitEntropy(const ClassCounts& left, const ClassCounts& right);

/// What the search works on: weights[i] holds the category weights of candidate i, cutAfter[i] is
/// the cut value filed for a split between candidates i and i + 1.
struct Candidates {
  std::vector<std::vector<double>> weights;
  std::vector<double> cutAfter;
};

struct Bins {
  std::vector<double> cutPoints;
  std::vector<ClassCounts> counts;
};

/// The best split of the candidates from `first` to `last`: after which of them, and the weighted
/// entropy of the two parts. Nothing when no position is examined or no entropy is a number.
struct Split {
  std::size_t position;
  double entropy;
};
std::optional<Split> bestSplit(const Candidates& candidates, std::size_t first, std::size_t last,
                               Events& events);

Bins searchCutPoints(const Candidates& candidates, int categories, Events& events);

void mergeSmallBins(Bins& bins, double threshold, Events& events);

/// What the records of both algorithms hold. `CompareNumbers` hands each number of the library's
/// record, by name, to `compare` beside the one here.
struct Record {
  Status status;
  int attribute = -1;
  std::vector<double> cutPoints;
  unsigned distinctValues = 0;
  double totalWeight = 0.0;
  double totalWeightWithMissing = 0.0;
  double minimum = 0.0;
  double maximum = 0.0;

  template <typename LibraryRecord, typename Compare>
  void CompareNumbers(const LibraryRecord& library, Compare compare) const {
    compare("distinct values", library.GetNDistinctValues(), distinctValues);
    compare("total weight", library.GetTotalWeight(), totalWeight);
    compare("total weight with missing", library.GetTotalWeightWithMissing(),
            totalWeightWithMissing);
    compare("minimum", library.GetMinimum(), minimum);
    compare("maximum", library.GetMaximum(), maximum);
  }
};

/// One pair's results. A record that never got counts has one empty row of them.
struct PairRecord : Record {
  int target = -1;
  std::vector<std::vector<double>> cellCounts;
  double modelEntropy = 0.0;

  template <typename LibraryRecord, typename Compare>
  void CompareNumbers(const LibraryRecord& library, Compare compare) const {
    Record::CompareNumbers(library, compare);
    compare("model entropy", library.GetModelEntropy(), modelEntropy);
  }
};

struct AttributeRecord : Record {
  std::vector<double> cellCounts;
};

/// The supervised algorithm. `settings` may be changed between runs.
class SupervisedModel {
 public:
  SupervisedModel(const VariableList& list, const Settings& initial, Events& events);

  /// Null selections mean: not given.
  Status Run(const std::vector<Case>& cases, const std::vector<int>* attributes,
             const std::vector<int>* targets);
  void Cancel() { cancelled_ = true; }
  Status GetStatus();
  bool IsPrepared() const { return data_.has_value(); }
  const std::vector<PairRecord>& Records() const { return records_; }

  Settings settings;

 private:
  bool Validate(const std::vector<int>* attributes, const std::vector<int>* targets);
  Status CheckPair(int attribute, int target) const;
  Status CheckAttribute(int attribute) const;
  Status Compute(const std::vector<int>* attributes, const std::vector<int>* targets);
  Status BinPair(int attribute, int target);
  bool Search(const ValueTable& table, Status& status, Bins& bins);
  void File(const PairRecord& record);

  VariableList list_;
  Events& events_;
  Status stored_;
  bool cancelled_ = false;
  std::optional<PreparedData> data_;
  bool rightClosed_ = true;
  std::uint32_t preBinThreshold_ = 0;
  std::vector<Status> requested_;
  std::vector<PairRecord> records_;
};

/// The equal-frequency algorithm.
class EqualFrequencyModel {
 public:
  EqualFrequencyModel(const VariableList& list, const Settings& initial, Events& events);

  Status Run(const std::vector<Case>& cases, const std::vector<int>* attributes);
  void Cancel() { cancelled_ = true; }
  Status GetStatus() const { return stored_; }
  bool IsPrepared() const { return data_.has_value(); }
  const std::vector<AttributeRecord>& Records() const { return records_; }

  Settings settings;

 private:
  bool Validate(const std::vector<int>& attributes);
  void Compute(const std::vector<int>* attributes);
  void BinAttribute(int attribute);
  void File(const AttributeRecord& record);

  VariableList list_;
  Events& events_;
  Status stored_;
  bool cancelled_ = false;
  std::optional<PreparedData> data_;
  bool rightClosed_ = true;
  std::vector<Status> requested_;
  std::vector<AttributeRecord> records_;
};

}  // namespace plain_model

#endif
