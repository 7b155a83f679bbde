#include "mcbinning/algorithms.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/virtual_slots.h"

namespace {

using MCBinning::MCStatus;
using mcbinning_tests::VirtualSlot;

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

TEST(AlgorithmsTest, SupervisedSlotOrder) {
  static_assert(std::has_virtual_destructor_v<IBINAlgorithm>);
  EXPECT_EQ(VirtualSlot(&IBINAlgorithm::GetVersion), 1U);
  EXPECT_EQ(VirtualSlot(&IBINAlgorithm::Run), 2U);
  EXPECT_EQ(VirtualSlot(&IBINAlgorithm::SetCancelPointer), 3U);
  EXPECT_EQ(VirtualSlot(&IBINAlgorithm::Cancel), 4U);
  EXPECT_EQ(VirtualSlot(&IBINAlgorithm::SetProgressListener), 5U);
  EXPECT_EQ(VirtualSlot(&IBINAlgorithm::GetOutput), 6U);
  EXPECT_EQ(VirtualSlot(&IBINAlgorithm::GetStatus), 7U);
  EXPECT_EQ(VirtualSlot(&IBINAlgorithm::GetSettings), 8U);
  EXPECT_EQ(VirtualSlot(&IBINAlgorithm::Display), 9U);
}

TEST(AlgorithmsTest, EqualFrequencySlotOrder) {
  static_assert(std::has_virtual_destructor_v<IEFBINAlgorithm>);
  EXPECT_EQ(VirtualSlot(&IEFBINAlgorithm::GetVersion), 1U);
  EXPECT_EQ(VirtualSlot(&IEFBINAlgorithm::Run), 2U);
  EXPECT_EQ(VirtualSlot(&IEFBINAlgorithm::SetCancelPointer), 3U);
  EXPECT_EQ(VirtualSlot(&IEFBINAlgorithm::Cancel), 4U);
  EXPECT_EQ(VirtualSlot(&IEFBINAlgorithm::SetProgressListener), 5U);
  EXPECT_EQ(VirtualSlot(&IEFBINAlgorithm::GetOutput), 6U);
  EXPECT_EQ(VirtualSlot(&IEFBINAlgorithm::GetStatus), 7U);
  EXPECT_EQ(VirtualSlot(&IEFBINAlgorithm::GetSettings), 8U);
  EXPECT_EQ(VirtualSlot(&IEFBINAlgorithm::Display), 9U);
}

TEST(AlgorithmsTest, AHostsOwnAlgorithmIsCopiedAndAssigned) {
  expectCopies<OwnSupervised>();
  expectCopies<OwnEqualFrequency>();
}

}  // namespace
