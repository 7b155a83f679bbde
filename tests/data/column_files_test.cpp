#include "data/column_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/failing_file_system.h"
#include "support/host_objects.h"
#include "support/scratch_directory.h"

namespace mcbinning_tests {
namespace {

using MCBinning::ColumnBuffer;
using MCBinning::ColumnFiles;

MCBinning::MCStatus error(long code) { return {code, false}; }

unsigned long tickOf(const std::string& name) {
  return std::stoul(name.substr(name.rfind('/') + 1), nullptr, 16);
}

std::vector<double> contents(const std::string& name) {
  std::vector<double> values(std::filesystem::file_size(name) / sizeof(double));
  std::ifstream(name, std::ios::binary)
      .read(reinterpret_cast<char*>(values.data()),
            static_cast<std::streamsize>(values.size() * sizeof(double)));
  return values;
}

/// A buffer of two columns, (1, 2) and (3).
void fill(ColumnBuffer& buffer) {
  ASSERT_TRUE(buffer.Allocate(2, 10));
  buffer.Append(0, 1.0);
  buffer.Append(0, 2.0);
  buffer.Append(1, 3.0);
}

class ColumnFilesTest : public testing::Test {
 protected:
  ~ColumnFilesTest() override {
    EXPECT_EQ(files_.OpenFiles(), 0U);
    columns_.Remove();
    EXPECT_EQ(files_.Claims(), 0U);
  }

  /// Makes somebody else take the name of the call `call` (from 1) of `operation` just before it.
  void TakeName(FileOperation operation, std::vector<std::size_t> calls) {
    files_.SetHook([this, operation, calls](FileOperation current, const std::string& name) {
      const std::size_t number = files_.Calls(operation) + 1;
      if (current == operation && std::find(calls.begin(), calls.end(), number) != calls.end()) {
        std::ofstream(name) << "theirs";
        taken_.push_back(name);
      }
    });
  }

  /// Removes what somebody else made, which must be as they left it.
  void RemoveTheirs() {
    for (const std::string& name : taken_) {
      std::string text;
      std::ifstream(name) >> text;
      EXPECT_EQ(text, "theirs") << name;
      std::filesystem::remove(name);
    }
  }

  ScratchDirectory directory_;
  FailingFileSystem files_;
  MCBinning::CancelState cancel_{nullptr};
  std::vector<std::string> taken_;
  ColumnFiles columns_{directory_.Path(), cancel_, files_};
  ColumnBuffer buffer_;
};

TEST_F(ColumnFilesTest, NamesAreTheDirectoryASlashAndConsecutiveHexadecimalTicks) {
  ASSERT_TRUE(columns_.SetUp(3).IsOK());
  ASSERT_EQ(columns_.Names().size(), 3U);
  const unsigned long tick = tickOf(columns_.Names()[0]);
  char expected[32];
  for (unsigned long column = 0; column < 3; ++column) {
    std::snprintf(expected, sizeof expected, "/%lx", tick + column);
    EXPECT_EQ(columns_.Names()[column], directory_.Path() + expected);
  }
  EXPECT_TRUE(directory_.IsEmpty());
}

TEST_F(ColumnFilesTest, TheFirstTickIsTheProcessorTimeAtEverySetUp) {
  for (int round = 0; round < 2; ++round) {
    const std::clock_t before = std::clock();
    ASSERT_TRUE(columns_.SetUp(1).IsOK());
    EXPECT_GE(tickOf(columns_.Names()[0]), static_cast<unsigned long>(before));
    EXPECT_LE(tickOf(columns_.Names()[0]), static_cast<unsigned long>(std::clock()));
  }
}

TEST_F(ColumnFilesTest, ASeparatorIsAddedOnlyWhereOneIsMissing) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"dir", "dir/"}, {"dir/", "dir/"}, {"dir\\", "dir\\"}, {"", ""}, {"/", "/"}, {"\\", "\\"}};
  for (const auto& [directory, prefix] : cases) {
    files_.FailAt(FileOperation::Probe, files_.Calls(FileOperation::Probe) + 1);
    files_.FailProbeWith(MCBinning::NameState::Free);
    ColumnFiles columns(directory, cancel_, files_);
    ASSERT_TRUE(columns.SetUp(1).IsOK());
    const std::string& name = columns.Names()[0];
    EXPECT_EQ(name.substr(0, prefix.size()), prefix);
    EXPECT_EQ(name.find_first_not_of("0123456789abcdef", prefix.size()), std::string::npos) << name;
    EXPECT_GT(name.size(), prefix.size());
  }
}

