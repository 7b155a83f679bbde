#include "toolkit/rounds/rounds_pass.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <string>
#include <utility>

#include "toolkit/errors.h"
#include "toolkit/fit/library_records.h"
#include "toolkit/fit/library_run.h"
#include "toolkit/fit/status_text.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

double sumOf(const std::vector<double>& weights) {
  return std::accumulate(weights.begin(), weights.end(), 0.0);
}

/// Of the library's variables: the target is 0, with or without one.
int indexOf(std::size_t attribute) { return static_cast<int>(attribute) + 1; }

class RoundsPass {
 public:
  RoundsPass(const PassSetting& setting, const FeedLayout& layout, const RoundsStart& start,
             RoundEngine& engine, Monitor& monitor)
      : setting_(setting),
        start_(start),
        engine_(engine),
        monitor_(monitor),
        model_(plannedModel(setting, layout)) {}

  PassResult Run() {
    model_.library = libraryVersion();
    if (model_.method == Method::Supervised) {
      BINSettings settings;
      AskAll(settings);
      File(rounds_.GetOutput(), [this](const auto& record, AttributeModel& attribute) {
        fileRecord(record, model_.target->categories.size(), attribute);
      });
    } else {
      EFBINSettings settings;
      AskAll(settings);
      File(rounds_.GetEFOutput(),
           [](const auto& record, AttributeModel& attribute) { fileRecord(record, attribute); });
      Recount();
    }
    return {std::move(model_), engine_.NeverMet()};
  }

 private:
  template <class Settings>
  void AskAll(Settings& settings) {
    setBins(model_, settings);
    Check(rounds_.Start(settings, Plan()));
    while (!rounds_.IsFinished()) {
      const BINRoundQuestion& question = rounds_.GetQuestion();
      const BINRoundAnswer answer = Ask(question);
      if (rounds_.GetProgress().rounds == 0) TakeFirst(answer);
      Check(rounds_.Answer(answer));
    }
  }

  BINRoundsPlan Plan() const {
    BINRoundsPlan plan;
    plan.target = 0;
    plan.categories = Categories();
    for (std::size_t a = 0; a < model_.attributes.size(); ++a) {
      BINRoundsAttribute attribute;
      attribute.index = indexOf(a);
      if (a < start_.firstBorders.size()) attribute.firstBorders = start_.firstBorders[a];
      plan.attributes.push_back(std::move(attribute));
    }
    return plan;
  }

  int Categories() const {
    return model_.target ? static_cast<int>(model_.target->categories.size()) : 1;
  }

  BINRoundAnswer Ask(const BINRoundQuestion& question) {
    monitor_.ThrowIfStopped();
    BINRoundAnswer answer = engine_.Answer(question, Task(question));
    monitor_.ThrowIfStopped();
    const CaseCounts cases = engine_.Cases();
    if (cases.read != setting_.scan.rows) failChanged(setting_);
    model_.cases = cases;
    return answer;
  }

  /// "round 3: 2 of 10 attributes, 12 % of their weight", of which the rest is excluded.
  std::string Task(const BINRoundQuestion& question) const {
    const BINRoundsProgress progress = rounds_.GetProgress();
    std::string task = fmt::format("round {}: {} of {} attributes", progress.rounds + 1,
                                   question.attributes.size(), model_.attributes.size());
    if (progress.rounds == 0) return task;
    const double all = totalWeight_ * static_cast<double>(question.attributes.size());
    return task + fmt::format(", {:.0f} % of their weight", 100.0 * progress.weightLeft / all);
  }

  void TakeFirst(const BINRoundAnswer& answer) {
    totalWeight_ = sumOf(answer.classWeights) + answer.missingTargetWeight;
    classWeights_ = answer.classWeights;
    if (model_.target) {
      model_.target->classWeights = answer.classWeights;
      model_.target->missingWeight = answer.missingTargetWeight;
    }
    for (std::size_t a = 0; a < model_.attributes.size(); ++a) {
      const BINAttributeAnswer& cells = answer.attributes.at(a);
      AttributeModel& attribute = model_.attributes[a];
      attribute.missingCases = CountsOf(cells.missingWeights);
      attribute.userMissingCases = CountsOf(cells.userMissingWeights);
      RequireExact(a, cells);
    }
  }

