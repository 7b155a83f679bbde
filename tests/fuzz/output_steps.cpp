#include <mcbinning/outputs.h>

#include <cmath>
#include <set>
#include <vector>

#include "fuzz/check.h"
#include "fuzz/list_comparison.h"
#include "fuzz/list_steps.h"

namespace fuzz {

namespace {

struct RecordModel {
  int attribute = 0;
  int target = 0;
  int code = 0;
  std::vector<double> cutPoints;
  std::vector<double> counts;
  double number = 0.0;  // every statistic of the record
};

RecordModel makeRecord(Input& input) {
  RecordModel model;
  model.attribute = input.OneIn(6) ? input.AnyInt() : input.Below(3);
  model.target = input.OneIn(6) ? input.AnyInt() : input.Below(3);
  model.code = input.Below(3);
  // NaN has no place in a set.
  const auto number = [&] {
    const double drawn = input.Number();
    return std::isnan(drawn) ? 0.0 : drawn;
  };
  const std::vector<double> drawn = input.Several(5, number);
  const std::set<double> cutPoints(drawn.begin(), drawn.end());
  model.cutPoints.assign(cutPoints.begin(), cutPoints.end());
  model.counts = input.Several(20, [&] { return input.Number(); });
  model.number = input.Number();
  return model;
}

template <typename Record>
void compareShared(const Record& record, const RecordModel& model) {
  check(record.GetStatus().GetErrorCode() == model.code, "status of a record");
  check(record.GetAttributeIndex() == model.attribute, "attribute of a record");
  check(isSame(record.GetCutPoints(), model.cutPoints), "cut points of a record");
  check(isSame(record.GetTotalWeight(), model.number), "total weight of a record");
  check(isSame(record.GetTotalWeightWithMissing(), model.number), "weight with missing");
  check(isSame(record.GetMinimum(), model.number), "minimum of a record");
  check(isSame(record.GetMaximum(), model.number), "maximum of a record");
  check(record.GetNDistinctValues() == model.counts.size(), "distinct values of a record");
}

void compareRecord(const BINAttributeTargetResults& record, const RecordModel& model) {
  compareShared(record, model);
  check(record.GetTargetIndex() == model.target, "target of a record");
  check(isSame(record.GetModelEntropy(), model.number), "entropy of a record");
  const std::size_t bins = model.cutPoints.size() + 1;
  const std::size_t length = model.counts.size() / bins;
  check(record.GetCellCounts().size() == bins, "rows of counts");
  for (std::size_t bin = 0; bin < bins; ++bin) {
    const auto begin = model.counts.begin() + static_cast<std::ptrdiff_t>(bin * length);
    const std::vector<double> row(begin, begin + static_cast<std::ptrdiff_t>(length));
    check(isSame(record.GetCellCounts()[bin], row), "row of counts");
  }
}

void compareRecord(const BINAttributeResults& record, const RecordModel& model) {
  compareShared(record, model);
  check(isSame(record.GetCellCounts(), model.counts), "counts of a record");
}

bool file(BINOutput& output, const RecordModel& model) {
  const bool isPossible =
      model.attribute >= 0 && model.target >= 0 && model.attribute != model.target;
  const std::set<double> cutPoints(model.cutPoints.begin(), model.cutPoints.end());
  const MCBinning::MCStatus status = output.SetAttributeTargetResults(
      MCBinning::MCStatus(model.code, true), cutPoints, model.counts, model.attribute, model.target,
      static_cast<unsigned int>(model.counts.size()), model.number, model.number, model.number,
      model.number, model.number);
  check(status.GetErrorCode() == (isPossible ? 0 : 120013), "file a pair");
  return isPossible;
}

bool file(EFBINOutput& output, const RecordModel& model) {
  const MCBinning::MCStatus status = output.SetAttributeResults(
      MCBinning::MCStatus(model.code, true), model.cutPoints, model.counts, model.attribute,
      static_cast<unsigned int>(model.counts.size()), model.number, model.number, model.number,
      model.number);
  check(status.GetErrorCode() == (model.attribute >= 0 ? 0 : 120011), "file an attribute");
  return model.attribute >= 0;
}

void query(const BINOutput& output, const std::vector<RecordModel>& models, int attribute,
           int target) {
  std::vector<BINAttributeTargetResults> ofAttribute;
  output.GetAttributeCutPoints(attribute, ofAttribute);
  std::size_t next = 0;
  const RecordModel* first = nullptr;
  for (const RecordModel& model : models) {
    if (model.attribute == attribute) {
      check(next < ofAttribute.size(), "records of an attribute");
      compareRecord(ofAttribute[next++], model);
      first = first == nullptr && model.target == target ? &model : first;
    }
  }
  check(next == ofAttribute.size(), "no more records of an attribute");
  BINAttributeTargetResults ofPair;
  const MCBinning::MCStatus status = output.GetAttributeTargetCutPoints(attribute, target, ofPair);
  check(status.GetErrorCode() == (first == nullptr ? 120013 : first->code), "query of a pair");
  if (first != nullptr) {
    compareRecord(ofPair, *first);
  }
}

void query(const EFBINOutput& output, const std::vector<RecordModel>& models, int attribute,
           int /*target*/) {
  BINAttributeResults record;
  const MCBinning::MCStatus status = output.GetAttributeCutPoints(attribute, record);
  for (const RecordModel& model : models) {
    if (model.attribute == attribute) {
      check(status.GetErrorCode() == model.code, "query of an attribute");
      return compareRecord(record, model);
    }
  }
  check(status.GetErrorCode() == 120013, "query of no attribute");
}

template <typename Output, typename Record>
void stepsOf(Input& input) {
  Output output;
  std::vector<RecordModel> models;
  for (int steps = input.Below(8); steps > 0; --steps) {
    const RecordModel model = makeRecord(input);
    if (file(output, model)) {
      models.push_back(model);
    }
  }
  Output copy;
  copy = output;
  const Output again(copy);
  std::vector<Record> records;
  check(again.GetAllCutPoints(records).IsError() == models.empty(), "all records");
  check(records.size() == models.size(), "number of records");
  for (std::size_t i = 0; i < records.size(); ++i) {
    compareRecord(records[i], models[i]);
    query(again, models, models[i].attribute, models[i].target);
  }
  query(again, models, input.AnyInt(), input.AnyInt());
  check(displayed(again) == displayed(output), "copy of an output");
}

}  // namespace

void stepsOfOutputs(Input& input) {
  if (input.Flag()) {
    stepsOf<BINOutput, BINAttributeTargetResults>(input);
  } else {
    stepsOf<EFBINOutput, BINAttributeResults>(input);
  }
}

}  // namespace fuzz
