/// Runs a random run through the library's exported interface and through the plain model and
/// compares everything that a host can read.
#ifndef MCBINNING_TESTS_PLAIN_MODEL_COMPARISON_H
#define MCBINNING_TESTS_PLAIN_MODEL_COMPARISON_H

#include <mcbinning/algorithms.h>
#include <mcbinning/factories.h>
#include <mcbinning/settings.h>

#include <memory>
#include <string>

#include "plain_model/events.h"
#include "plain_model/random_run.h"

namespace plain_model {

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

  virtual void AfterRun(IBINAlgorithm& algorithm, const Request& request,
                        const MCBinning::MCStatus& status);
  virtual void AfterRun(IEFBINAlgorithm& algorithm, const Request& request,
                        const MCBinning::MCStatus& status);
};

/// Sets what `settings` sets.
void apply(const Settings& settings, BINSettings& host);
void apply(const Settings& settings, EFBINSettings& host);

/// The first difference in words, empty when there is none. Doubles are compared bit by bit, except
/// that all NaN values are equal.
std::string compareWithLibrary(RandomRun& run, const std::string& tempDirectory, Events& events);
std::string compareWithLibrary(RandomRun& run, const std::string& tempDirectory,
                               ComparisonHost& host, Events& events);

/// The whole run as text, for whoever has to reduce a difference.
std::string describe(const RandomRun& run);

}  // namespace plain_model

#endif