TEST_F(ColumnFilesTest, FilesComeWithTheFirstFlushAndGrowWithEveryFurtherOne) {
  ASSERT_TRUE(columns_.SetUp(2).IsOK());
  fill(buffer_);
  ASSERT_TRUE(columns_.Flush(buffer_).IsOK());
  EXPECT_EQ(buffer_.Count(0), 0U);
  EXPECT_EQ(buffer_.Count(1), 0U);
  buffer_.Append(1, 4.0);
  ASSERT_TRUE(columns_.Flush(buffer_).IsOK());
  EXPECT_EQ(contents(columns_.Names()[0]), (std::vector<double>{1.0, 2.0}));
  EXPECT_EQ(contents(columns_.Names()[1]), (std::vector<double>{3.0, 4.0}));
}

TEST_F(ColumnFilesTest, AFlushOfNothingStillMakesTheFiles) {
  ASSERT_TRUE(columns_.SetUp(2).IsOK());
  ASSERT_TRUE(buffer_.Allocate(2, 10));
  ASSERT_TRUE(columns_.Flush(buffer_).IsOK());
  EXPECT_EQ(directory_.Files().size(), 2U);
}

TEST_F(ColumnFilesTest, FilesAreClaimedFromTheFirstFlushUntilTheyAreGone) {
  for (int round = 0; round < 2; ++round) {
    ASSERT_TRUE(columns_.SetUp(2).IsOK());
    EXPECT_EQ(files_.Claims(), 0U);
    fill(buffer_);
    ASSERT_TRUE(columns_.Flush(buffer_).IsOK());
    ASSERT_TRUE(columns_.Flush(buffer_).IsOK());
    EXPECT_EQ(files_.Claims(), 1U);
    EXPECT_EQ(directory_.Entries().size(), 3U);
  }
  EXPECT_EQ(files_.Calls(FileOperation::Claim), 2U);
}

TEST_F(ColumnFilesTest, FilesAreMadeWithoutAClaimWhereThereCanBeNone) {
  files_.FailAt(FileOperation::Claim, 1);
  ASSERT_TRUE(columns_.SetUp(2).IsOK());
  fill(buffer_);
  ASSERT_TRUE(columns_.Flush(buffer_).IsOK());
  ASSERT_TRUE(columns_.Flush(buffer_).IsOK());
  EXPECT_EQ(contents(columns_.Names()[1]), std::vector<double>{3.0});
  EXPECT_EQ(directory_.Entries().size(), 2U);
}

TEST_F(ColumnFilesTest, AnExistingFileWithTheTicksNameIsNeverTouched) {
  TakeName(FileOperation::Probe, {1, 2, 4});
  ASSERT_TRUE(columns_.SetUp(2).IsOK());
  const unsigned long first = tickOf(taken_[0]);
  EXPECT_EQ(tickOf(columns_.Names()[0]), first + 2);
  EXPECT_EQ(tickOf(columns_.Names()[1]), first + 4);
  fill(buffer_);
  ASSERT_TRUE(columns_.Flush(buffer_).IsOK());
  columns_.Remove();
  EXPECT_EQ(directory_.Files().size(), 3U);
  RemoveTheirs();
}

TEST_F(ColumnFilesTest, WhoComesSecondTakesTheNextFreeName) {
  TakeName(FileOperation::Create, {1, 2, 4});
  {
    ColumnFiles columns(directory_.Path(), cancel_, files_);
    ASSERT_TRUE(columns.SetUp(2).IsOK());
    const unsigned long first = tickOf(columns.Names()[0]);
    ColumnBuffer buffer;
    fill(buffer);
    ASSERT_TRUE(columns.Flush(buffer).IsOK());
    EXPECT_EQ(tickOf(columns.Names()[0]), first + 3);
    EXPECT_EQ(tickOf(columns.Names()[1]), first + 4);
    EXPECT_EQ(contents(columns.Names()[0]), (std::vector<double>{1.0, 2.0}));
    EXPECT_EQ(contents(columns.Names()[1]), (std::vector<double>{3.0}));
  }
  EXPECT_EQ(directory_.Files().size(), 3U);
  RemoveTheirs();
}

