#include "mcbinning/algorithms.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using MCBinning::MCStatus;

/// An algorithm of a host's own that does nothing but tell what it was given as its version.
template <typename Interface, typename Output, typename Settings>
class OwnAlgorithm : public Interface {
 public:
  explicit OwnAlgorithm(std::string version) : version_(std::move(version)) {}
  std::string GetVersion() override { return version_; }
  void SetCancelPointer(MCQueryCancel* /*query*/) override {}
  void Cancel() override {}
  void SetProgressListener(ProgressListener* /*listener*/) override {}
  Output* GetOutput() override { return nullptr; }
  MCStatus GetStatus() override { return {}; }
  Settings* GetSettings() override { return nullptr; }
  void Display(std::ostream& /*os*/) override {}

 private:
  std::string version_;
};

class OwnSupervised : public OwnAlgorithm<IBINAlgorithm, BINOutput, BINSettings> {
 public:
  using OwnAlgorithm::OwnAlgorithm;
  MCStatus Run(BINCaseIterator& /*cases*/, const std::vector<int>* /*attributes*/,
               const std::vector<int>* /*targets*/) override {
    return {};
  }
};

class OwnEqualFrequency : public OwnAlgorithm<IEFBINAlgorithm, EFBINOutput, EFBINSettings> {
 public:
  using OwnAlgorithm::OwnAlgorithm;
  MCStatus Run(BINCaseIterator& /*cases*/, const std::vector<int>* /*attributes*/) override {
    return {};
  }
};

template <typename Own>
void expectCopies() {
  const Own source("one");
  Own copy(source);
  EXPECT_EQ(copy.GetVersion(), "one");
  copy = Own("two");
  EXPECT_EQ(copy.GetVersion(), "two");
}

TEST(AlgorithmsTest, AHostsOwnAlgorithmIsCopiedAndAssigned) {
  expectCopies<OwnSupervised>();
  expectCopies<OwnEqualFrequency>();
}

}  // namespace
