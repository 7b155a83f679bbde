/// The second pass over the data: cases become the records that the library asks for.
#ifndef MCBIN_TOOLKIT_FIT_CASE_FEED_H
#define MCBIN_TOOLKIT_FIT_CASE_FEED_H

#include <mcbinning/case_iterator.h>
#include <mccomvor/record.h>

#include <chrono>
#include <cstddef>
#include <exception>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "toolkit/fit/case_count.h"
#include "toolkit/fit/case_reader.h"
#include "toolkit/fit/case_source.h"
#include "toolkit/fit/column_plan.h"
#include "toolkit/fit/column_scan.h"
#include "toolkit/model/model.h"

namespace mcbin {

/// The weights in that column, up to the case that `cases` stands at, add up to infinity.
[[noreturn]] void failWeightOverflow(const CaseSource& cases, std::size_t column);

/// Hands the cases of a source to the library, and counts on the way what the library does not tell
/// apart: missing and user-missing values by target category, cases dropped for their weight. To
/// the library an attribute whose cut points are given is all missing, so that nothing is searched.
/// A failure while reading ends the cases; RethrowFailure brings it up after the run.
class CaseFeed : public BINCaseIterator {
 public:
  /// Everything is borrowed. The source must stand in front of its first case.
  CaseFeed(CaseSource& source, const std::vector<ColumnPlan>& columns, const FeedLayout& layout,
           const TableScan& scan, const std::vector<std::string>& naTexts, WeightRounding rounding,
           bool isTimed);

  bool HasNext() override;
  const MCCommon::Record* Next() override;

  void RethrowFailure() const;
  /// True once the last case was handed out.
  bool AtEnd() const { return atEnd_; }
  /// Time spent in here; 0 unless it is timed, which costs two readings of the clock a case.
  double Seconds() const { return std::chrono::duration<double>(timeSpent_).count(); }

  const CaseCounts& Cases() const { return cases_; }
  /// Of all used cases, added in their order.
  double TotalWeight() const { return totalWeight_; }
  const std::vector<double>& ClassWeights() const { return classWeights_; }
  double TargetMissingWeight() const { return targetMissingWeight_; }
  /// What the user declared missing and no case has, in words.
  Notes NeverMet() const { return reader_.NeverMet(); }
  /// By position among the attributes.
  const WeightedCounts& MissingCases(std::size_t attribute) const;
  const WeightedCounts& UserMissingCases(std::size_t attribute) const;
  /// The attribute between given cut points, counted; empty where they are searched.
  std::optional<AttributeModel> GivenAttribute(std::size_t attribute);

 private:
  using Clock = std::chrono::steady_clock;
  /// An attribute whose cut points are given.
  struct Given {
    AttributeModel counted;
    DistinctValues values;
  };

  void FillRecord();
  void FillAttribute(std::size_t attribute, int code, double weight);
  void Count(Given& given, std::optional<double> value, int code, double weight) const;

  CaseSource& source_;
  const FeedLayout& layout_;
  CaseReader reader_;
  MCCommon::Record record_;
  bool caseIsReady_ = false;
  bool atEnd_ = false;
  std::exception_ptr failure_;
  bool isTimed_;
  Clock::time_point started_;
  Clock::duration timeSpent_{};

  CaseCounts cases_;
  double totalWeight_ = 0.0;
  std::vector<double> classWeights_;
  double targetMissingWeight_ = 0.0;
  std::vector<WeightedCounts> missing_;
  std::vector<WeightedCounts> userMissing_;
  std::vector<std::optional<Given>> given_;
};

}  // namespace mcbin

#endif
