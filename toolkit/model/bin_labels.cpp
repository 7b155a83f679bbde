#include "toolkit/model/bin_labels.h"

#include "toolkit/errors.h"
#include "toolkit/model/evidence.h"
#include "toolkit/text/number_text.h"

namespace mcbin {
namespace {

std::vector<std::string> binLabel(const AttributeModel& attribute, ClosedSide side,
                                  LabelStyle style, std::size_t bin) {
  if (style == LabelStyle::Index) return {std::to_string(bin)};
  if (style == LabelStyle::Interval) return {intervalText(attribute.cutPoints, side, bin)};
  const BinBounds bounds = boundsOf(attribute.cutPoints, bin);
  return {shortestNumber(bounds.lower), shortestNumber(bounds.upper)};
}

}  // namespace

std::string intervalText(const std::vector<double>& cutPoints, ClosedSide side, std::size_t bin) {
  const BinBounds bounds = boundsOf(cutPoints, bin);
  const bool first = bin == 0;
  const bool last = bin == cutPoints.size();
  const char* const open = side == ClosedSide::Left && !first ? "[" : "(";
  const char* const close = side == ClosedSide::Right && !last ? "]" : ")";
  return open + shortestNumber(bounds.lower) + ", " + shortestNumber(bounds.upper) + close;
}

std::vector<std::string> labelColumns(const std::string& attribute, LabelStyle style,
                                      bool inPlace) {
  if (style == LabelStyle::Bounds) return {attribute + "_lower", attribute + "_upper"};
  if (inPlace) return {attribute};
  return {attribute + (style == LabelStyle::Evidence ? "_woe" : "_bin")};
}

BinLabels::BinLabels(const Model& model, const AttributeModel& attribute, LabelStyle style) {
  if (style == LabelStyle::Evidence) {
    TakeEvidence(model, attribute);
    return;
  }
  for (std::size_t bin = 0; bin <= attribute.cutPoints.size(); ++bin) {
    bins_.push_back(binLabel(attribute, model.closedSide, style, bin));
  }
  if (style == LabelStyle::Bounds) {
    missing_ = userMissing_ = {"", ""};
  } else {
    missing_ = {style == LabelStyle::Index ? std::to_string(kMissingBin) : "missing"};
    userMissing_ = {style == LabelStyle::Index ? std::to_string(kUserMissingBin) : "user-missing"};
  }
}

void BinLabels::TakeEvidence(const Model& model, const AttributeModel& attribute) {
  const auto evidence = evidenceOf(model, attribute);
  if (!evidence) throw DataError("weights of evidence need a target with two categories");
  const std::size_t bins = attribute.bins.size();
  const auto label = [&](std::size_t row) {
    return std::vector{shortestNumber(evidence->rows[row].weightOfEvidence)};
  };
  for (std::size_t bin = 0; bin < bins; ++bin) bins_.push_back(label(bin));
  missing_ = label(bins);
  userMissing_ = label(bins + 1);
}

const std::vector<std::string>& BinLabels::Of(const Placement& placement) const {
  if (placement.kind == Placement::Kind::Bin) return bins_[placement.bin];
  return placement.kind == Placement::Kind::Missing ? missing_ : userMissing_;
}

}  // namespace mcbin
