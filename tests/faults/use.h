#ifndef MCBINNING_TESTS_FAULTS_USE_H
#define MCBINNING_TESTS_FAULTS_USE_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "faults/faulty_host.h"
#include "mcbinning/status.h"
#include "platform/file_system.h"

namespace mcbinning_tests {

enum class Algorithm { Supervised, EqualFrequency };

/// What is binned, and how.
struct Scenario {
  Algorithm algorithm = Algorithm::Supervised;
  std::size_t cases = 0;
  /// Whole weights go with a run over the whole list, fractional ones with one over a selection of
  /// which a part is refused.
  bool wholeWeights = false;
  double smallBinThreshold = 1.0;
  int distinctValueThreshold = 12;
  std::size_t seed = 0;
};

std::string NameOf(const Scenario& scenario);

/// The cells of a scenario's cases: a scale of few values some of which are user-missing, one of
/// many values that needs pre-bins, a category, the target, the weight. Among them are missing
/// cells and cases to be passed over.
std::vector<std::vector<double>> CasesOf(const Scenario& scenario);

/// One record of an output, bit by bit.
struct ResultRecord {
  MCBinning::MCStatus status;
  std::vector<int> indexes;
  std::vector<std::uint64_t> figures;

  bool operator==(const ResultRecord&) const = default;
};

/// A host's use of one algorithm: made by a factory, run, read, deleted.
class Use {
 public:
  Use() = default;
  Use(const Use&) = delete;
  Use& operator=(const Use&) = delete;
  virtual ~Use() = default;

  /// What the factory, the same one at every call, says. Without an algorithm when it is an error.
  virtual MCBinning::MCStatus Create() = 0;
  virtual bool Exists() const = 0;

  /// Over all cases of the host.
  virtual MCBinning::MCStatus Run() = 0;
  virtual MCBinning::MCStatus GetStatus() = 0;

  /// Asks for everything there is to ask for and answers all records. Throws std::bad_alloc.
  virtual std::vector<ResultRecord> Read() = 0;
};

/// All but the scenario is borrowed. With `files` the algorithm is not made by a factory, which
/// gives every algorithm the real ones.
std::unique_ptr<Use> MakeUse(const Scenario& scenario, FaultyHost& host,
                             const std::string& directory, MCBinning::FileSystem* files = nullptr);

}  // namespace mcbinning_tests

#endif
