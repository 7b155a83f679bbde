#include "toolkit/fit/parallel_passes.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/toolkit/support/memory_table.h"
#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"
#include "toolkit/fit/fit_model.h"
#include "toolkit/fit/text_cases.h"
#include "toolkit/model/model_json.h"

namespace mcbin {
namespace {

using testing::MemoryTable;
using testing::messageOf;

/// Cases of a table of its own.
class OwnCases : public TextCases {
 public:
  OwnCases(std::unique_ptr<MemoryTable> table, const std::vector<std::string>& naTexts)
      : TextCases(*table, naTexts), table_(std::move(table)) {}

 private:
  std::unique_ptr<MemoryTable> table_;
};

using Rows = std::vector<std::vector<std::string>>;

Rows someRows() {
  Rows rows;
  for (int i = 0; i < 400; ++i) {
    const auto text = [](int number) { return std::to_string(number); };
    rows.push_back({text(i * 37 % 101), text(i * 11 % 17), i % 9 == 0 ? "" : text(i),
                    text(i * i % 89), text(i % 4), i * 37 % 101 > 60 ? "yes" : "no"});
  }
  return rows;
}

FitRequest request() {
  FitRequest request;
  request.target = "t";
  request.weight = "w";
  request.missing = {"a=5,1234", "d=88", "w=9"};
  return request;
}

/// The model of the first rows, while the other threads see the second ones.
std::string fitted(std::size_t jobs, const Rows& first, const Rows& others,
                   std::vector<std::string>* notes = nullptr, Monitor&& monitor = Monitor()) {
  const FitRequest asked = request();
  const std::vector<std::string> names = {"a", "b", "c", "d", "w", "t"};
  MemoryTable table(names, first);
  TextCases cases(table, asked.naTexts);
  FitTimings timings;
  FitWatch watch{monitor, {}, false};
  watch.jobs = jobs;
  watch.another = [&] {
    return std::make_unique<OwnCases>(std::make_unique<MemoryTable>(names, others), asked.naTexts);
  };
  if (notes != nullptr) watch.noted = [notes](const std::string& n) { notes->push_back(n); };
  return modelToJson(fitModel(asked, cases, watch, timings));
}

TEST(ParallelPasses, TheModelDoesNotDependOnTheNumberOfThreads) {
  const Rows rows = someRows();
  std::vector<std::string> notes;
  const std::string alone = fitted(1, rows, rows, &notes);
  EXPECT_EQ(notes, (std::vector<std::string>{
                       "column a: no case has the declared missing value 1234",
                       "column w: no case has the declared missing value 9",
                   }));
  for (std::size_t jobs : {2U, 3U, 4U, 7U}) {
    std::vector<std::string> others;
    EXPECT_EQ(fitted(jobs, rows, rows, &others), alone) << jobs;
    EXPECT_EQ(others, notes) << jobs;
  }
}

TEST(ParallelPasses, NotesOfLongNamesAreToldApart) {
  const std::string name(70, 'x');
  FitRequest asked;
  asked.target = "t";
  asked.missing = {name + "1=5", name + "2=5"};
  for (const std::size_t jobs : {1U, 2U}) {
    const auto table = [&] {
      return std::make_unique<MemoryTable>(std::vector<std::string>{name + "1", name + "2", "t"},
                                           Rows{{"1", "5", "a"}, {"2", "1", "b"}, {"3", "2", "b"}});
    };
    const auto first = table();
    TextCases cases(*first, asked.naTexts);
    Monitor monitor;
    FitTimings timings;
    std::size_t notes = 0;
    FitWatch watch{monitor, {}, false};
    watch.jobs = jobs;
    watch.another = [&] { return std::make_unique<OwnCases>(table(), asked.naTexts); };
    watch.noted = [&](const std::string& /*note*/) { ++notes; };
    fitModel(asked, cases, watch, timings);
    EXPECT_EQ(notes, 1U) << jobs;
  }
}

TEST(ParallelPasses, DataThatAreNotTheSameForAllThreadsEndTheFit) {
  const Rows rows = someRows();
  Rows weights = rows;
  weights[6][4] = "3";
  Rows classes = rows;
  classes[7][5] = classes[7][5] == "yes" ? "no" : "yes";
  Rows fewer(rows.begin(), rows.end() - 1);
  for (const Rows& others : {weights, classes, fewer}) {
    EXPECT_EQ(messageOf<DataError>([&] { fitted(2, rows, others); }),
              "the data changed while it was read: run it again");
  }
}

TEST(ParallelPasses, TheFailureOfOneThreadEndsTheFit) {
  const Rows rows = someRows();
  Rows others = rows;
  others[300][1] = "text";
  EXPECT_EQ(messageOf<DataError>([&] { fitted(2, rows, others); }),
            "table, line 301: column b changed while the data were read: run it again");
}

/// Stops the work at the first look.
class Stopper : public Monitor {
 public:
  void ThrowIfStopped() override {
    if (++looks_ > 1) throw Interrupted(2);
  }

 private:
  int looks_ = 0;
};

TEST(ParallelPasses, TheMonitorStopsThemAll) {
  Rows rows;
  for (int i = 0; i < 400; ++i) {
    for (const auto& row : someRows()) rows.push_back(row);
  }
  EXPECT_THROW(fitted(3, rows, rows, nullptr, Stopper()), Interrupted);
}

}  // namespace
}  // namespace mcbin
