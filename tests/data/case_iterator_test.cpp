#include "mcbinning/case_iterator.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "support/virtual_slots.h"

namespace {

TEST(CaseIteratorTest, SlotOrder) {
  using mcbinning_tests::VirtualSlot;
  static_assert(std::has_virtual_destructor_v<BINCaseIterator>);
  EXPECT_EQ(VirtualSlot(&BINCaseIterator::HasNext), 1U);
  EXPECT_EQ(VirtualSlot(&BINCaseIterator::Next), 2U);
}

}  // namespace
