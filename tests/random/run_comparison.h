/// Runs a random run through the library's exported interface and through the plain model and
/// compares everything that a host can read.
#ifndef MCBINNING_TESTS_RANDOM_RUN_COMPARISON_H
#define MCBINNING_TESTS_RANDOM_RUN_COMPARISON_H

#include <mcbinning/algorithms.h>
#include <mcbinning/factories.h>
#include <mcbinning/settings.h>

#include <memory>
#include <string>

#include "plain_model/events.h"
#include "random/random_run.h"

namespace mcbinning_tests {

/// How a comparison makes the library's algorithms, by the factories unless overridden, and who is
/// told when a run has ended.
class ComparisonHost {
 public:
  ComparisonHost() = default;
  ComparisonHost(const ComparisonHost&) = delete;
  ComparisonHost& operator=(const ComparisonHost&) = delete;
  virtual ~ComparisonHost() = default;

  /// Null when the factory refuses the list.
  virtual std::unique_ptr<IBINAlgorithm> Make(BINFactory& factory, BINSettings& settings,
                                              BINVarList& list);
  virtual std::unique_ptr<IEFBINAlgorithm> Make(EFBINFactory& factory, EFBINSettings& settings,
                                                BINVarList& list);

  virtual void AfterRun(IBINAlgorithm& /*algorithm*/, const Request& /*request*/,
                        const MCBinning::MCStatus& /*status*/) {}
  virtual void AfterRun(IEFBINAlgorithm& /*algorithm*/, const Request& /*request*/,
                        const MCBinning::MCStatus& /*status*/) {}
};

/// Sets what `settings` sets.
void apply(const plain_model::Settings& settings, BINSettings& host);
void apply(const plain_model::Settings& settings, EFBINSettings& host);

/// Makes the run that is asked for.
MCBinning::MCStatus run(IBINAlgorithm& algorithm, BINCaseIterator& cases, const Request& request);
MCBinning::MCStatus run(IEFBINAlgorithm& algorithm, BINCaseIterator& cases, const Request& request);
plain_model::Status run(plain_model::SupervisedModel& model, const Request& request);
plain_model::Status run(plain_model::EqualFrequencyModel& model, const Request& request);

/// Throws the first Difference. Doubles are compared bit by bit, except that all NaN values are
/// equal.
void compareWithLibrary(RandomRun& run, const std::string& tempDirectory,
                        plain_model::Events& events);
void compareWithLibrary(RandomRun& run, const std::string& tempDirectory, ComparisonHost& host,
                        plain_model::Events& events);

}  // namespace mcbinning_tests

#endif
