#include "toolkit/rounds/local_engine.h"

#include <fmt/format.h>
#include <mccomvor/missing_value.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <limits>
#include <optional>
#include <utility>

#include "toolkit/fit/column_cases.h"
#include "toolkit/fit/status_text.h"
#include "toolkit/fit/team_work.h"
#include "toolkit/rounds/distinct_runs.h"
#include "toolkit/system/temporary_directory.h"

namespace mcbin {
namespace {

constexpr std::size_t kBlock = 4096;
/// Distinct values held by all threads.
constexpr std::size_t kMostHeld = std::size_t{1} << 24U;

/// The batches of a reader for one of several threads.
class SharedBatches : public BatchReader {
 public:
  SharedBatches(BatchReader& reader, std::mutex& mutex) : reader_(reader), mutex_(mutex) {}

  const std::vector<ColumnHead>& Heads() const override { return reader_.Heads(); }
  bool NextBatch(ColumnBatch& batch) override {
    const std::lock_guard<std::mutex> lock(mutex_);
    return reader_.NextBatch(batch);
  }
  void Rewind() override {}
  std::uint64_t Rows() const override { return 0; }

 private:
  BatchReader& reader_;
  std::mutex& mutex_;
};

/// What the threads of a round share.
struct Round {
  const PassSetting& setting;
  const FeedLayout& layout;
  const BINRoundQuestion& question;
  const BINRoundCounter& counter;
  const std::vector<BINNumericUserMissing>& userMissing;
  std::string directory;  ///< For distinct values; empty when none are asked for.
  std::size_t jobs;
  std::atomic<bool> isAbandoned = false;
};

/// One thread's part of a round: it reads cases into blocks of columns and has them counted.
class Part {
 public:
  Part(std::size_t number, BatchReader& batches, std::mutex& mutex, const Round& round)
      : round_(round),
        batches_(batches, mutex),
        cases_(batches_, round.setting.request.naTexts),
        reader_(cases_, round.setting.columns, round.layout, round.setting.scan,
                round.setting.request.naTexts, round.setting.request.rounding),
        columns_(round.question.attributes.size()) {
    if (round.directory.empty()) return;
    const std::size_t parts = round.jobs * columns_.size();
    for (std::size_t item = 0; item < columns_.size(); ++item) {
      distinct_.emplace_back(std::max(kMostHeld / parts, kBlock),
                             fmt::format("{}/{}-{}", round.directory, item, number));
    }
  }

  void Work() {
    while (cases_.NextCase()) {
      TakeCase();
      if (weights_.size() == kBlock) CountBlock();
    }
    CountBlock();
  }

  std::uint64_t CasesRead() const { return casesRead_; }
  const CaseCounts& Counts() const { return counts_; }
  const BINRoundAnswer& Answer() const { return answer_; }
  Notes NeverMet() const { return reader_.NeverMet(); }
  DistinctRuns TakeDistinct(std::size_t item) { return std::move(distinct_[item]); }

 private:
  void TakeCase() {
    const int code = reader_.TargetCode();
    const double weight = reader_.RoundedWeight();
    const bool isUsed = weight != MCMV::gMissingValue;
    ++counts_.read;
    ++(isUsed ? counts_.used : counts_.droppedForWeight);
    codes_.push_back(round_.layout.targetColumn ? code : 0);
    weights_.push_back(isUsed ? weight : 0.0);
    const bool isSearched = isUsed && codes_.back() >= 0;
    for (std::size_t item = 0; item < columns_.size(); ++item) {
      const std::size_t attribute = round_.question.attributes[item].attribute;
      bool isDeclared = false;
      const std::optional<double> value =
          reader_.Value(round_.layout.attributeColumns[attribute], isDeclared);
      columns_[item].push_back(value.value_or(std::numeric_limits<double>::quiet_NaN()));
      if (!distinct_.empty() && isSearched && value && !isDeclared) distinct_[item].Add(*value);
    }
  }

  void CountBlock() {
    if (round_.isAbandoned) throw Abandoned();
    BINRoundCases cases;
    cases.size = weights_.size();
    cases.codes = codes_.data();
    cases.weights = weights_.data();
    cases.columns.resize(round_.layout.attributeColumns.size(), nullptr);
    for (std::size_t item = 0; item < columns_.size(); ++item) {
      cases.columns[round_.question.attributes[item].attribute] = columns_[item].data();
    }
    for (const BINNumericUserMissing& userMissing : round_.userMissing) {
      cases.userMissing.push_back(&userMissing);
    }
    throwIfRunFailed(round_.counter.Count(cases, answer_), 0);
    codes_.clear();
    weights_.clear();
    for (std::vector<double>& column : columns_) column.clear();
    casesRead_ = counts_.read;
  }

