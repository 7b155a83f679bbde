#include "toolkit/fit/library_run.h"

#include <mcbinning/mcbinning.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "toolkit/errors.h"
#include "toolkit/fit/bin_recount.h"
#include "toolkit/fit/library_records.h"
#include "toolkit/fit/status_text.h"
#include "toolkit/system/temporary_directory.h"

namespace mcbin {
namespace {

constexpr int kCasesPerReport = 5000;

/// What the library calls in a run: is asked whether to stop, and hands reports on, of cases while
/// they are read, of attributes afterwards. Notes the first errno that the library's own calls
/// leave once it has every case, since its statuses do not tell why an attribute failed.
class RunWatch : public MCQueryCancel, public ProgressListener {
 public:
  RunWatch(Monitor& monitor, const CaseFeed& feed, std::uint64_t rows, const Model& model)
      : monitor_(monitor), feed_(feed), rows_(static_cast<double>(rows)), model_(model) {}

  bool IsCancelled() override {
    NoteReason();
    const bool isCancelled = monitor_.StopRequested();
    errno = 0;
    return isCancelled;
  }

  void ReportProgress(ProgressReport& report) override {
    NoteReason();
    Tell(report.DiscreteMeasure("IndexVar"));
    errno = 0;
  }

  /// Also to be called as soon as the run is over.
  void NoteReason() {
    if (feed_.AtEnd() && reason_ == 0) reason_ = errno;
  }
  int Reason() const { return reason_; }

 private:
  void Tell(int index) {
    if (!feed_.AtEnd()) {
      monitor_.Update("reading cases", index / rows_, index, "cases");
      return;
    }
    const double done = ++attributesDone_;
    monitor_.Update("binning attributes", done / static_cast<double>(model_.attributes.size()),
                    done, "attributes");
  }

