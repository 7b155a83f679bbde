#include "data/column_buffer.h"

#include <gtest/gtest.h>
#include <mccomvor/missing_value.h>

namespace {

using MCBinning::ColumnBuffer;

TEST(ColumnBufferTest, ColumnsFillIndependentlyAndLieOneAfterTheOther) {
  ColumnBuffer buffer;
  ASSERT_TRUE(buffer.Allocate(3, 4));
  EXPECT_EQ(buffer.Columns(), 3U);
  EXPECT_EQ(buffer.Capacity(), 4U);
  EXPECT_TRUE(buffer.Append(0, 1.0));
  EXPECT_TRUE(buffer.Append(2, 2.0));
  EXPECT_TRUE(buffer.Append(2, 3.0));
  EXPECT_EQ(buffer.Count(0), 1U);
  EXPECT_EQ(buffer.Count(1), 0U);
  EXPECT_EQ(buffer.Count(2), 2U);
  EXPECT_EQ(buffer.At(2, 1), 3.0);
  EXPECT_EQ(buffer.Values(2), buffer.Values(0) + 8);
}

TEST(ColumnBufferTest, IsFullAsSoonAsOneColumnIs) {
  ColumnBuffer buffer;
  ASSERT_TRUE(buffer.Allocate(2, 2));
  buffer.Append(1, 1.0);
  buffer.Append(0, 1.0);
  EXPECT_FALSE(buffer.IsFull());
  buffer.Append(1, 2.0);
  EXPECT_TRUE(buffer.IsFull());
  buffer.Append(0, 2.0);
  EXPECT_TRUE(buffer.IsFull());
  buffer.Reset();
  EXPECT_FALSE(buffer.IsFull());
  EXPECT_EQ(buffer.Count(0), 0U);
  EXPECT_EQ(buffer.Count(1), 0U);
}

TEST(ColumnBufferTest, AColumnThatDoesNotExistTakesNothing) {
  ColumnBuffer buffer;
  EXPECT_FALSE(buffer.Append(0, 1.0));
  ASSERT_TRUE(buffer.Allocate(2, 1));
  EXPECT_FALSE(buffer.Append(2, 1.0));
  EXPECT_FALSE(buffer.Append(static_cast<std::size_t>(-1), 1.0));
  EXPECT_FALSE(buffer.IsFull());
  EXPECT_EQ(buffer.Count(0), 0U);
  EXPECT_EQ(buffer.Count(1), 0U);
}

TEST(ColumnBufferTest, LookupOutOfRangeGivesTheMissingValue) {
  ColumnBuffer buffer;
  EXPECT_EQ(buffer.At(0, 0), MCMV::gMissingValue);
  ASSERT_TRUE(buffer.Allocate(2, 3));
  buffer.Append(1, 5.0);
  EXPECT_EQ(buffer.At(1, 0), 5.0);
  EXPECT_EQ(buffer.At(1, 1), MCMV::gMissingValue);
  EXPECT_EQ(buffer.At(2, 0), MCMV::gMissingValue);
  EXPECT_EQ(buffer.At(static_cast<std::size_t>(-1), 0), MCMV::gMissingValue);
}

TEST(ColumnBufferTest, ABufferWithoutColumnsIsNeverFull) {
  ColumnBuffer buffer;
  ASSERT_TRUE(buffer.Allocate(0, 10000));
  EXPECT_FALSE(buffer.IsFull());
  buffer.Reset();
}

}  // namespace
