/// A host of the library as another project would write it; the consumer projects build and run it.
/// Ends with 0 when everything that it tried came out as it must.
#include <mcbinning/mcbinning.h>
#include <mccomvor/missing_value.h>
#include <mccomvor/record.h>

#include <iostream>
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

void tryVariablesAndSettings() {
  BINVarList varList;
  const int attribute = varList.AddContVar("age", "", IBINVariable::AttributeRole);
  const int target = varList.AddCatVar("bought", "", std::vector<std::string>{"no", "yes"},
                                       IBINVariable::TargetRole);
  expect(attribute == 0 && target == 1, "variables get the next index");
  std::vector<int> singleCategoryVars;
  std::vector<int> emptyVars;
  expect(varList.IsValidList(singleCategoryVars, emptyVars), "the list is valid");

  BINSettings settings;
  expect(settings.SetNumberOfBins(10), "10 bins are accepted");
  std::ostringstream text;
  settings.Display(text);
  expect(text.str().find("BINSettings") != std::string::npos, "settings display themselves");
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
  tryVariablesAndSettings();
  tryRecord();
  std::cout << (failed ? "consumer failed\n" : "consumer ok\n");
  return failed ? 1 : 0;
}