  Monitor& monitor_;
  const CaseFeed& feed_;
  double rows_;
  const Model& model_;
  int attributesDone_ = 0;
  int reason_ = 0;
};

void addMissing(BINVarList& list, int index, const MissingRules& rules) {
  for (double value : rules.values) {
    require(list.AddDiscreteUserMissing(index, value, ""), "a user-missing value");
  }
  if (rules.range) {
    require(list.SetMissingInterval(index, rules.range->first, rules.range->second),
            "a user-missing range");
  }
}

BINVarList variablesOf(const Model& model) {
  BINVarList list;
  if (model.target) {
    const int index =
        list.AddCatVar(model.target->name, "", model.target->categories, IBINVariable::TargetRole);
    require(index >= 0, "the target");
  }
  if (model.weight) {
    const int index = list.AddWeightVar(model.weight->name, "",
                                        model.weight->rounding == WeightRounding::Truncate
                                            ? IBINVariable::TruncateToSmallerInt
                                            : IBINVariable::RoundToClosestInt);
    require(index >= 0, "the weight");
    addMissing(list, index, model.weight->missing);
  }
  std::vector<std::string> names;
  for (const AttributeModel& attribute : model.attributes) names.push_back(attribute.name);
  int index = list.AddContVars(names, IBINVariable::AttributeRole);
  require(index >= 0, "the attributes");
  for (const AttributeModel& attribute : model.attributes) {
    addMissing(list, index++, attribute.missing);
  }
  return list;
}

/// The library's run over the cases, watched and in a directory of its own.
struct RunSetting {
  CaseFeed& feed;
  Monitor& monitor;
  RunWatch watch;
  TemporaryDirectory directory;
};

/// What the settings of both algorithms share.
template <class Settings>
void configure(Settings& settings, const Model& model, RunSetting& run) {
  setBins(model, settings);
  require(settings.SetNSkippedCasesReports(kCasesPerReport), "the report interval");
  settings.SetCancelPointer(&run.watch);
  settings.SetProgressListener(&run.watch);
  settings.SetTempDirName(run.directory.Path());
}

/// A factory asks, too, whether to go on.
void checkFactory(const RunSetting& run, const MCBinning::MCStatus& status) {
  run.monitor.ThrowIfStopped();
  throwIfRunFailed(status, 0);
}

void checkRun(RunSetting& run, const Model& model, const MCBinning::MCStatus& status) {
  const int reason = errno;
  run.watch.NoteReason();
  run.feed.RethrowFailure();
  run.monitor.ThrowIfStopped();
  if (status.GetErrorCode() == 120004) failWithoutCases(model, run.feed.Cases().read);
  throwIfRunFailed(status, reason);
}

/// Whether each of the run's column files holds a double for every used case; true, too, when the
/// directory cannot be read.
bool filesAreWhole(const RunSetting& run, std::size_t columns) {
  std::error_code unreadable;
  const auto files = columnFiles(run.directory.Path(), unreadable);
  const auto whole = std::count_if(files.begin(), files.end(), [&](const auto& file) {
    std::error_code gone;
    return std::filesystem::file_size(file, gone) == sizeof(double) * run.feed.Cases().used &&
           !gone;
  });
  return unreadable || static_cast<std::size_t>(whole) >= columns;
}

std::size_t columnsOf(const Model& model) {
  return model.attributes.size() + (model.target ? 1 : 0) + (model.weight ? 1 : 0);
}

/// Goes over the records, of which there is one for each attribute, and lets `take` file them.
template <class Results, class Take>
void takeRecords(const std::vector<Results>& records, const RunSetting& run, Model& model,
                 Take take) {
  require(records.size() == model.attributes.size(), "to bin every attribute");
  for (std::size_t a = 0; a < records.size(); ++a) {
    AttributeModel& attribute = model.attributes[a];
    const MCBinning::MCStatus status = records[a].GetStatus();
    if (status.IsError()) {
      throwIfAttributeFailed(status, attribute.name, filesAreWhole(run, columnsOf(model)),
                             run.watch.Reason());
    }
    take(records[a], attribute);
    require(attribute.totalWeightWithMissing == run.feed.TotalWeight(), "to count every case");
  }
}

void runSupervised(RunSetting& run, Model& model) {
  BINVarList variables = variablesOf(model);
  BINSettings settings;
  configure(settings, model, run);
  BINFactory factory;
  const std::unique_ptr<IBINAlgorithm> algorithm(factory.CreateBINAlgorithm(settings, variables));
  checkFactory(run, factory.GetStatus());
  model.library = algorithm->GetVersion();
  checkRun(run, model, algorithm->Run(run.feed, nullptr, nullptr));
  std::vector<BINAttributeTargetResults> records;
  algorithm->GetOutput()->GetAllCutPoints(records);
  takeRecords(records, run, model, [&](const auto& record, AttributeModel& attribute) {
    fileRecord(record, model.target->categories.size(), attribute);
  });
}

void runEqualFrequency(RunSetting& run, Model& model) {
  BINVarList variables = variablesOf(model);
  EFBINSettings settings;
  configure(settings, model, run);
  EFBINFactory factory;
  const std::unique_ptr<IEFBINAlgorithm> algorithm(
      factory.CreateEFBINAlgorithm(settings, variables));
  checkFactory(run, factory.GetStatus());
  model.library = algorithm->GetVersion();
  checkRun(run, model, algorithm->Run(run.feed, nullptr));
  std::vector<BINAttributeResults> records;
  algorithm->GetOutput()->GetAllCutPoints(records);
  takeRecords(records, run, model,
              [](const auto& record, AttributeModel& attribute) { fileRecord(record, attribute); });
  recountBins(run.directory.Path(), run.feed.Cases().used, run.monitor, model);
}

}  // namespace

std::string libraryVersion() {
  BINVarList variables;
  require(variables.AddContVars({"x"}, IBINVariable::AttributeRole) >= 0, "a variable");
  EFBINSettings settings;
  require(settings.SetNumberOfBins(2), "the number of bins");
  EFBINFactory factory;
  const std::unique_ptr<IEFBINAlgorithm> algorithm(
      factory.CreateEFBINAlgorithm(settings, variables));
  throwIfRunFailed(factory.GetStatus(), 0);
  return algorithm->GetVersion();
}

void runLibrary(CaseFeed& feed, std::uint64_t rows, Monitor& monitor, Model& model) {
  RunSetting run{feed, monitor, RunWatch(monitor, feed, rows, model),
                 TemporaryDirectory(temporaryRoot())};
  if (model.method == Method::Supervised) {
    runSupervised(run, model);
  } else {
    runEqualFrequency(run, model);
  }
}

}  // namespace mcbin
