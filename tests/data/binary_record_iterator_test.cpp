#include "data/binary_record_iterator.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <fstream>
#include <numeric>
#include <string>
#include <type_traits>
#include <vector>

#include "support/failing_file_system.h"
#include "support/scratch_directory.h"
#include "support/virtual_slots.h"

namespace {

using MCBinning::BinaryRecordIterator;
using mcbinning_tests::FailingFileSystem;
using mcbinning_tests::FileOperation;
using mcbinning_tests::VirtualSlot;

class BinaryRecordIteratorTest : public testing::Test {
 protected:
  ~BinaryRecordIteratorTest() override {
    EXPECT_EQ(files_.OpenFiles(), 0U);
    directory_.Clear();
  }

  std::string Name() const { return directory_.Path() + "/column"; }

  void Write(const std::vector<double>& values, std::size_t extraBytes = 0) const {
    std::ofstream out(Name(), std::ios::binary);
    out.write(reinterpret_cast<const char*>(values.data()),
              static_cast<std::streamsize>(values.size() * sizeof(double)));
    out << std::string(extraBytes, 'x');
  }

  mcbinning_tests::ScratchDirectory directory_;
  FailingFileSystem files_;
};

TEST_F(BinaryRecordIteratorTest, EmptyFileIsAtItsEndAtOnce) {
  Write({});
  BinaryRecordIterator reader(Name(), files_);
  EXPECT_EQ(reader.GetStatus(), 1);
  EXPECT_FALSE(reader.HasNext());
  EXPECT_EQ(reader.Next(), 0.0);
  EXPECT_EQ(reader.GetStatus(), 1);
  EXPECT_EQ(reader.Rewind(), 1);
}

TEST_F(BinaryRecordIteratorTest, FileOfOneValueEndsWithIt) {
  Write({4.25});
  BinaryRecordIterator reader(Name(), files_);
  EXPECT_EQ(reader.GetStatus(), 0);
  EXPECT_TRUE(reader.HasNext());
  EXPECT_EQ(reader.Next(), 4.25);
  EXPECT_EQ(reader.GetStatus(), 1);
  EXPECT_FALSE(reader.HasNext());
  EXPECT_EQ(reader.Next(), 0.0);
  EXPECT_EQ(reader.Rewind(), 0);
  EXPECT_EQ(reader.Next(), 4.25);
}

TEST_F(BinaryRecordIteratorTest, FileThatDoesNotOpenHasStatus3AndSaysSo) {
  testing::internal::CaptureStdout();
  BinaryRecordIterator reader(Name() + "-missing", files_);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "Error: file handle is NULL in BinaryRecordIterator constructor");
  EXPECT_EQ(reader.GetStatus(), 3);
  EXPECT_FALSE(reader.HasNext());
  EXPECT_EQ(reader.Next(), 0.0);
  EXPECT_EQ(reader.Rewind(), 3);
  EXPECT_EQ(reader.GetStatus(), 3);
  EXPECT_EQ(files_.Calls(FileOperation::Seek), 0U);
}

TEST_F(BinaryRecordIteratorTest, BytesAfterTheLastWholeValueAreNoValue) {
  Write({1.0, 2.0}, 7);
  BinaryRecordIterator reader(Name(), files_);
  EXPECT_EQ(reader.Next(), 1.0);
  EXPECT_EQ(reader.Next(), 2.0);
  EXPECT_EQ(reader.GetStatus(), 1);
}

TEST_F(BinaryRecordIteratorTest, EveryValueComesOnceWhateverTheNumberOfBlocks) {
  for (const std::size_t size : {8191U, 8192U, 8193U, 16384U, 20001U}) {
    std::vector<double> values(size);
    for (std::size_t i = 0; i < size; ++i) {
      values[i] = static_cast<double>(i) * 0.5;
    }
    Write(values);
    BinaryRecordIterator reader(Name(), files_);
    for (int round = 0; round < 2; ++round) {
      std::vector<double> got;
      while (reader.HasNext()) {
        got.push_back(reader.Next());
      }
      EXPECT_EQ(reader.GetStatus(), 1);
      EXPECT_TRUE(got == values) << size;
      EXPECT_EQ(reader.Rewind(), 0);
    }
  }
}

