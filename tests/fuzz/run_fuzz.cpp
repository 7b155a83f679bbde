// Makes a variable list, settings, selections and cases of any bytes and runs an algorithm over
// them, once or several times. Either everything that can be read must agree with the plain model,
// or files, iterator, listener and cancel query misbehave; then nothing may be left behind. In both
// ways the results must be consistent.
#include <mccomvor/missing_value.h>

#include <iostream>
#include <limits>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "ef/ef_bin_algorithm.h"
#include "fuzz/check.h"
#include "fuzz/input.h"
#include "fuzz/run_checks.h"
#include "fuzz/run_input.h"
#include "plain_model/comparison.h"
#include "supervised/bin_algorithm.h"
#include "support/failing_file_system.h"
#include "support/host_objects.h"
#include "support/memory_file_system.h"
#include "support/vector_cases.h"

namespace {

using fuzz::check;
using fuzz::Input;
using MCBinning::MCStatus;
using mcbinning_tests::FailingFileSystem;
using mcbinning_tests::FileOperation;
using mcbinning_tests::MemoryFileSystem;
using plain_model::RandomRun;
using plain_model::Request;

const std::vector<int>* pointerTo(const std::optional<std::vector<int>>& selection) {
  return selection ? &*selection : nullptr;
}

MCStatus run(MCBinning::BINAlgorithm& algorithm, BINCaseIterator& cases, const Request& request) {
  return algorithm.Run(cases, pointerTo(request.attributes), pointerTo(request.targets));
}

MCStatus run(MCBinning::EFBINAlgorithm& algorithm, BINCaseIterator& cases, const Request& request) {
  return algorithm.Run(cases, pointerTo(request.attributes));
}

// Checks what runs add to an output.
class RecordChecks {
 public:
  template <typename Output>
  void Check(const Output& output, const Request& request, const MCStatus& status) {
    cellsAreWhole_ = cellsAreWhole_ && fuzz::hasWholeCells(request);
    fuzz::checkRecords(output, checked_, request, {!status.IsError(), cellsAreWhole_});
    checked_ = CountOf(output);
  }

 private:
  static std::size_t CountOf(const BINOutput& output) {
    std::vector<BINAttributeTargetResults> records;
    output.GetAllCutPoints(records);
    return records.size();
  }
  static std::size_t CountOf(const EFBINOutput& output) {
    std::vector<BINAttributeResults> records;
    output.GetAllCutPoints(records);
    return records.size();
  }

  std::size_t checked_ = 0;
  bool cellsAreWhole_ = true;
};

// Lets the factories judge the list and puts the algorithms' files into memory.
class MemoryHost final : public plain_model::ComparisonHost {
 public:
  explicit MemoryHost(MemoryFileSystem& files) : files_(files) {}

  std::unique_ptr<IBINAlgorithm> Make(BINFactory& factory, BINSettings& settings,
                                      BINVarList& list) override {
    return ComparisonHost::Make(factory, settings, list) == nullptr
               ? nullptr
               : std::make_unique<MCBinning::BINAlgorithm>(settings, list, files_);
  }
  std::unique_ptr<IEFBINAlgorithm> Make(EFBINFactory& factory, EFBINSettings& settings,
                                        BINVarList& list) override {
    return ComparisonHost::Make(factory, settings, list) == nullptr
               ? nullptr
               : std::make_unique<MCBinning::EFBINAlgorithm>(settings, list, files_);
  }

  void AfterRun(IBINAlgorithm& algorithm, const Request& request, const MCStatus& status) override {
    checks_.Check(*algorithm.GetOutput(), request, status);
  }
  void AfterRun(IEFBINAlgorithm& algorithm, const Request& request,
                const MCStatus& status) override {
    checks_.Check(*algorithm.GetOutput(), request, status);
  }