  const Round& round_;
  SharedBatches batches_;
  ColumnCases cases_;
  CaseReader reader_;
  std::vector<int> codes_;
  std::vector<double> weights_;
  std::vector<std::vector<double>> columns_;  ///< By item of the question.
  std::vector<DistinctRuns> distinct_;
  BINRoundAnswer answer_;
  CaseCounts counts_;
  std::atomic<std::uint64_t> casesRead_ = 0;
};

/// What none of the parts met.
Notes neverMet(const std::vector<std::unique_ptr<Part>>& parts) {
  Notes notes = parts.front()->NeverMet();
  for (const auto& part : parts) {
    const Notes others = part->NeverMet();
    std::erase_if(notes, [&others](const auto& note) { return !others.contains(note.first); });
  }
  return notes;
}

void countDistinctValues(const std::vector<std::unique_ptr<Part>>& parts, Round& round,
                         const std::function<void()>& watch, BINRoundAnswer& answer) {
  const auto work = [&](std::size_t member) {
    for (std::size_t item = member; item < answer.attributes.size(); item += round.jobs) {
      std::vector<DistinctRuns> distinct;
      distinct.reserve(parts.size());
      for (const auto& part : parts) distinct.push_back(part->TakeDistinct(item));
      answer.attributes[item].distinctValues =
          static_cast<double>(countDistinct(distinct, round.isAbandoned));
    }
  };
  workTogether(round.jobs, work, watch, round.isAbandoned);
}

bool countsDistinct(const BINRoundQuestion& question) {
  return std::any_of(question.attributes.begin(), question.attributes.end(),
                     [](const auto& attribute) { return attribute.countDistinct; });
}

/// The definition that says what `rules` say.
BINNumericUserMissing userMissingOf(const MissingRules& rules) {
  BINNumericUserMissing userMissing;
  for (const double value : rules.values) userMissing.AddValue(value, "");
  if (rules.range) {
    userMissing.SetInterval(BINNumericInterval(rules.range->first, rules.range->second));
  }
  return userMissing;
}

}  // namespace

LocalEngine::LocalEngine(BatchReader& batches, const PassSetting& setting, const FeedLayout& layout,
                         std::size_t jobs, Monitor& monitor)
    : batches_(batches), setting_(setting), layout_(layout), jobs_(jobs), monitor_(monitor) {
  for (const std::size_t column : layout.attributeColumns) {
    userMissing_.push_back(userMissingOf(setting.columns[column].missing));
  }
}

BINRoundAnswer LocalEngine::Answer(const BINRoundQuestion& question, const std::string& task) {
  batches_.Rewind();
  BINRoundCounter counter;
  const std::size_t categories = std::max<std::size_t>(setting_.scan.categories.size(), 1);
  throwIfRunFailed(counter.Prepare(question, static_cast<int>(categories)), 0);
  std::optional<TemporaryDirectory> directory;
  if (countsDistinct(question)) directory.emplace(temporaryRoot());
  Round round{setting_, layout_,      question,
              counter,  userMissing_, directory ? directory->Path() : "",
              jobs_};
  std::mutex mutex;
  std::vector<std::unique_ptr<Part>> parts;
  for (std::size_t number = 0; number < jobs_; ++number) {
    parts.push_back(std::make_unique<Part>(number, batches_, mutex, round));
  }
  const auto watch = [&] {
    monitor_.ThrowIfStopped();
    std::uint64_t read = 0;
    for (const auto& part : parts) read += part->CasesRead();
    const auto count = static_cast<double>(read);
    monitor_.Update(task, count / static_cast<double>(setting_.scan.rows), count, "cases");
  };
  workTogether(
      jobs_, [&parts](std::size_t member) { parts[member]->Work(); }, watch, round.isAbandoned);
  watch();  // however short a round is, it is shown

  BINRoundAnswer answer;
  cases_ = {};
  for (const auto& part : parts) {
    throwIfRunFailed(BINRoundCounter::Add(part->Answer(), answer), 0);
    cases_.read += part->Counts().read;
    cases_.used += part->Counts().used;
    cases_.droppedForWeight += part->Counts().droppedForWeight;
  }
  if (directory) countDistinctValues(parts, round, watch, answer);
  if (std::exchange(isFirst_, false)) neverMet_ = neverMet(parts);
  return answer;
}

}  // namespace mcbin