TEST_F(ColumnFilesTest, AChosenNameThatWasNotUsedBelongsToNobody) {
  {
    ColumnFiles columns(directory_.Path(), cancel_, files_);
    ASSERT_TRUE(columns.SetUp(1).IsOK());
    std::ofstream(columns.Names()[0]) << "theirs";
    taken_ = columns.Names();
  }
  EXPECT_EQ(directory_.Files().size(), 1U);
  RemoveTheirs();
}

TEST_F(ColumnFilesTest, ACancelInTheSearchEndsItAtTheNextFreeName) {
  CountingQuery query(2);
  cancel_.SetQuery(&query);
  TakeName(FileOperation::Probe, {2, 3, 4});
  EXPECT_EQ(columns_.SetUp(3), error(1));
  EXPECT_EQ(query.Asked(), 2U);
  EXPECT_EQ(files_.Calls(FileOperation::Probe), 5U);
  EXPECT_EQ(columns_.Names()[1], "");
  EXPECT_EQ(columns_.Names()[2], "");
  RemoveTheirs();
}

TEST_F(ColumnFilesTest, ACancelWithoutATakenNameDoesNotEndTheSearch) {
  CountingQuery query(1);
  cancel_.SetQuery(&query);
  EXPECT_TRUE(columns_.SetUp(3).IsOK());
  EXPECT_EQ(query.Asked(), 0U);
}

TEST_F(ColumnFilesTest, ErrorsOfTheSearchReplaceACancel) {
  CountingQuery query(1);
  cancel_.SetQuery(&query);
  TakeName(FileOperation::Probe, {1});
  files_.FailAt(FileOperation::Probe, 2);
  EXPECT_EQ(columns_.SetUp(1), error(120021));
  RemoveTheirs();
}

TEST_F(ColumnFilesTest, ADirectoryThatIsNotThereGives120001) {
  ColumnFiles missing(directory_.Path() + "/missing", cancel_, files_);
  EXPECT_EQ(missing.SetUp(2), error(120001));
  std::ofstream(directory_.Path() + "/file") << "x";
  ColumnFiles noDirectory(directory_.Path() + "/file", cancel_, files_);
  EXPECT_EQ(noDirectory.SetUp(2), error(120001));
  directory_.Clear();
}

TEST_F(ColumnFilesTest, ADirectoryNameWithAZeroByteGives120001AndIsNotSearched) {
  files_.SetHook([this](FileOperation, const std::string&) {
    if (files_.Calls(FileOperation::Probe) > 10) {
      throw std::runtime_error("the search does not end");
    }
  });
  ColumnFiles columns(directory_.Path() + std::string(1, '\0'), cancel_, files_);
  EXPECT_EQ(columns.SetUp(1), error(120001));
  EXPECT_EQ(files_.Calls(FileOperation::Probe), 0U);
}

TEST_F(ColumnFilesTest, TooManyOpenFilesGive120021) {
  files_.FailProbeWith(MCBinning::NameState::TooManyOpenFiles);
  files_.FailAt(FileOperation::Probe, 2);
  EXPECT_EQ(columns_.SetUp(3), error(120021));
  EXPECT_EQ(files_.Calls(FileOperation::Probe), 2U);
}

TEST_F(ColumnFilesTest, ADirectoryThatMayNotBeUsedGives120021AtOnce) {
  files_.FailProbeWith(MCBinning::NameState::DirectoryRefused);
  files_.FailAt(FileOperation::Probe, 1);
  EXPECT_EQ(columns_.SetUp(1), error(120021));
  EXPECT_EQ(files_.Calls(FileOperation::Probe), 1U);
}

TEST_F(ColumnFilesTest, FlushThatCannotMakeWriteOrCloseAFileGives120021) {
  for (const auto operation : {FileOperation::Create, FileOperation::Write, FileOperation::Close}) {
    for (std::size_t call = 1; call <= 2; ++call) {
      FailingFileSystem files;
      files.FailAt(operation, call);
      ColumnFiles columns(directory_.Path(), cancel_, files);
      ASSERT_TRUE(columns.SetUp(2).IsOK());
      ColumnBuffer buffer;
      fill(buffer);
      EXPECT_EQ(columns.Flush(buffer), error(120021)) << static_cast<int>(operation) << call;
      EXPECT_EQ(files.Calls(FileOperation::Create), call);
      EXPECT_EQ(files.OpenFiles(), 0U);
    }
  }
}

