// The equal-frequency run.
#include "plain_model/model.h"

namespace plain_model {

EqualFrequencyModel::EqualFrequencyModel(const VariableList& list, const Settings& initial,
                                         Events& events)
    : settings(initial), list_(list.Copy()), events_(events) {}

Status EqualFrequencyModel::Run(const std::vector<Case>& cases,
                                const std::vector<int>* attributes) {
  if (settings.numberOfBins <= 0) {
    events_.Count(Event::kNumberOfBinsUnset);
    return error(120009);
  }
  if (attributes != nullptr && !Validate(*attributes)) {
    events_.Count(Event::kRefusedSelection);
    return error(120011);
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
      status = prepared.status;
      rightClosed_ = settings.rightClosed;
    } else {
      events_.Count(Event::kRepeatedRun);
    }
    events_.Count(rightClosed_ ? Event::kRightClosed : Event::kRightOpen);
    events_.Count(attributes != nullptr ? Event::kAttributeSelection : Event::kWholeList);
    Compute(attributes);
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

void EqualFrequencyModel::Compute(const std::vector<int>* attributes) {
  if (attributes == nullptr) {
    for (int i = 0; i < list_.Size(); ++i) {
      if (i != list_.weight) {
        BinAttribute(i);
      }
    }
  } else {
    for (std::size_t i = 0; i < attributes->size(); ++i) {
      if (requested_[i].IsOK()) {
        BinAttribute((*attributes)[i]);
      } else {
        events_.Count(Event::kRefusedPair);
        AttributeRecord record;
        record.status = requested_[i];
        record.attribute = (*attributes)[i];
        File(record);
      }
    }
  }
}

bool EqualFrequencyModel::Validate(const std::vector<int>& attributes) {
  requested_.clear();
  bool oneIsGood = false;
  for (const int attribute : attributes) {
    Status status;
    if (!list_.Has(attribute)) {
      status = error(120011);
    } else if (attribute == list_.weight) {
      status = error(120005);
    }
    oneIsGood = oneIsGood || status.IsOK();
    requested_.push_back(status);
  }
  return oneIsGood;
}

void EqualFrequencyModel::BinAttribute(int attribute) {
  const ValueTable table = unsupervisedTable(list_, *data_, attribute, events_);
  AttributeRecord record;
  record.status = table.status;
  record.attribute = attribute;
  record.distinctValues = table.distinctValues;
  record.totalWeight = table.totalWeight;
  record.totalWeightWithMissing = table.totalWeightWithMissing;
  record.minimum = table.minimum;
  record.maximum = table.maximum;
  if (table.status.IsError()) {
    File(record);
    return;
  }
  if (table.rows.empty()) {
    events_.Count(Event::kNoValidCases);
    record.status = warning(120015);
  } else {
    const EqualFrequencyCuts cuts = cutEqualFrequency(
        table.rows, table.totalWeight, settings.numberOfBins, rightClosed_, true, events_);
    record.cutPoints = cuts.cutPoints;
    record.cellCounts = cuts.binWeights;
    events_.Count(cuts.cutPoints.empty() ? Event::kEqualFrequencyNoCut : Event::kEqualFrequencyCut);
    if (cuts.cutPoints.empty()) {
      record.status = warning(120019, attribute);
    }
    if (table.distinctValues == 1) {
      events_.Count(Event::kSingleValue);
      record.status = warning(120014, attribute);
    }
  }
  File(record);
}

void EqualFrequencyModel::File(const AttributeRecord& record) {
  records_.push_back(record);
  if (!record.status.IsOK()) {
    stored_ = record.status;
  }
}

}  // namespace plain_model