 private:
  MemoryFileSystem& files_;
  RecordChecks checks_;
};

void compareRun(RandomRun& run) {
  MemoryFileSystem files;
  MemoryHost host(files);
  plain_model::Events events;
  const std::string difference = plain_model::compareWithLibrary(run, "temp", host, events);
  if (!difference.empty()) {
    std::cerr << describe(run) << difference << std::endl;
  }
  check(difference.empty(), "library and model agree");
  check(files.Files() == 0 && files.OpenFiles() == 0, "no file is left");
}

// What goes wrong in a disturbed run; numbers count calls from 1.
struct Disturbance {
  explicit Disturbance(Input& input)
      : operation(static_cast<FileOperation>(
            input.Below(static_cast<int>(mcbinning_tests::kFileOperations) - 1))),
        failFrom(When(input, 40)),
        failures(When(input, 3)),
        room(input.OneIn(4) ? When(input, 8000) : std::numeric_limits<std::size_t>::max()),
        throwAtHasNext(When(input, 60)),
        throwAtNext(When(input, 60)),
        throwAtQuestion(When(input, 80)),
        cancelFrom(input.OneIn(3) ? When(input, 80) : 0),
        throwAtReport(When(input, 40)),
        cancelAtReport(input.OneIn(4)),
        directory(input.Text()) {}

  FileOperation operation;
  std::size_t failFrom;
  std::size_t failures;
  std::size_t room;
  std::size_t throwAtHasNext;
  std::size_t throwAtNext;
  std::size_t throwAtQuestion;
  std::size_t cancelFrom;
  std::size_t throwAtReport;
  bool cancelAtReport;
  std::string directory;

 private:
  static std::size_t When(Input& input, int most) {
    return input.Flag() ? 0 : static_cast<std::size_t>(input.Between(1, most));
  }
};

bool isThrownAway(const MCStatus& status) {
  const long code = status.GetErrorCode();
  return code == 1 || code == 3 || code == 120001 || code == 120004 || code == 120021;
}

template <typename Algorithm, typename Settings>
void runDisturbed(RandomRun& made, const Disturbance& disturbance) {
  MemoryFileSystem memory;
  FailingFileSystem files(memory);
  if (disturbance.failFrom != 0) {
    files.FailAt(disturbance.operation, disturbance.failFrom, disturbance.failures);
  }
  files.LimitRoom(disturbance.room);
  mcbinning_tests::CountingQuery query(disturbance.cancelFrom);
  query.ThrowAt(disturbance.throwAtQuestion);
  mcbinning_tests::RecordingListener listener;
  listener.throwAt = disturbance.throwAtReport;
  Settings settings;
  apply(made.requests.front().settings, settings);
  settings.SetCancelPointer(&query);
  settings.SetProgressListener(&listener);
  settings.SetNSkippedCasesReports(7);
  settings.SetTempDirName(disturbance.directory);
  {
    Algorithm algorithm(settings, made.hostList, files);
    if (disturbance.cancelAtReport) {
      listener.hook = [&algorithm] { algorithm.Cancel(); };
    }
    RecordChecks checks;
    for (const Request& request : made.requests) {
      apply(request.settings, *algorithm.GetSettings());
      mcbinning_tests::VectorCases cases(request.cases);
      cases.ThrowAtHasNext(disturbance.throwAtHasNext);
      cases.ThrowAtNext(disturbance.throwAtNext);
      const MCStatus status = run(algorithm, cases, request);
      checks.Check(*algorithm.GetOutput(), request, status);
      check(memory.OpenFiles() == 0, "files are closed");
      check(!isThrownAway(status) || memory.Files() == 0, "data of a failed run are gone");
      std::ostringstream text;
      algorithm.Display(text);
      algorithm.GetStatus();
    }
  }
  check(memory.Files() == 0, "no file is left");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  Input input(bytes, size);
  if (!input.OneIn(4)) {
    RandomRun made = fuzz::makeRun(input);
    compareRun(made);
    return 0;
  }
  const Disturbance disturbance(input);
  RandomRun made = fuzz::makeRun(input);
  std::vector<int> single;
  std::vector<int> empty;
  if (!made.hostList.IsValidList(single, empty)) {
    return 0;  // no factory makes an algorithm of it
  }
  if (made.supervised) {
    runDisturbed<MCBinning::BINAlgorithm, BINSettings>(made, disturbance);
  } else {
    runDisturbed<MCBinning::EFBINAlgorithm, EFBINSettings>(made, disturbance);
  }
  return 0;
}
