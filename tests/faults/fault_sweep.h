#ifndef MCBINNING_TESTS_FAULTS_FAULT_SWEEP_H
#define MCBINNING_TESTS_FAULTS_FAULT_SWEEP_H

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "faults/faulty_host.h"
#include "faults/use.h"
#include "mcbinning/status.h"
#include "support/allocation_hooks.h"
#include "support/failing_file_system.h"
#include "support/scratch_directory.h"

namespace mcbinning_tests {

/// All that a use needs and that can be made to fail under it.
struct Stage {
  explicit Stage(const std::vector<std::vector<double>>& cases) : host(cases) {}

  FaultyHost host;
  FailingFileSystem files;
  std::optional<AllocationsFail> allocations;
  std::unique_ptr<Use> use;
};

/// A way to disturb a use, and what may come of it.
struct FaultKind {
  std::string name;

  /// Makes the call of that number (from 1) fail, and counts the calls from now on.
  std::function<void(Stage& stage, std::size_t number)> arm;
  std::function<std::size_t(const Stage& stage)> calls;

  /// Before the results are judged and the algorithm is used again. Without it the fault stays
  /// armed until the algorithm is gone.
  std::function<void(Stage& stage)> disarm;

  /// What a factory or a run answers that the fault ended.
  MCBinning::MCStatus named;

  /// The fault ends what it strikes; otherwise it may spoil a record or do no harm.
  bool endsTheRun = false;

  /// The values that it lost stay lost for later runs of the object.
  bool losesValues = false;

  /// The object says so for ever, and does not ask again.
  bool cancels = false;

  /// The algorithm works on the failing file system, and comes from no factory.
  bool overFiles = false;
};

struct SweepFigures {
  std::size_t points = 0;
  std::size_t tried = 0;
};

/// Whether the environment asks for every point of the small scenarios.
bool IsFullSweep();

/// Uses the algorithm of a scenario with the first, the second, ... call failing, until no call is
/// left to fail, and checks that every use names its fault or is right, leaves nothing, and is
/// followed by uses that are right.
class FaultSweep {
 public:
  FaultSweep(const Scenario& scenario, const FaultKind& kind);

  /// Tries at most about so many points, evenly spread.
  SweepFigures Run(std::size_t limit);

 private:
  struct Answer {
    MCBinning::MCStatus status;
    std::vector<ResultRecord> records;
  };

  /// Calls made up to the end of a step of a use.
  struct Calls {
    std::size_t created = 0;
    std::size_t ran = 0;
    std::size_t all = 0;
  };

  std::unique_ptr<Stage> MakeStage() const;
  std::size_t Try(std::size_t number);
  void UseAndCheck(Stage& stage, std::size_t number, Calls& calls);
  void CheckAfterRun(Stage& stage, std::size_t number, const Calls& calls,
                     const MCBinning::MCStatus& status, const Answer& answer);
  void CheckRun(const Stage& stage, const Answer& answer, bool struck);
  void CheckNextRun(Stage& stage, const Answer& before);
  void CheckNewUse();
  bool IsRightOrSpoiled(const ResultRecord& record, std::size_t position) const;

  FaultKind kind_;
  Scenario scenario_;
  std::vector<std::vector<double>> cases_;
  ScratchDirectory directory_;
  Answer right_;
};

}  // namespace mcbinning_tests

#endif
