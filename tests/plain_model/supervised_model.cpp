// The supervised run.
#include <mccomvor/missing_value.h>

#include <cmath>
#include <limits>

#include "plain_model/model.h"

namespace plain_model {

namespace {

Candidates distinctValueCandidates(const ValueTable& table, bool rightClosed) {
  Candidates candidates;
  std::vector<double> values;
  for (const Row& row : table.rows) {
    if (values.empty() || row.value != values.back()) {
      values.push_back(row.value);
      candidates.weights.emplace_back(static_cast<std::size_t>(table.targetCategories), 0.0);
    }
    candidates.weights.back()[static_cast<std::size_t>(row.code)] += row.weight;
  }
  for (std::size_t i = 0; i + 1 < values.size(); ++i) {
    candidates.cutAfter.push_back(rightClosed ? values[i] : values[i + 1]);
  }
  return candidates;
}

// The pre-bins as candidates. Their boundaries reach from the lowest to the highest finite double.
Candidates preBinCandidates(const ValueTable& table, std::vector<double> cutPoints,
                            bool rightClosed, Status& status, Events& events) {
  if (!cutPoints.empty() && rightClosed && cutPoints.back() == table.maximum) {
    cutPoints.pop_back();
    events.Count(Event::kOuterPreBinCutDropped);
  } else if (!cutPoints.empty() && !rightClosed && cutPoints.front() == table.minimum) {
    cutPoints.erase(cutPoints.begin());
    events.Count(Event::kOuterPreBinCutDropped);
  }
  std::vector<double> boundaries = {-std::numeric_limits<double>::max()};
  boundaries.insert(boundaries.end(), cutPoints.begin(), cutPoints.end());
  boundaries.push_back(std::numeric_limits<double>::max());
  Candidates candidates;
  candidates.weights = countPerBin(table, boundaries, rightClosed, status);
  candidates.cutAfter = cutPoints;
  events.CountIf(!status.IsOK(), Event::kPreBinCountWarning);
  return candidates;
}

double modelEntropy(const std::vector<ClassCounts>& bins, double totalWeight) {
  double sum = 0.0;
  for (const ClassCounts& bin : bins) {
    sum += bin[0] * entropy(bin);
  }
  return sum / totalWeight;
}

}  // namespace

SupervisedModel::SupervisedModel(const VariableList& list, const Settings& initial, Events& events)
    : settings(initial), list_(list.Copy()), events_(events) {}

Status SupervisedModel::Run(const std::vector<Case>& cases, const std::vector<int>* attributes,
                            const std::vector<int>* targets) {
  if (settings.numberOfBins <= 0) {
    events_.Count(Event::kNumberOfBinsUnset);
    return error(120009);
  }
  if ((attributes != nullptr || targets != nullptr) && !Validate(attributes, targets)) {
    events_.Count(Event::kRefusedSelection);
    return error(120008);
  }
  Status status;
  if (!cancelled_) {
    if (!data_) {
      const PreparedData prepared = prepare(list_, cases, events_);
      if (prepared.status.IsError()) {
        events_.Count(prepared.status.code == 120004 ? Event::kNoCaseUsed : Event::kDataPassError);
        return prepared.status;
      }
      data_ = prepared;
      rightClosed_ = settings.rightClosed;
      preBinThreshold_ = static_cast<std::uint32_t>(settings.distinctValueThreshold);
    } else {
      events_.Count(Event::kRepeatedRun);
    }
    events_.Count(rightClosed_ ? Event::kRightClosed : Event::kRightOpen);
    status = Compute(attributes, targets);
  }
  if (!stored_.IsOK()) {
    status = warning(120018);
  }
  if (cancelled_) {
    events_.Count(Event::kCancelled);
    stored_ = error(1);
    return stored_;
  }
  events_.CountIf(status.IsOK(), Event::kRunOK);
  return status;
}

Status SupervisedModel::GetStatus() {
  if (cancelled_) {
    stored_ = error(1);
  }
  return stored_;
}

bool SupervisedModel::Validate(const std::vector<int>* attributes,
                               const std::vector<int>* targets) {
  if (attributes == nullptr) {
    return false;
  }
  if (targets != nullptr && targets->size() != attributes->size()) {
    return false;
  }
  requested_.clear();
  std::size_t failures = 0;
  for (std::size_t i = 0; i < attributes->size(); ++i) {
    const int attribute = (*attributes)[i];
    requested_.push_back(targets != nullptr ? CheckPair(attribute, (*targets)[i])
                                            : CheckAttribute(attribute));
    failures += targets != nullptr && !requested_.back().IsOK() ? 1U : 0U;
  }
  return !attributes->empty() && failures != attributes->size();
}

Status SupervisedModel::CheckPair(int attribute, int target) const {
  if (!list_.Has(attribute) || !list_.Has(target)) {
    return error(120013);
  }
  const int level = list_.At(target).level;
  if (level != kNumericLevel && level != kStringLevel) {
    return error(120006);
  }
  if (target == attribute || target == list_.weight || attribute == list_.weight) {
    return error(120005);
  }
  return {};
}

Status SupervisedModel::CheckAttribute(int attribute) const {
  if (!list_.Has(attribute)) {
    return error(120011);
  }
  if (attribute == list_.weight || attribute == list_.target) {
    return error(120005);
  }
  return {};
}

Status SupervisedModel::Compute(const std::vector<int>* attributes,
                                const std::vector<int>* targets) {
  Status status;
  if (attributes != nullptr) {
    events_.Count(targets != nullptr ? Event::kTwoListSelection : Event::kAttributeSelection);
    for (std::size_t i = 0; i < attributes->size(); ++i) {
      const int target = targets != nullptr ? (*targets)[i] : list_.target;
      if (requested_[i].IsOK()) {
        status = BinPair((*attributes)[i], target);
      } else {
        events_.Count(Event::kRefusedPair);
        PairRecord record;
        record.status = requested_[i];
        record.attribute = (*attributes)[i];
        record.target = target;
        record.cellCounts.emplace_back();
        File(record);
      }
    }
    return status;
  }
  events_.Count(Event::kWholeList);
  status = checkTarget(list_, *data_, list_.target);
  if (status.IsError()) {
    events_.Count(Event::kTargetRefusedForAll);
    return status;
  }
  for (int i = 0; i < list_.Size(); ++i) {
    if (i != list_.target && i != list_.weight) {
      status = BinPair(i, list_.target);
    }
  }
  return status;
}

Status SupervisedModel::BinPair(int attribute, int target) {
  const ValueTable table = supervisedTable(list_, *data_, attribute, target, events_);
  PairRecord record;
  record.status = table.status;
  record.attribute = attribute;
  record.target = target;
  record.distinctValues = table.distinctValues;
  record.totalWeight = table.totalWeight;
  record.totalWeightWithMissing = table.totalWeightWithMissing;
  record.minimum = table.minimum;
  record.maximum = table.maximum;
  record.modelEntropy = MCMV::gMissingValue;
  Bins bins;
  bins.counts.emplace_back();
  if (table.rows.empty()) {
    events_.CountIf(record.status.IsOK(), Event::kNoValidCases);
    record.status = record.status.IsError() ? record.status : warning(120015);
  } else {
    events_.CountIf(list_.At(target).kind == Kind::kScale, Event::kScaleTarget);
    events_.CountIf(list_.At(target).kind == Kind::kWeight, Event::kWeightAsTarget);
    if (Search(table, record.status, bins)) {
      record.modelEntropy = modelEntropy(bins.counts, table.totalWeight);
    }
    if (table.distinctValues == 1) {
      events_.Count(Event::kSingleValue);
      record.status = warning(120014, attribute);
    }
    if (table.targetCategories == 1) {
      record.status = warning(120016, target);
    }
  }
  record.cutPoints = bins.cutPoints;
  record.cellCounts = bins.counts;
  File(record);
  return record.status;
}

// Fills `bins`; false when no search could be made.
bool SupervisedModel::Search(const ValueTable& table, Status& status, Bins& bins) {
  const bool usePreBins = preBinThreshold_ != 0 && table.distinctValues > preBinThreshold_;
  Candidates candidates;
  if (usePreBins) {
    const EqualFrequencyCuts cuts = cutEqualFrequency(
        table.rows, table.totalWeight, settings.numberOfBins, rightClosed_, false, events_);
    if (!cuts.done) {
      return false;
    }
    candidates = preBinCandidates(table, cuts.cutPoints, rightClosed_, status, events_);
    events_.Count(Event::kPreBins);
    events_.CountIf(candidates.cutAfter.empty(), Event::kPreBinsWithoutCut);
  } else {
    candidates = distinctValueCandidates(table, rightClosed_);
  }
  bins = searchCutPoints(candidates, table.targetCategories, events_);
  if (bins.cutPoints.empty()) {
    events_.Count(Event::kNoCutFound);
    status = warning(120017);
  }
  if (settings.smallBinThreshold > 0.0 && bins.cutPoints.size() >= 2) {
    mergeSmallBins(bins, settings.smallBinThreshold, events_);
  }
  return true;
}

void SupervisedModel::File(const PairRecord& record) {
  records_.push_back(record);
  if (!record.status.IsOK()) {
    stored_ = record.status;
  }
}

}  // namespace plain_model
