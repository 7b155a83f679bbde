/// The smallest host of the binning library: cuts the ages of a few visitors where they best tell
/// buyers from others, and prints the bins.
#include <mcbinning/mcbinning.h>
#include <mccomvor/record.h>

#include <cstddef>
#include <iostream>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

struct Visitor {
  double age;
  std::string bought;
};

// Hands the visitors to the library one by one: cell i belongs to the variable at index i.
class VisitorCases : public BINCaseIterator {
 public:
  VisitorCases(std::vector<Visitor> visitors, BINStringEncoder& codes)
      : visitors_(std::move(visitors)), codes_(codes) {}

  bool HasNext() override { return next_ < visitors_.size(); }

  const MCCommon::Record* Next() override {
    const Visitor& visitor = visitors_[next_++];
    record_[0] = visitor.age;
    record_[1] = codes_.EncodeConst(visitor.bought);
    return &record_;
  }

 private:
  std::vector<Visitor> visitors_;
  BINStringEncoder& codes_;
  MCCommon::Record record_{2};
  std::size_t next_ = 0;
};

std::vector<Visitor> makeVisitors() {
  std::vector<Visitor> visitors;
  for (int age = 18; age < 78; ++age) {
    visitors.push_back({static_cast<double>(age), age < 30 || age > 61 ? "no" : "yes"});
  }
  return visitors;
}

void printBins(const BINAttributeTargetResults& result) {
  const std::vector<double>& cutPoints = result.GetCutPoints();
  double left = -std::numeric_limits<double>::infinity();
  for (std::size_t bin = 0; bin < result.GetCellCounts().size(); ++bin) {
    const double right =
        bin < cutPoints.size() ? cutPoints[bin] : std::numeric_limits<double>::infinity();
    const std::vector<double>& counts = result.GetCellCounts()[bin];
    std::cout << '(' << left << ", " << right << "]: " << counts[0] << " visitors, " << counts[1]
              << " did not buy, " << counts[2] << " did\n";
    left = right;
  }
}

}  // namespace

int main() {
  BINVarList variables;
  const int age = variables.AddContVar("age", "", IBINVariable::AttributeRole);
  const int bought = variables.AddCatVar("bought", "", std::vector<std::string>{"no", "yes"},
                                         IBINVariable::TargetRole);

  BINSettings settings;
  settings.SetNumberOfBins(10);

  BINFactory factory;
  const std::unique_ptr<IBINAlgorithm> algorithm(factory.CreateBINAlgorithm(settings, variables));
  if (algorithm == nullptr) {
    std::cerr << "no algorithm, status " << factory.GetStatus().GetErrorCode() << '\n';
    return 1;
  }

  VisitorCases cases(makeVisitors(),
                     dynamic_cast<BINStringEncoder&>(*variables.GetEncoderAt(bought)));
  const MCBinning::MCStatus status = algorithm->Run(cases, nullptr, nullptr);
  BINAttributeTargetResults result;
  if (status.IsError() ||
      algorithm->GetOutput()->GetAttributeTargetCutPoints(age, bought, result).IsError()) {
    std::cerr << "no result, status " << status.GetErrorCode() << '\n';
    return 1;
  }
  printBins(result);
  return 0;
}
