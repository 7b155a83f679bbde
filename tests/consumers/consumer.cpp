/// A host of the library as another project would write it; the consumer projects build and run it.
/// Ends with 0 when everything that it tried came out as it must.
#include <mcbinning/mcbinning.h>
#include <mccomvor/missing_value.h>
#include <mccomvor/record.h>

#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

bool failed = false;

void expect(bool condition, const char* what) {
  if (!condition) {
    std::cerr << "failed: " << what << '\n';
    failed = true;
  }
}

class LastReport : public ProgressListener {
 public:
  void ReportProgress(ProgressReport& report) override {
    index = report.DiscreteMeasure("IndexVar");
    elapsedTime = report.ScaleMeasure("elapsedTime");
  }

  int index = -1;
  double elapsedTime = -1.0;
};

void tryProgress() {
  BINProgressReporter report;
  LastReport listener;
  listener.ReportProgress(report);
  expect(listener.index == 0, "a fresh report is at index 0");
  expect(listener.elapsedTime == MCMV::gMissingValue, "a fresh report has the host's missing time");
}

// The numbers 0 to 39; the first twenty belong to category 0, the others to category 1.
class FortyCases : public BINCaseIterator {
 public:
  bool HasNext() override { return next_ < 40; }

  const MCCommon::Record* Next() override {
    record_[0] = next_;
    record_[1] = next_ < 20 ? 0.0 : 1.0;
    ++next_;
    return &record_;
  }

 private:
  MCCommon::Record record_{2};
  int next_ = 0;
};

BINVarList makeVariables() {
  BINVarList varList;
  const int attribute = varList.AddContVar("number", "", IBINVariable::AttributeRole);
  const int target = varList.AddCatVar("half", "", std::vector<std::string>{"lower", "upper"},
                                       IBINVariable::TargetRole);
  expect(attribute == 0 && target == 1, "variables get the next index");
  return varList;
}

void trySupervised() {
  BINVarList varList = makeVariables();
  BINSettings settings;
  expect(settings.SetNumberOfBins(10), "10 bins are accepted");
  BINFactory factory;
  const std::unique_ptr<IBINAlgorithm> algorithm(factory.CreateBINAlgorithm(settings, varList));
  expect(algorithm != nullptr, "the factory makes a supervised algorithm");
  if (algorithm == nullptr) {
    return;
  }

  FortyCases cases;
  expect(algorithm->Run(cases, nullptr, nullptr).IsOK(), "the supervised run is OK");
  BINAttributeTargetResults result;
  expect(algorithm->GetOutput()->GetAttributeTargetCutPoints(0, 1, result).IsOK(),
         "the pair has a result");
  expect(result.GetCutPoints() == std::vector<double>{19.0}, "one cut between the halves");
  expect(result.GetCellCounts() == std::vector<std::vector<double>>{{20, 20, 0}, {20, 0, 20}},
         "both bins are pure");
  std::ostringstream text;
  settings.Display(text);
  expect(text.str().find("BINSettings") != std::string::npos, "settings display themselves");
}

void tryEqualFrequency() {
  BINVarList varList = makeVariables();
  EFBINSettings settings;
  expect(settings.SetNumberOfBins(4), "4 bins are accepted");
  EFBINFactory factory;
  const std::unique_ptr<IEFBINAlgorithm> algorithm(factory.CreateEFBINAlgorithm(settings, varList));
  expect(algorithm != nullptr, "the factory makes an equal-frequency algorithm");
  if (algorithm == nullptr) {
    return;
  }

  FortyCases cases;
  const std::vector<int> attributes = {0};
  expect(algorithm->Run(cases, &attributes).IsOK(), "the equal-frequency run is OK");
  BINAttributeResults result;
  expect(algorithm->GetOutput()->GetAttributeCutPoints(0, result).IsOK(),
         "the attribute has a result");
  expect(result.GetCellCounts() == std::vector<double>{10, 10, 10, 10}, "four equal bins");
}

void tryRounds() {
  std::vector<double> numbers;
  std::vector<int> halves;
  for (int i = 0; i < 40; ++i) {
    numbers.push_back(i);
    halves.push_back(i < 20 ? 0 : 1);
  }
  BINRoundCases cases;
  cases.size = numbers.size();
  cases.codes = halves.data();
  cases.columns = {numbers.data()};
  BINRoundsPlan plan;
  plan.attributes = {BINRoundsAttribute()};
  plan.target = 1;
  plan.categories = 2;
  plan.countDistinct = false;
  BINSettings settings;
  settings.SetNumberOfBins(10);
  BINRounds rounds;
  MCBinning::MCStatus status = rounds.Start(settings, plan);
  while (!status.IsError() && !rounds.IsFinished()) {
    BINRoundCounter counter;
    BINRoundAnswer answer;
    counter.Prepare(rounds.GetQuestion(), plan.categories);
    counter.Count(cases, answer);
    status = rounds.Answer(answer);
  }
  BINAttributeTargetResults result;
  expect(rounds.GetOutput().GetAttributeTargetCutPoints(0, 1, result).IsOK(),
         "the run in rounds has a result");
  expect(result.GetCutPoints() == std::vector<double>{19.0}, "the same cut in rounds");
}

void tryRecord() {
  MCCommon::Record record(2);
  record[1] = 0.5;
  const MCCommon::Record copy(record);
  expect(copy[0] == 0.0 && copy[1] == 0.5, "a record keeps its cells");
}

}  // namespace

int main() {
  tryProgress();
  tryRecord();
  trySupervised();
  tryEqualFrequency();
  tryRounds();
  std::cout << (failed ? "consumer failed\n" : "consumer ok\n");
  return failed ? 1 : 0;
}
