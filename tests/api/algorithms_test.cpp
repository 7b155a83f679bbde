#include "mcbinning/algorithms.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "support/virtual_slots.h"

namespace {

using mcbinning_tests::VirtualSlot;

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

}  // namespace
