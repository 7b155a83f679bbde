/// A number that stands for all that a host can read of many runs, so that builds and machines can
/// be compared by it.
#ifndef MCBINNING_TESTS_RANDOM_DIGEST_H
#define MCBINNING_TESTS_RANDOM_DIGEST_H

#include <cstdint>
#include <vector>

#include "random/run_comparison.h"

namespace mcbinning_tests {

/// Digests the records of every run that it is told of.
class DigestingHost final : public ComparisonHost {
 public:
  void AfterRun(IBINAlgorithm& algorithm, const Request& request,
                const MCBinning::MCStatus& status) override;
  void AfterRun(IEFBINAlgorithm& algorithm, const Request& request,
                const MCBinning::MCStatus& status) override;

  std::uint64_t Digest() const { return digest_; }

 private:
  template <typename Record>
  void AddRecord(const Record& record);
  void Add(std::uint64_t number);
  void Add(const MCBinning::MCStatus& status);
  void Add(double number);  // all NaN are alike
  template <typename Element>
  void Add(const std::vector<Element>& elements);

  std::uint64_t digest_ = 0;
};

}  // namespace mcbinning_tests

#endif