  WeightedCounts CountsOf(const std::vector<double>& weights) const {
    return {sumOf(weights), model_.target ? weights : std::vector<double>()};
  }

  void RequireExact(std::size_t a, const BINAttributeAnswer& cells) const {
    const double largest = std::max(std::abs(cells.minimum), std::abs(cells.maximum));
    if (std::isinf(largest) || largest < start_.exactBelow.at(a)) return;
    throw DataError(fmt::format(
        "column {}: numbers as large as {} have more digits than a double holds: bin a column "
        "with fewer digits, or --exclude {}",
        excerpt(model_.attributes[a].name), largest, excerpt(model_.attributes[a].name)));
  }

  void Check(const MCBinning::MCStatus& status) const {
    if (!status.IsError()) return;
    switch (status.GetErrorCode()) {
      case 120004:
        failWithoutCases(model_, setting_.scan.rows);
      case 120022:
        failChanged(setting_);
      case 120023:
        throw DataError(fmt::format(
            "the weights{} add up to 2^53 or more, which is too much to add up in any order",
            model_.weight ? " in column " + excerpt(model_.weight->name) : ""));
      default:
        throwIfRunFailed(status, 0);
    }
  }

  template <class Output, class FileOne>
  void File(const Output& output, FileOne fileOne) {
    const auto records = RecordsOf(output);
    require(records.size() == model_.attributes.size(), "to bin every attribute");
    for (std::size_t a = 0; a < records.size(); ++a) {
      throwIfRunFailed(records[a].GetStatus(), 0);
      fileOne(records[a], model_.attributes[a]);
    }
  }

  static std::vector<BINAttributeTargetResults> RecordsOf(const BINOutput& output) {
    std::vector<BINAttributeTargetResults> records;
    output.GetAllCutPoints(records);
    return records;
  }
  static std::vector<BINAttributeResults> RecordsOf(const EFBINOutput& output) {
    std::vector<BINAttributeResults> records;
    output.GetAllCutPoints(records);
    return records;
  }

  /// What recountBins finds out from column files.
  void Recount() {
    BINRoundQuestion question;
    for (std::size_t a = 0; a < model_.attributes.size(); ++a) {
      const std::vector<double>& cuts = model_.attributes[a].cutPoints;
      if (!cuts.empty()) question.attributes.push_back({a, cuts, {}, false});
    }
    if (question.attributes.empty()) return;
    const BINRoundAnswer answer = Ask(question);
    if (answer.classWeights != classWeights_) failChanged(setting_);
    for (std::size_t i = 0; i < question.attributes.size(); ++i) {
      AttributeModel& attribute = model_.attributes[question.attributes[i].attribute];
      const std::vector<double> sums = SumsOfBins(answer.attributes.at(i).cellWeights);
      for (std::size_t bin = 0; bin < attribute.bins.size(); ++bin) {
        attribute.miscountedWeight += std::max(0.0, attribute.bins[bin].weight - sums[bin]);
      }
    }
  }

  /// Cells are stretches and, between them, cut points, which go to the side that is closed.
  std::vector<double> SumsOfBins(const std::vector<double>& cells) const {
    std::vector<double> sums(cells.size() / 2 + 1, 0.0);
    for (std::size_t cell = 0; cell < cells.size(); ++cell) {
      const bool goesUp = cell % 2 == 1 && model_.closedSide == ClosedSide::Left;
      sums[cell / 2 + (goesUp ? 1 : 0)] += cells[cell];
    }
    return sums;
  }

  const PassSetting& setting_;
  const RoundsStart& start_;
  RoundEngine& engine_;
  Monitor& monitor_;
  Model model_;
  BINRounds rounds_;
  double totalWeight_ = 0.0;
  std::vector<double> classWeights_;
};

}  // namespace

PassResult runRounds(const PassSetting& setting, const FeedLayout& layout, const RoundsStart& start,
                     RoundEngine& engine, Monitor& monitor) {
  if (!setting.request.cuts.empty()) {
    throw UsageError("--cuts: cut points cannot be given for cases that are binned in rounds");
  }
  return RoundsPass(setting, layout, start, engine, monitor).Run();
}

}  // namespace mcbin
