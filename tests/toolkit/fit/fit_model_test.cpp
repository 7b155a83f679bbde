#include "toolkit/fit/fit_model.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>

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
  FitModel() { ::setenv("TMPDIR", files_.Directory().c_str(), 1); }
  ~FitModel() override { ::setenv("TMPDIR", before_.c_str(), 1); }

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
                  " are not whole: is the disk full? TMPDIR names another directory");
  }
}

TEST_F(FitModel, AnAttributeThatCannotBeReadEndsTheFit) {
  MemoryTable table = threeColumns();
  rlimit before = {};
  ::getrlimit(RLIMIT_NOFILE, &before);
  Meddler miser([before] {
    const rlimit none = {0, before.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &none);
  });
  const std::string message = messageOf<std::exception>([&] { Fit(table, miser, supervised()); });
  ::setrlimit(RLIMIT_NOFILE, &before);
  EXPECT_EQ(message, "cannot bin column b: memory or file descriptors ran out");
}

}  // namespace
}  // namespace mcbin