TEST_F(BinaryRecordIteratorTest, TakesAsManyAsAreAskedForAndGoesOnFromThere) {
  std::vector<double> values(20001);
  std::iota(values.begin(), values.end(), 1.0);
  Write(values);
  BinaryRecordIterator reader(Name(), files_);
  std::vector<double> got;
  for (const std::size_t count : {1U, 2U, 8188U, 1U, 1U, 8192U, 0U, 3U}) {
    std::vector<double> taken(count);
    EXPECT_EQ(reader.Take(taken), count);
    got.insert(got.end(), taken.begin(), taken.end());
    got.push_back(reader.Next());
  }
  std::vector<double> rest(values.size());
  EXPECT_EQ(reader.Take(rest), values.size() - got.size());
  got.insert(got.end(), rest.begin(), rest.begin() + (20001 - 16396));
  EXPECT_TRUE(got == values);
  EXPECT_EQ(reader.GetStatus(), 1);
  EXPECT_EQ(reader.Take(rest), 0U);
}

TEST_F(BinaryRecordIteratorTest, ReadsInBlocks) {
  Write(std::vector<double>(100000, 1.5));
  BinaryRecordIterator reader(Name(), files_);
  while (reader.HasNext()) {
    reader.Next();
  }
  EXPECT_LT(files_.Calls(FileOperation::Read), 20U);
}

TEST_F(BinaryRecordIteratorTest, RewindInTheMiddleStartsFromTheFirstValue) {
  Write({1.0, 2.0, 3.0});
  BinaryRecordIterator reader(Name(), files_);
  reader.Next();
  reader.Next();
  EXPECT_EQ(reader.Rewind(), 0);
  EXPECT_EQ(reader.Next(), 1.0);
}

TEST_F(BinaryRecordIteratorTest, AReadThatFailsIsAnErrorAndNoEnd) {
  Write(std::vector<double>(10000, 2.0));
  files_.FailAt(FileOperation::Read, 2);
  BinaryRecordIterator reader(Name(), files_);
  std::size_t got = 0;
  while (reader.HasNext()) {
    EXPECT_EQ(reader.Next(), 2.0);
    ++got;
  }
  EXPECT_EQ(got, 8192U);
  EXPECT_EQ(reader.GetStatus(), 3);
  EXPECT_EQ(reader.Next(), 0.0);
  EXPECT_EQ(reader.Rewind(), 0);
  EXPECT_EQ(reader.Next(), 2.0);
}

TEST_F(BinaryRecordIteratorTest, AFirstReadThatFailsIsAnError) {
  Write({1.0});
  files_.FailAt(FileOperation::Read, 1);
  BinaryRecordIterator reader(Name(), files_);
  EXPECT_EQ(reader.GetStatus(), 3);
}

TEST_F(BinaryRecordIteratorTest, ASeekThatFailsIsAnError) {
  Write({1.0, 2.0});
  files_.FailAt(FileOperation::Seek, 1);
  BinaryRecordIterator reader(Name(), files_);
  EXPECT_EQ(reader.Rewind(), 3);
  EXPECT_FALSE(reader.HasNext());
  EXPECT_EQ(reader.Rewind(), 0);
  EXPECT_EQ(reader.Next(), 1.0);
}

TEST(BinaryRecordIteratorSlotsTest, SlotsStandInTheirOrderAndTheDestructorHasNone) {
  // A virtual destructor would take the first two entries; VirtualSlot counts it as slot 0.
  EXPECT_EQ(VirtualSlot(&BinaryRecordIterator::HasNext), mcbinning_tests::kBeforeSlot0);
  EXPECT_EQ(VirtualSlot(&BinaryRecordIterator::Next), 0U);
  EXPECT_EQ(VirtualSlot(&BinaryRecordIterator::GetStatus), 1U);
  EXPECT_EQ(VirtualSlot(&BinaryRecordIterator::Rewind), 2U);
  EXPECT_FALSE(std::has_virtual_destructor_v<BinaryRecordIterator>);
}

}  // namespace
