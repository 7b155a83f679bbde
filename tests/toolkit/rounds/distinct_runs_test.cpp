#include "toolkit/rounds/distinct_runs.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <set>

#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"
#include "toolkit/fit/team_work.h"
#include "toolkit/system/temporary_directory.h"

namespace mcbin {
namespace {

using testing::messageOf;

const std::atomic<bool> kGoesOn = false;

TEST(DistinctRuns, CountEachValueOfAllPartsOnceHoweverFewFitInMemory) {
  std::mt19937 random(4);
  for (const std::size_t capacity : {2U, 3U, 64U, 5000U}) {
    for (const int range : {1, 40, 100000}) {
      const TemporaryDirectory directory(temporaryRoot());
      std::vector<DistinctRuns> parts;
      std::set<double> expected;
      for (int part = 0; part < 3; ++part) {
        parts.emplace_back(capacity, directory.Path() + "/" + std::to_string(part));
        for (int i = 0; i < 9000; ++i) {
          const double value = std::uniform_int_distribution<>(-range, range)(random) / 8.0;
          parts.back().Add(value);
          expected.insert(value);
        }
      }
      EXPECT_EQ(countDistinct(parts, kGoesOn), expected.size()) << capacity << ' ' << range;
    }
  }
}

TEST(DistinctRuns, NoneAreNoneAndTheZerosAreOne) {
  std::vector<DistinctRuns> parts;
  EXPECT_EQ(countDistinct(parts, kGoesOn), 0U);
  parts.emplace_back(4, "");
  EXPECT_EQ(countDistinct(parts, kGoesOn), 0U);
  parts[0].Add(0.0);
  parts[0].Add(-0.0);
  EXPECT_EQ(countDistinct(parts, kGoesOn), 1U);
}

TEST(DistinctRuns, AFileThatCannotBeWrittenOrIsGoneIsNamed) {
  DistinctRuns nowhere(2, "/nowhere/values");
  nowhere.Add(1.0);
  nowhere.Add(2.0);
  EXPECT_EQ(messageOf<DataError>([&] { nowhere.Add(3.0); }),
            "cannot write the temporary file /nowhere/values: No such file or directory; TMPDIR "
            "names another directory");
  const TemporaryDirectory directory(temporaryRoot());
  const std::string path = directory.Path() + "/values";
  std::vector<DistinctRuns> parts;
  parts.emplace_back(2, path);
  for (const double value : {1.0, 2.0, 3.0}) parts[0].Add(value);
  std::filesystem::remove(path);
  EXPECT_EQ(messageOf<DataError>([&] { countDistinct(parts, kGoesOn); }),
            "cannot read the temporary file " + path +
                ": No such file or directory; TMPDIR names another directory");
}

TEST(DistinctRuns, CountingEndsWhenItIsAbandoned) {
  std::vector<DistinctRuns> parts;
  parts.emplace_back(20000, "");
  for (int i = 0; i < 20000; ++i) parts[0].Add(i);
  const std::atomic<bool> isAbandoned = true;
  EXPECT_THROW(countDistinct(parts, isAbandoned), Abandoned);
}

}  // namespace
}  // namespace mcbin
