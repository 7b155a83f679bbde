#include "toolkit/fit/fit_model.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "system/limited_process.h"
#include "system/process.h"
#include "tests/toolkit/support/memory_table.h"
#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"
#include "toolkit/fit/text_cases.h"

namespace mcbin {
namespace {

using testing::MemoryTable;
using testing::messageOf;
using testing::TemporaryFiles;

/// TMPDIR is a directory of the test's own.
class FitModel : public ::testing::Test {
 protected:
  FitModel() { mcbinning_tests::SetVariable("TMPDIR", files_.Directory()); }
  ~FitModel() override { mcbinning_tests::SetVariable("TMPDIR", before_); }

  static Model Fit(MemoryTable& table, Monitor& monitor, const FitRequest& request) {
    FitTimings timings;
    TextCases cases(table, request.naTexts);
    return fitModel(request, cases, {monitor, {}, false}, timings);
  }

  const std::string& Directory() const { return files_.Directory(); }

 private:
  const std::string before_ = temporaryRoot();
  TemporaryFiles files_;
};

MemoryTable threeColumns() {
  return {{"a", "b", "t"}, {{"1", "4", "x"}, {"2", "5", "x"}, {"3", "6", "y"}, {"4", "7", "y"}}};
}

FitRequest supervised() {
  FitRequest request;
  request.target = "t";
  request.bins = kDefaultPreBins;
  return request;
}

FitRequest equalFrequency() {
  FitRequest request;
  request.method = Method::EqualFrequency;
  request.bins = 2;
  request.excludePatterns = {"t"};
  return request;
}

/// Does something once the first attribute is binned.
class Meddler : public Monitor {
 public:
  explicit Meddler(std::function<void()> deed) : deed_(std::move(deed)) {}

  void Update(const std::string& task, double, double, const char*) override {
    if (task == "binning attributes" && deed_) std::exchange(deed_, nullptr)();
  }

 private:
  std::function<void()> deed_;
};

TEST_F(FitModel, AnAttributeWhoseFileIsCutShortEndsTheFit) {
  for (const FitRequest& request : {supervised(), equalFrequency()}) {
    MemoryTable table = threeColumns();
    Meddler shortener([this] {
      for (const auto& entry : std::filesystem::recursive_directory_iterator(Directory())) {
        if (entry.is_regular_file()) std::filesystem::resize_file(entry.path(), 8);
      }
    });
    EXPECT_EQ(messageOf<DataError>([&] { Fit(table, shortener, request); }),
              "cannot bin column b: the temporary files in " + Directory() +
                  " are not whole; TMPDIR names another directory");
  }
}

TEST_F(FitModel, AnAttributeThatCannotBeReadEndsTheFit) {
  if (!mcbinning_tests::WithoutFileHandles::IsSet()) {
    GTEST_SKIP() << "the system has no limit of open files";
  }
  MemoryTable table = threeColumns();
  std::optional<mcbinning_tests::WithoutFileHandles> limit;
  Meddler miser([&] { limit.emplace(); });
  const std::string message = messageOf<std::exception>([&] { Fit(table, miser, supervised()); });
  limit.reset();
  EXPECT_EQ(message, "cannot bin column b: Too many open files");
}

}  // namespace
}  // namespace mcbin
