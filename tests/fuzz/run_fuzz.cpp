// Makes a variable list, settings, selections and cases of any bytes and runs an algorithm over
// them, once or several times. Either everything that can be read must agree with the plain model,
// or files, iterator, listener and cancel query misbehave; then nothing may be left behind, and
// what is not an error agrees with the model all the same.
#include <iostream>
#include <limits>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "ef/ef_bin_algorithm.h"
#include "random/agreement.h"
#include "random/record_comparison.h"
#include "random/run_comparison.h"
#include "supervised/bin_algorithm.h"
#include "support/failing_file_system.h"
#include "support/host_objects.h"
#include "support/memory_file_system.h"
#include "support/vector_cases.h"

namespace mcbinning_tests {
namespace {

using MCBinning::MCStatus;

// Lets the factories judge the list and puts the algorithms' files into memory.
class MemoryHost final : public ComparisonHost {
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

 private:
  MemoryFileSystem& files_;
};

void compareRun(RandomRun& run) {
  MemoryFileSystem files;
  MemoryHost host(files);
  plain_model::Events events;
  try {
    compareWithLibrary(run, "temp", host, events);
  } catch (const Difference& difference) {
    std::cerr << run << difference.what() << std::endl;
    throw;
  }
  check(files.Files() == 0 && files.OpenFiles() == 0, "no file is left");
}

// What goes wrong in a disturbed run; numbers count calls from 1.
struct Disturbance {
  explicit Disturbance(Choices& choices)
      : operation(static_cast<FileOperation>(choices.Below(static_cast<int>(kFileOperations) - 1))),
        failFrom(When(choices, 40)),
        failures(When(choices, 3)),
        room(choices.OneIn(4) ? When(choices, 8000) : std::numeric_limits<std::size_t>::max()),
        throwAtHasNext(When(choices, 60)),
        throwAtNext(When(choices, 60)),
        throwAtQuestion(When(choices, 80)),
        cancelFrom(choices.OneIn(3) ? When(choices, 80) : 0),
        throwAtReport(When(choices, 40)),
        cancelAtReport(choices.OneIn(4)),
        directory(choices.Text()) {}

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
  static std::size_t When(Choices& choices, int most) {
    return choices.Flag() ? 0 : static_cast<std::size_t>(choices.Between(1, most));
  }
};

bool isThrownAway(const MCStatus& status) {
  const long code = status.GetErrorCode();
  return code == 1 || code == 3 || code == 120001 || code == 120004 || code == 120021;
}

// The records of a first run that was not ended are those of the undisturbed one or errors.
template <typename Record, typename Output, typename Model>
void compareFirstRun(const Output& output, Model&& model, const Request& request) {
  run(model, request);
  std::vector<Record> records;
  output.GetAllCutPoints(records);
  compare("number of records", records.size(), model.Records().size());
  for (std::size_t i = 0; i < records.size(); ++i) {
    if (!records[i].GetStatus().IsError()) {
      within("record", i, [&] { compareRecords(records[i], model.Records()[i]); });
    }
  }
}

void compareFirstRun(const BINOutput& output, const RandomRun& made) {
  plain_model::Events events;
  const Request& request = made.requests.front();
  compareFirstRun<BINAttributeTargetResults>(
      output, plain_model::SupervisedModel(made.list.plain, request.settings, events), request);
}

void compareFirstRun(const EFBINOutput& output, const RandomRun& made) {
  plain_model::Events events;
  const Request& request = made.requests.front();
  compareFirstRun<BINAttributeResults>(
      output, plain_model::EqualFrequencyModel(made.list.plain, request.settings, events), request);
}

template <typename Algorithm, typename Settings>
void runDisturbed(RandomRun& made, const Disturbance& disturbance) {
  MemoryFileSystem memory;
  FailingFileSystem files(memory);
  if (disturbance.failFrom != 0) {
    files.FailAt(disturbance.operation, disturbance.failFrom, disturbance.failures);
  }
  files.LimitRoom(disturbance.room);
  CountingQuery query(disturbance.cancelFrom);
  query.ThrowAt(disturbance.throwAtQuestion);
  RecordingListener listener;
  listener.throwAt = disturbance.throwAtReport;
  Settings settings;
  apply(made.requests.front().settings, settings);
  settings.SetCancelPointer(&query);
  settings.SetProgressListener(&listener);
  settings.SetNSkippedCasesReports(7);
  settings.SetTempDirName(disturbance.directory);
  {
    Algorithm algorithm(settings, made.list.host, files);
    if (disturbance.cancelAtReport) {
      listener.hook = [&algorithm] { algorithm.Cancel(); };
    }
    for (const Request& request : made.requests) {
      apply(request.settings, *algorithm.GetSettings());
      VectorCases cases(request.cases);
      cases.ThrowAtHasNext(disturbance.throwAtHasNext);
      cases.ThrowAtNext(disturbance.throwAtNext);
      const MCStatus status = run(algorithm, cases, request);
      if (&request == &made.requests.front() && !status.IsError()) {
        compareFirstRun(*algorithm.GetOutput(), made);
      }
      check(memory.OpenFiles() == 0, "files are closed");
      check(!isThrownAway(status) || memory.Files() == 0, "data of a failed run are gone");
      std::ostringstream text;
      algorithm.Display(text);
      algorithm.GetStatus();
    }
  }
  check(memory.Files() == 0, "no file is left");
}

void runAny(Choices& choices) {
  if (choices.OneIn(12)) {
    // More candidates than the bytes of a short input make.
    choices.GoOnWith(choices.Bits(2));
  }
  if (!choices.OneIn(4)) {
    RandomRun made = makeRandomRun(choices);
    return compareRun(made);
  }
  const Disturbance disturbance(choices);
  RandomRun made = makeRandomRun(choices);
  std::vector<int> single;
  std::vector<int> empty;
  if (!made.list.host.IsValidList(single, empty)) {
    return;  // no factory makes an algorithm of it
  }
  if (made.supervised) {
    runDisturbed<MCBinning::BINAlgorithm, BINSettings>(made, disturbance);
  } else {
    runDisturbed<MCBinning::EFBINAlgorithm, EFBINSettings>(made, disturbance);
  }
}

}  // namespace
}  // namespace mcbinning_tests

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  mcbinning_tests::Choices choices({bytes, size});
  mcbinning_tests::runAny(choices);
  return 0;
}