TEST_F(ColumnFilesTest, LaterFlushThatCannotOpenAFileGives120021) {
  files_.FailAt(FileOperation::OpenForAppend, 2);
  ASSERT_TRUE(columns_.SetUp(2).IsOK());
  fill(buffer_);
  ASSERT_TRUE(columns_.Flush(buffer_).IsOK());
  EXPECT_EQ(columns_.Flush(buffer_), error(120021));
}

TEST_F(ColumnFilesTest, AFileThatSomebodyRemovedIsNotMadeAnew) {
  ASSERT_TRUE(columns_.SetUp(1).IsOK());
  ASSERT_TRUE(buffer_.Allocate(1, 10));
  ASSERT_TRUE(columns_.Flush(buffer_).IsOK());
  std::filesystem::remove(columns_.Names()[0]);
  EXPECT_EQ(columns_.Flush(buffer_), error(120021));
  EXPECT_TRUE(directory_.Files().empty());
}

TEST_F(ColumnFilesTest, ANameTakenAtTheFlushCanEndInTheErrorsOfTheSearch) {
  TakeName(FileOperation::Create, {1});
  files_.FailAt(FileOperation::Probe, 2);
  ASSERT_TRUE(columns_.SetUp(1).IsOK());
  ASSERT_TRUE(buffer_.Allocate(1, 10));
  EXPECT_EQ(columns_.Flush(buffer_), error(120021));
  RemoveTheirs();
}

TEST_F(ColumnFilesTest, AFlushThatFailsForgetsTheNamesThatItDidNotUse) {
  files_.FailAt(FileOperation::Create, 2);
  ASSERT_TRUE(columns_.SetUp(3).IsOK());
  const std::string first = columns_.Names()[0];
  ASSERT_TRUE(buffer_.Allocate(3, 10));
  EXPECT_EQ(columns_.Flush(buffer_), error(120021));
  EXPECT_EQ(columns_.Names(), (std::vector<std::string>{first, "", ""}));
}

TEST_F(ColumnFilesTest, RemoveAndSetUpTakeTheEarlierFilesAway) {
  ASSERT_TRUE(columns_.SetUp(2).IsOK());
  fill(buffer_);
  ASSERT_TRUE(columns_.Flush(buffer_).IsOK());
  ASSERT_TRUE(columns_.SetUp(2).IsOK());
  EXPECT_TRUE(directory_.IsEmpty());
  ASSERT_TRUE(columns_.Flush(buffer_).IsOK());
  EXPECT_EQ(directory_.Files().size(), 2U);
  columns_.Remove();
  EXPECT_TRUE(directory_.IsEmpty());
  EXPECT_TRUE(columns_.Names().empty());
}

TEST_F(ColumnFilesTest, AFileThatCannotBeRemovedForAMomentIsTriedAgainAtOnce) {
  files_.FailAt(FileOperation::Remove, 2);
  ASSERT_TRUE(columns_.SetUp(2).IsOK());
  fill(buffer_);
  ASSERT_TRUE(columns_.Flush(buffer_).IsOK());
  columns_.Remove();
  EXPECT_TRUE(directory_.IsEmpty());
  EXPECT_EQ(files_.Calls(FileOperation::Remove), 3U);
}

TEST_F(ColumnFilesTest, AFileThatCouldNotBeRemovedIsTriedAgainAtTheEnd) {
  files_.FailAt(FileOperation::Remove, 1, 2);
  {
    ColumnFiles columns(directory_.Path(), cancel_, files_);
    ASSERT_TRUE(columns.SetUp(2).IsOK());
    ColumnBuffer buffer;
    fill(buffer);
    ASSERT_TRUE(columns.Flush(buffer).IsOK());
    columns.Remove();
    EXPECT_EQ(directory_.Files().size(), 1U);
  }
  EXPECT_TRUE(directory_.IsEmpty());
  EXPECT_EQ(files_.Calls(FileOperation::Remove), 4U);
}

}  // namespace
}  // namespace mcbinning_tests
